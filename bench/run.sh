#!/usr/bin/env bash
# Runs the benchmarks of a build and writes their reports into out/bench/.
#   bench/run.sh [BUILD_DIR [BENCH...]]   e.g. bench/run.sh build sound_editing
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:-build}
shift || true
only=" $* "
mkdir -p out/bench

# Whether the named benchmark was asked for (all of them when none was named) and was built.
wanted() { [ -x "$build/bin/$1_bench" ] && { [ "$only" = "  " ] || [[ "$only" == *" $1 "* ]]; }; }

if wanted host_call; then
  echo "== calls of a trivial plug-in function through the host (target: >= 200,000/s)"
  "$build/bin/host_call_bench" --benchmark_repetitions=5 --benchmark_report_aggregates_only=true \
    --benchmark_out=out/bench/host_calls.json --benchmark_out_format=json | tee out/bench/host_calls.txt
fi

if wanted file_functions; then
  echo "== folder listing and tree delete through the host (targets: <= 2.0 x ls -f, <= 1.2 x rm -rf)"
  "$build/bin/file_functions_bench" "$build/plugins" | tee out/bench/file_functions.txt
fi

if wanted sound_synthesis; then
  echo "== Vandrel_CreateSound of 60 s through vdhost against sox synth (target: ratio <= 1.0), and start-up (target: <= 40 ms)"
  "$build/bin/sound_synthesis_bench" "$build/bin/vdhost" "$build/plugins" | tee out/bench/sound_synthesis.txt
fi

if wanted sound_editing; then
  echo "== amplify, normalize, append, mix, extract and fade of 10-minute sounds through vdhost against sox and ffmpeg (target: ratio <= 1.0 of the faster)"
  "$build/bin/sound_editing_bench" "$build/bin/vdhost" "$build/plugins" | tee out/bench/sound_editing.txt
fi

if wanted sound_conversion; then
  echo "== Vandrel_ConvertSound of a 10-minute WAV to MP3, AAC, FLAC and Ogg Vorbis through vdhost against ffmpeg (targets: ratio <= 1.02, sizes within 1%)"
  "$build/bin/sound_conversion_bench" "$build/bin/vdhost" "$build/plugins" | tee out/bench/sound_conversion.txt
fi

if wanted image_conversion; then
  echo "== Vandrel_ConvertImage of a 24-megapixel JPEG to PNG and TIFF through vdhost against vips copy and convert (target: ratio <= 1.0 of vips)"
  "$build/bin/image_conversion_bench" "$build/bin/vdhost" "$build/plugins" | tee out/bench/image_conversion.txt
fi

if wanted image_insert; then
  echo "== Vandrel_InsertImage of a 24-megapixel picture with its preview through vdhost against vipsthumbnail (target: ratio <= 1.0)"
  "$build/bin/image_insert_bench" "$build/bin/vdhost" "$build/plugins" | tee out/bench/image_insert.txt
fi

if wanted image_transform; then
  echo "== Vandrel_TApply of a 24-megapixel JPEG (scale, rotation, skew, perspective) through vdhost against vips and convert -distort (target: ratio <= 1.0 of vips)"
  "$build/bin/image_transform_bench" "$build/bin/vdhost" "$build/plugins" | tee out/bench/image_transform.txt
fi

if wanted playback; then
  echo "== Vandrel_PlaySound of a 10-minute MP3: the call (target <= 20 ms) and its first frame on the device (target <= 50 ms); through ALSA beside aplay"
  "$build/bin/playback_bench" "$build/bin/vdhost" "$build/plugins" | tee out/bench/playback.txt
fi

if wanted waveform; then
  echo "== Vandrel_DrawWaveform 1800 x 280 of a 10-minute WAV through vdhost against ffmpeg showwavespic (target: ratio <= 0.2)"
  "$build/bin/waveform_bench" "$build/bin/vdhost" "$build/plugins" | tee out/bench/waveform.txt
fi

if wanted metadata; then
  echo "== Vandrel_GetMetadata of 1,000 tagged JPEGs in one vdhost script against exiv2 -pa and exiftool on the same files (target: ratio < 1.0 of both)"
  "$build/bin/metadata_bench" "$build/bin/vdhost" "$build/plugins" | tee out/bench/metadata.txt
fi

if wanted recording; then
  echo "== CPU time of a background recording of 44.1 kHz stereo from the virtual input, per second (target: <= 2% of one core), and its drop counter with the host busy"
  "$build/bin/recording_bench" | tee out/bench/recording.txt
fi

if wanted audio_mix; then
  echo "== CPU time of mixing 100 simultaneous 44.1 kHz stereo sounds on the virtual device, per second of sound (target: <= 5% of one core)"
  "$build/bin/audio_mix_bench" | tee out/bench/audio_mix.txt
fi

if wanted serve; then
  echo "== vdhost serve's table page of 1,000 records with pictures, fetched over loopback (target: <= 200 ms)"
  "$build/bin/serve_bench" "$build/bin/vdhost" "$build/plugins" | tee out/bench/serve.txt
fi

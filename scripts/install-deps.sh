#!/usr/bin/env bash
# Installs the Debian packages the build, the tests and the benchmarks need. Idempotent, and quiet
# when everything is already there.
set -euo pipefail

packages=(
  # build
  g++ cmake ninja-build pkg-config
  # host: database file, line editing, the HTTP server of vdhost serve
  libsqlite3-dev libedit-dev libcpp-httplib-dev
  # plug-in: settings compression, the media layer (FFmpeg) and images (libvips); the -dev packages
  # give the headers and bring the libraries, which the plug-in loads when a function first needs them
  zlib1g-dev libavformat-dev libavcodec-dev libswresample-dev libavutil-dev libvips-dev
  # the Mac picture formats libvips lacks (ImageMagick 6) and web images (libcurl): headers and
  # libraries, loaded on first use like libvips
  libmagickcore-6.q16-dev libcurl4-openssl-dev
  # the metadata module (Exiv2 and TagLib, loaded only when a tag is read or written)
  libexiv2-dev libtag1-dev
  # the sound output (PortAudio: its header; the library is loaded when the first sound plays)
  portaudio19-dev
  # the dialog module (GTK 3, loaded only when a dialog is shown) and opening items with their application
  libgtk-3-dev xdg-utils
  # tests and benchmarks (ffmpeg and sox make fixtures and are the tools we measure against)
  libgtest-dev libgmock-dev libbenchmark-dev ffmpeg sox libsox-fmt-mp3
  # the metadata tests write pictures' tags with the exiv2 program
  exiv2
  # the tools the image benchmark measures ours against (vips, ImageMagick's convert); vdhost serve
  # also shrinks pictures for its table pages with vipsthumbnail
  libvips-tools imagemagick
  # the tools the metadata benchmark measures ours against (exiv2 is above)
  libimage-exiftool-perl
  # aplay: the tool the playback benchmark measures beside ours on an ALSA device
  alsa-utils
  # the tests that show the real GTK chooser on a virtual display and press its mouse button
  xvfb xdotool
  # the tests that open vdhost serve's pages in a headless browser
  chromium
)

# ./scripts/install-deps.sh --fuzz adds what the libFuzzer configuration needs.
if [ "${1:-}" = "--fuzz" ]; then
  packages+=(clang libclang-rt-14-dev)
fi

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q '^install ok installed$'; then
    missing+=("$p")
  fi
done
[ ${#missing[@]} -eq 0 ] && exit 0

echo "Installing: ${missing[*]}"
sudo=""
[ "$(id -u)" -ne 0 ] && sudo="sudo"
export DEBIAN_FRONTEND=noninteractive
$sudo apt-get update -qq
$sudo apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null

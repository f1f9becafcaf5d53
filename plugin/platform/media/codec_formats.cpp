// The codec table. The PCM rows are the formats whose bytes the layer reads itself (by pread from
// the file or from memory); every other row is decoded through libavcodec. The codes are the ones
// the Mac media framework used in its sound descriptions, so a report or an editing function sees
// the same format for the same file on both platforms:
//
//   pcm_s16le 'sowt' 16 LE      pcm_s16be 'twos' 16 BE      pcm_u8   'raw ' 8
//   pcm_s8    'twos'  8 (signed 8-bit was 'twos' too)       pcm_s24le/be 'in24' 24
//   pcm_s32le/be 'in32' 32      pcm_f32le/be 'fl32' 32      pcm_f64le/be 'fl64' 64
//   pcm_s64le/be 'in64' 64 (decoded by libavcodec)
//   pcm_mulaw 'ulaw'  pcm_alaw 'alaw'  adpcm_ima_qt 'ima4'  adpcm_ima_wav 'dvi '  adpcm_ms 'msad'
//   mp3 '.mp3'  mp2 '.mp2'  aac 'mp4a'  alac 'alac'  flac 'fLaC'  wavpack 'wvpk'
//   vorbis 'vorb'  opus 'opus'  ac3 'ac-3'  eac3 'ec-3'  amr_nb 'samr'  gsm, gsm_ms 'agsm'
//   qdm2 'QDM2'  mace3 'MAC3'  mace6 'MAC6'
// The Mac named the sound of WAVE format tags 'ms' followed by the tag's two bytes; a report shows
// those as "ms" and blanks, so the ADPCM kinds of WAVE files have names of their own here. A codec
// missing from the table is named by its own FFmpeg name (see DescribeSound).
//   visual: h264 'avc1'  hevc 'hvc1'  mpeg4 'mp4v'  mjpeg 'jpeg'  png 'png '  rawvideo 'raw '
//   text: mov_text 'tx3g'  subrip, text, ass 'text'
#include "platform/media/codec_formats.h"

#include <array>

namespace vd::media {

namespace {

constexpr std::array kCodecFormats{
    CodecFormat{"pcm_s16le", FourCC("sowt"), 16, false, true},
    CodecFormat{"pcm_s16be", FourCC("twos"), 16, true, true},
    CodecFormat{"pcm_u8", FourCC("raw "), 8, false, true},
    CodecFormat{"pcm_s8", FourCC("twos"), 8, true, true},
    CodecFormat{"pcm_s24le", FourCC("in24"), 24, false, true},
    CodecFormat{"pcm_s24be", FourCC("in24"), 24, true, true},
    CodecFormat{"pcm_s32le", FourCC("in32"), 32, false, true},
    CodecFormat{"pcm_s32be", FourCC("in32"), 32, true, true},
    CodecFormat{"pcm_f32le", FourCC("fl32"), 32, false, true},
    CodecFormat{"pcm_f32be", FourCC("fl32"), 32, true, true},
    CodecFormat{"pcm_f64le", FourCC("fl64"), 64, false, true},
    CodecFormat{"pcm_f64be", FourCC("fl64"), 64, true, true},
    CodecFormat{"pcm_s64le", FourCC("in64"), 64, false, false},
    CodecFormat{"pcm_s64be", FourCC("in64"), 64, true, false},
    CodecFormat{"pcm_mulaw", FourCC("ulaw"), 8, false, false},
    CodecFormat{"pcm_alaw", FourCC("alaw"), 8, false, false},
    CodecFormat{"adpcm_ima_qt", FourCC("ima4"), 16, false, false},
    CodecFormat{"adpcm_ima_wav", FourCC("dvi "), 16, false, false},
    CodecFormat{"adpcm_ms", FourCC("msad"), 16, false, false},
    CodecFormat{"mp3", FourCC(".mp3"), 0, false, false},
    CodecFormat{"mp2", FourCC(".mp2"), 0, false, false},
    CodecFormat{"aac", FourCC("mp4a"), 0, false, false},
    CodecFormat{"alac", FourCC("alac"), 0, false, false},
    CodecFormat{"flac", FourCC("fLaC"), 0, false, false},
    CodecFormat{"wavpack", FourCC("wvpk"), 0, false, false},
    CodecFormat{"vorbis", FourCC("vorb"), 0, false, false},
    CodecFormat{"opus", FourCC("opus"), 0, false, false},
    CodecFormat{"ac3", FourCC("ac-3"), 0, false, false},
    CodecFormat{"eac3", FourCC("ec-3"), 0, false, false},
    CodecFormat{"amr_nb", FourCC("samr"), 0, false, false},
    CodecFormat{"gsm", FourCC("agsm"), 16, false, false},
    CodecFormat{"gsm_ms", FourCC("agsm"), 16, false, false},
    CodecFormat{"qdm2", FourCC("QDM2"), 0, false, false},
    CodecFormat{"mace3", FourCC("MAC3"), 0, false, false},
    CodecFormat{"mace6", FourCC("MAC6"), 0, false, false},
    CodecFormat{"h264", FourCC("avc1"), 0, false, false},
    CodecFormat{"hevc", FourCC("hvc1"), 0, false, false},
    CodecFormat{"mpeg4", FourCC("mp4v"), 0, false, false},
    CodecFormat{"mjpeg", FourCC("jpeg"), 0, false, false},
    CodecFormat{"png", FourCC("png "), 0, false, false},
    CodecFormat{"rawvideo", FourCC("raw "), 0, false, false},
    CodecFormat{"mov_text", FourCC("tx3g"), 0, false, false},
    CodecFormat{"subrip", FourCC("text"), 0, false, false},
    CodecFormat{"text", FourCC("text"), 0, false, false},
    CodecFormat{"ass", FourCC("text"), 0, false, false},
};

}  // namespace

std::span<const CodecFormat> CodecFormats() { return kCodecFormats; }

const CodecFormat* FindCodecFormat(std::string_view codecName) {
    for (const auto& row : kCodecFormats)
        if (codecName == row.codecName) return &row;
    return nullptr;
}

}  // namespace vd::media

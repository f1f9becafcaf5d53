// The importer table: FFmpeg's demuxer name to the importer's subtype.
//
//   wav 'WAVE'   w64 'WAVE'   aiff 'AIFF' (AIFF and AIFC)   mp3 'MP3 '   caf 'caff'
//   au: mu-law 'ULAW', A-law 'ALAW', linear PCM 'AU  '
//   flac 'FLAC'  ogg 'OggS'  aac 'ADTS'  ac3 'ac-3'  amr 'amr '  matroska,webm 'MKV '  wv 'WVPK'
//   any other: its name's first four letters, upper-cased
//   mov,mp4,m4a,3gp,3g2,mj2: QuickTime ("qt  " brand) 'MooV'; MP4 family with video 'mpg4';
//                            MP4 family with sound only 'M4A '
#include "platform/media/importer_subtypes.h"

#include <array>

namespace vd::media {

namespace {

struct ImporterRow {
    std::string_view demuxer;
    FourCharCode subtype;
};

constexpr std::array kImporters{
    ImporterRow{"wav", FourCC("WAVE")},  ImporterRow{"w64", FourCC("WAVE")},
    ImporterRow{"aiff", FourCC("AIFF")}, ImporterRow{"mp3", FourCC("MP3 ")},
    ImporterRow{"caf", FourCC("caff")},  ImporterRow{"wv", FourCC("WVPK")},
    ImporterRow{"flac", FourCC("FLAC")}, ImporterRow{"ogg", FourCC("OggS")},
    ImporterRow{"aac", FourCC("ADTS")},  ImporterRow{"ac3", FourCC("ac-3")},
    ImporterRow{"amr", FourCC("amr ")},  ImporterRow{"matroska,webm", FourCC("MKV ")},
};

constexpr std::string_view kMovFamily = "mov,mp4,m4a,3gp,3g2,mj2";

}  // namespace

FourCharCode ImporterSubtypeFor(std::string_view demuxerName, std::string_view majorBrand, bool hasVisual,
                                std::string_view audioCodec) {
    if (demuxerName == kMovFamily) {
        // A file with no brand (old QuickTime files have no 'ftyp') is a QuickTime movie.
        if (majorBrand.empty() || majorBrand == "qt  ") return FourCC("MooV");
        return hasVisual ? FourCC("mpg4") : FourCC("M4A ");
    }
    // The Mac's 'ULAW' importer read every Sun file, but the name says mu-law: a linear one is not.
    if (demuxerName == "au") {
        if (audioCodec.empty() || audioCodec == "pcm_mulaw") return FourCC("ULAW");
        return audioCodec == "pcm_alaw" ? FourCC("ALAW") : FourCC("AU  ");
    }
    for (const auto& row : kImporters)
        if (row.demuxer == demuxerName) return row.subtype;
    return FourCCFromName(demuxerName.substr(0, demuxerName.find(',')), true);
}

}  // namespace vd::media

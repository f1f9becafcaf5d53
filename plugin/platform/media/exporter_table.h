// The rows behind exporters.h, for the conversion inside the movie layer: which muxer and encoder
// an exporter runs, and how its settings become encoder options.
#pragma once

#include "platform/media/exporters.h"

namespace vd::media {

enum class EncoderFamily { kPcm, kMuLaw, kFlac, kAac, kMp3, kVorbis, kOpus };

struct ExporterRow {
    const char* subtype;
    const char* manufacturer;
    const char* name;
    const char* information;
    const char* extension;
    const char* muxer;
    EncoderFamily family;
    // The encoder for 8-, 16-, 24- and 32-bit samples (PCM), or the one encoder in [1].
    const char* encoders[4];
};

// The row of an exporter subtype (made by any manufacturer), or nullptr.
const ExporterRow* ExporterRowFor(FourCharCode subtype);

// The encoder's name for these settings; nullptr when the sample size has none.
const char* EncoderNameFor(const ExporterRow& row, const ExportSettings& settings);

}  // namespace vd::media

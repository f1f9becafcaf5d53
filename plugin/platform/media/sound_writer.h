// Where rendered sound goes: the WAV writer of the sound functions' own results, which copies
// 16-bit samples through without an encoder. Conversion into the other formats (and WAV files of
// other settings) goes through the exporters' muxers and encoders instead (sound_export.h).
#pragma once

#include "platform/media/errors.h"
#include "platform/media/four_char_code.h"

#include <cstdint>
#include <memory>
#include <string>

namespace vd::media {

struct OutputFormat {
    FourCharCode fileType = FourCC("WAVE");
    int32_t sampleRate = 44100;
    int16_t channels = 2;
    int16_t sampleSize = 16;
};

// The fixed settings of every sound function's result: WAV, 44100 Hz, 16 bits, stereo, 'sowt'.
inline OutputFormat CdQualityWav() { return {}; }

class SoundWriter {
public:
    virtual ~SoundWriter() = default;
    // Interleaved 16-bit native samples, frames × channels of the output format.
    virtual Status WriteFrames(const int16_t* samples, size_t frames) = 0;
    // Whether stored 'sowt' bytes of the output format may be handed over as they are.
    virtual bool TakesSowtBytes() const { return false; }
    virtual Status WriteSowtBytes(const uint8_t* bytes, size_t size);
    // Copies sowt bytes from a file region, without passing through memory where the system can.
    virtual Status CopySowtBytes(int fd, int64_t offset, int64_t size);
    // Completes the file and puts it in place; until then the target is untouched.
    virtual Status Finish() = 0;
};

// A writer for the format into target; util::kNoComponent for a format no writer exists for, util::kBadParameter
// for settings the format cannot hold.
Status OpenSoundWriter(const OutputFormat& format, const std::string& target, std::unique_ptr<SoundWriter>& writer);

}  // namespace vd::media

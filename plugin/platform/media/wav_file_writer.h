// Our own WAV writer for 16-bit PCM: a 44-byte RIFF header whose sizes are patched when the file
// is finished, written through a pending file so a failure leaves no file behind.
#pragma once

#include "platform/media/pending_file.h"
#include "platform/media/sound_writer.h"

namespace vd::media {

class WavFileWriter final : public SoundWriter {
public:
    static Status Open(const OutputFormat& format, const std::string& target, std::unique_ptr<SoundWriter>& writer);

    Status WriteFrames(const int16_t* samples, size_t frames) override;
    bool TakesSowtBytes() const override { return true; }
    Status WriteSowtBytes(const uint8_t* bytes, size_t size) override;
    Status CopySowtBytes(int fd, int64_t offset, int64_t size) override;
    Status Finish() override;

private:
    explicit WavFileWriter(const OutputFormat& format) : format_(format) {}
    Status Grow(uint64_t bytes);

    OutputFormat format_;
    PendingFile file_;
    uint64_t dataBytes_ = 0;
};

inline constexpr size_t kWavHeaderSize = 44;

}  // namespace vd::media

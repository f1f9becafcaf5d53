#include "platform/media/wav_file_writer.h"

#include <array>
#include <bit>
#include <cerrno>
#include <new>
#include <vector>

#include <unistd.h>

namespace vd::media {

namespace {

// A RIFF size field holds 32 bits; the header's other 36 bytes count in the RIFF size.
constexpr uint64_t kMaxDataBytes = 0xFFFFFFFFull - 36;

void PutLe(std::array<uint8_t, kWavHeaderSize>& h, size_t at, uint32_t value, int bytes) {
    for (int i = 0; i < bytes; ++i) h[at + size_t(i)] = uint8_t(value >> (8 * i));
}

std::array<uint8_t, kWavHeaderSize> Header(const OutputFormat& f, uint32_t dataBytes) {
    std::array<uint8_t, kWavHeaderSize> h{'R', 'I', 'F', 'F', 0, 0, 0, 0, 'W', 'A', 'V', 'E', 'f', 'm', 't', ' ',
                                          16, 0, 0, 0, 1, 0};  // fmt chunk of 16 bytes, PCM
    const uint32_t blockAlign = uint32_t(f.channels) * uint32_t(f.sampleSize / 8);
    PutLe(h, 4, 36 + dataBytes, 4);
    PutLe(h, 22, uint32_t(f.channels), 2);
    PutLe(h, 24, uint32_t(f.sampleRate), 4);
    PutLe(h, 28, uint32_t(f.sampleRate) * blockAlign, 4);
    PutLe(h, 32, blockAlign, 2);
    PutLe(h, 34, uint32_t(f.sampleSize), 2);
    h[36] = 'd', h[37] = 'a', h[38] = 't', h[39] = 'a';
    PutLe(h, 40, dataBytes, 4);
    return h;
}

}  // namespace

Status WavFileWriter::Open(const OutputFormat& format, const std::string& target, std::unique_ptr<SoundWriter>& writer) {
    if (format.sampleSize != 16 || format.channels < 1 || format.channels > 8 || format.sampleRate < 1 ||
        format.sampleRate > 768000)
        return MediaFailure(util::kBadParameter, "WAV output is 16-bit PCM with 1 to 8 channels");
    std::unique_ptr<WavFileWriter> made(new (std::nothrow) WavFileWriter(format));
    if (!made) return MediaFailure(util::kMemoryFull, "no memory for a writer");
    if (Status s = made->file_.Create(target)) return s;
    auto header = Header(format, 0);
    if (Status s = made->file_.Write(header.data(), header.size())) return s;
    writer = std::move(made);
    return util::kNoError;
}

Status WavFileWriter::Grow(uint64_t bytes) {
    if (dataBytes_ + bytes > kMaxDataBytes) return MediaFailure(util::kFileTooLarge, "the sound is too long for a WAV file");
    dataBytes_ += bytes;
    return util::kNoError;
}

Status WavFileWriter::WriteFrames(const int16_t* samples, size_t frames) {
    const size_t count = frames * size_t(format_.channels);
    if (Status s = Grow(count * 2)) return s;
    if constexpr (std::endian::native == std::endian::little) return file_.Write(samples, count * 2);
    std::vector<uint8_t> bytes(count * 2);
    for (size_t i = 0; i < count; ++i) {
        bytes[2 * i] = uint8_t(samples[i]);
        bytes[2 * i + 1] = uint8_t(uint16_t(samples[i]) >> 8);
    }
    return file_.Write(bytes.data(), bytes.size());
}

Status WavFileWriter::WriteSowtBytes(const uint8_t* bytes, size_t size) {
    if (Status s = Grow(size)) return s;
    return file_.Write(bytes, size);
}

Status WavFileWriter::CopySowtBytes(int fd, int64_t offset, int64_t size) {
    if (size < 0) return MediaFailure(util::kBadParameter, "negative copy");
    if (Status s = Grow(uint64_t(size))) return s;
    // The kernel copies file to file (and may share extents); where it cannot, fall back to blocks.
    off_t from = offset;
    while (size > 0) {
        ssize_t n = ::copy_file_range(fd, &from, file_.Descriptor(), nullptr, size_t(size), 0);
        if (n > 0) {
            size -= n;
            continue;
        }
        if (n == 0) return MediaFailure(util::kEndOfFile, "the sound file ended before its data");
        if (errno == EINTR) continue;
        if (errno != EXDEV && errno != ENOSYS && errno != EINVAL && errno != EOPNOTSUPP)
            return StatusFromErrno(errno, MediaStep::kWriting);
        break;
    }
    std::vector<uint8_t> block;
    try {
        block.resize(size_t(std::min<int64_t>(size, 4 << 20)));
    } catch (const std::bad_alloc&) {
        return MediaFailure(util::kMemoryFull, "no memory to copy samples");
    }
    while (size > 0) {
        const size_t want = size_t(std::min<int64_t>(size, int64_t(block.size())));
        ssize_t n = ::pread(fd, block.data(), want, from);
        if (n < 0 && errno == EINTR) continue;
        if (n < 0) return StatusFromErrno(errno, MediaStep::kReading);
        if (n == 0) return MediaFailure(util::kEndOfFile, "the sound file ended before its data");
        if (Status s = file_.Write(block.data(), size_t(n))) return s;
        from += n;
        size -= n;
    }
    return util::kNoError;
}

Status WavFileWriter::Finish() {
    auto header = Header(format_, uint32_t(dataBytes_));
    if (Status s = file_.WriteAt(header.data(), header.size(), 0)) return s;
    return file_.Commit();
}

}  // namespace vd::media

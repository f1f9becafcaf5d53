// Where a media's samples live. A store is shared (by the runs of every movie made from a
// selection of it), so copying and appending selections never copies samples.
//  - MemorySampleStore: PCM bytes in memory (synthesised sounds, new movies).
//  - FileSampleStore: PCM bytes in one region of a file, read on demand with pread.
//  - DecodingSampleStore (decoding_sample_store.h): compressed sound, decoded in order.
#pragma once

#include "platform/media/errors.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace vd::media {

class SampleStore {
public:
    virtual ~SampleStore() = default;
    SampleStore() = default;
    SampleStore(const SampleStore&) = delete;
    SampleStore& operator=(const SampleStore&) = delete;

    // PCM stores answer true and serve ReadBytes; decoding stores serve ReadFloatFrames.
    virtual bool ByteAddressable() const = 0;

    virtual Status ReadBytes(int64_t byteOffset, size_t size, uint8_t* out) const;

    // Interleaved floats of frames [firstFrame, firstFrame + frames); *framesRead may fall short
    // at the end of the stream.
    virtual Status ReadFloatFrames(int64_t firstFrame, int64_t frames, float* out, int64_t* framesRead);

    // The file and the offset of byte 0 when the bytes lie in one region of a file (-1 otherwise):
    // lets a render copy them file to file without passing through memory.
    virtual int FileDescriptor() const { return -1; }
    virtual int64_t FileOffset() const { return 0; }
    // The path of the file behind the store, "" for memory.
    virtual const std::string& FilePath() const;
};

class MemorySampleStore final : public SampleStore {
public:
    MemorySampleStore() = default;
    // Takes the bytes over without copying them: an edited sound is made once, not twice.
    explicit MemorySampleStore(std::vector<uint8_t>&& bytes) : bytes_(std::move(bytes)) {}

    bool ByteAddressable() const override { return true; }
    Status ReadBytes(int64_t byteOffset, size_t size, uint8_t* out) const override;

    // util::kMemoryFull when the bytes cannot be had.
    Status Append(const uint8_t* bytes, size_t size);
    int64_t Size() const { return int64_t(bytes_.size()); }
    const uint8_t* Data() const { return bytes_.data(); }

private:
    std::vector<uint8_t> bytes_;
};

class FileSampleStore final : public SampleStore {
public:
    // Opens path for reading; the bytes are [dataOffset, dataOffset + dataSize).
    static Status Open(const std::string& path, int64_t dataOffset, int64_t dataSize,
                       std::shared_ptr<FileSampleStore>& out);
    ~FileSampleStore() override;

    bool ByteAddressable() const override { return true; }
    Status ReadBytes(int64_t byteOffset, size_t size, uint8_t* out) const override;
    int FileDescriptor() const override { return fd_; }
    int64_t FileOffset() const override { return dataOffset_; }
    const std::string& FilePath() const override { return path_; }

private:
    FileSampleStore(int fd, std::string path, int64_t dataOffset, int64_t dataSize)
        : fd_(fd), path_(std::move(path)), dataOffset_(dataOffset), dataSize_(dataSize) {}
    int fd_;
    std::string path_;
    int64_t dataOffset_;
    int64_t dataSize_;
};

}  // namespace vd::media

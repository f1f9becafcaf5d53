// One libFuzzer target for the sound headers we read ourselves rather than through FFmpeg: the
// plain WAV header (read from a file descriptor, as the opener does) and the "snd " resource of a
// container. The first byte chooses the reader, the rest is its input. There is no AIFF reader of
// our own: AIFF files go to the library.
#include <cstddef>
#include <cstdint>
#include <span>

#include <sys/mman.h>
#include <unistd.h>

#include "container/sound_resource.h"
#include "platform/media/plain_wav_layout.h"

namespace {

// A file descriptor holding the bytes, as the opener's is; -1 when the system gives none.
int MemoryFile(const uint8_t* data, size_t size) {
    const int fd = memfd_create("wav", MFD_CLOEXEC);
    if (fd < 0) return -1;
    if (size > 0 && ::write(fd, data, size) != ssize_t(size)) {
        ::close(fd);
        return -1;
    }
    return fd;
}

void FuzzPlainWav(const uint8_t* data, size_t size) {
    const int fd = MemoryFile(data, size);
    if (fd < 0) return;
    vd::media::PlainWavLayout layout;
    const bool plain = vd::media::ReadPlainWavLayout(fd, int64_t(size), layout);
    ::close(fd);
    if (!plain) return;
    // What is accepted must be readable as it says: samples inside the file, a rate and channels.
    if (!layout.codecName || layout.channels < 1 || layout.channels > 64 || layout.rate < 1) __builtin_trap();
    if (layout.dataOffset < 12 || layout.dataSize < 0 || layout.dataOffset + layout.dataSize > int64_t(size))
        __builtin_trap();
}

void FuzzSoundResource(const uint8_t* data, size_t size) {
    vd::container::SoundResourceLayout layout;
    if (vd::container::ParseSoundResource(std::span<const uint8_t>(data, size), layout) != 0) return;
    // Nothing outside the stream is ever read.
    if (layout.dataOffset > size || layout.dataSize > size - layout.dataOffset) __builtin_trap();
    if (layout.channels < 1 || layout.frames < 0) __builtin_trap();
    if (layout.compression == 0) {
        if (layout.bits != 8 && layout.bits != 16) __builtin_trap();
        const uint64_t frameBytes = uint64_t(layout.channels) * uint64_t(layout.bits / 8);
        if (uint64_t(layout.frames) * frameBytes > layout.dataSize) __builtin_trap();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size == 0) return 0;
    if (data[0] % 2 == 0) FuzzPlainWav(data + 1, size - 1);
    else FuzzSoundResource(data + 1, size - 1);
    return 0;
}

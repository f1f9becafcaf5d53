// Reading a sound track's samples by frame range (frames in the media's time scale):
// as interleaved native 16-bit integers whatever the stored format, as floats for mixing, or
// as the stored PCM bytes themselves for the editing functions that process 'sowt'/'twos'/'raw '.
#pragma once

#include "platform/media/errors.h"
#include "platform/media/media.h"

#include <cstdint>
#include <vector>

namespace vd::media {

// The most a single read hands back; larger requests answer util::kMemoryFull. Big enough for hours
// of CD-quality sound, small enough that a lying header cannot make us reserve gigabytes.
inline constexpr uint64_t kMaxReadBytes = uint64_t(1) << 31;

// frames [firstFrame, firstFrame + frameCount) of the media, clipped to its end, with the first
// description's channel count. Compressed sound may end a little before its stated duration;
// out then holds the frames there are.
Status ReadFramesInt16(const Media& media, int64_t firstFrame, int64_t frameCount, std::vector<int16_t>& out);
Status ReadFramesFloat(const Media& media, int64_t firstFrame, int64_t frameCount, std::vector<float>& out);

// The stored bytes of the range, for PCM media whose runs all share description 1's format.
// util::kCorruptData for compressed sound or a media of mixed formats.
Status ReadStoredBytes(const Media& media, int64_t firstFrame, int64_t frameCount, std::vector<uint8_t>& out);

// ReadStoredBytes's checks alone, frameCount clipped as it clips it: for readers that go on to read
// the range a block at a time into buffers of their own with ReadStoredBytesInto.
Status CheckStoredBytes(const Media& media, int64_t firstFrame, int64_t& frameCount);
Status ReadStoredBytesInto(const Media& media, int64_t firstFrame, int64_t frameCount, uint8_t* out);

// Reads a media's frames in order, block after block, as floats: how a render walks a track
// without holding it whole.
class SequentialFrameReader {
public:
    explicit SequentialFrameReader(const Media& media) : media_(media) {}
    // Up to maxFrames frames into out (resized to frames × channels); 0 frames at the end.
    Status Next(int64_t maxFrames, std::vector<float>& out, int64_t& frames);

private:
    const Media& media_;
    size_t run_ = 0;
    int64_t inRun_ = 0;  // frames of the current run already read
    std::vector<uint8_t> bytes_;
};

}  // namespace vd::media

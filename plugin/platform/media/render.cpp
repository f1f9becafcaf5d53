#include "platform/media/render.h"

#include "platform/media/new_sound_movie.h"
#include "platform/media/sound_description.h"

#include <algorithm>
#include <new>
#include <vector>

namespace vd::media {

namespace {

constexpr size_t kBlockFrames = 65536;

// Samples that already are the file's bytes go file to file (or memory to file) in large blocks,
// without being read as frames at all.
Status CopyThrough(const Media& media, SoundWriter& writer) {
    constexpr int64_t kBytesPerFrame = 4;
    constexpr size_t kCopyBlock = 8 << 20;
    std::vector<uint8_t> block;
    for (const auto& run : media.Runs()) {
        const int64_t offset = run.firstFrame * kBytesPerFrame;
        const int64_t size = run.frameCount * kBytesPerFrame;
        if (run.store->FileDescriptor() >= 0) {
            if (Status s = writer.CopySowtBytes(run.store->FileDescriptor(), run.store->FileOffset() + offset, size))
                return s;
            continue;
        }
        for (int64_t done = 0; done < size;) {
            const size_t want = size_t(std::min<int64_t>(int64_t(kCopyBlock), size - done));
            block.resize(want);
            if (Status s = run.store->ReadBytes(offset + done, want, block.data())) return s;
            if (Status s = writer.WriteSowtBytes(block.data(), want)) return s;
            done += int64_t(want);
        }
    }
    return util::kNoError;
}

}  // namespace

Status RenderMovie(const Movie& movie, const std::string& target, const OutputFormat& format,
                   const RenderOptions& options) {
    std::unique_ptr<MixedBlockSource> source;
    if (Status s = MixedBlockSource::Open(movie, format, options, source)) return s;
    try {
        std::unique_ptr<SoundWriter> writer;
        if (Status s = OpenSoundWriter(format, target, writer)) return s;
        if (writer->TakesSowtBytes() && RendersAsCopy(movie, format, options)) {
            if (Status s = CopyThrough(movie.FirstSoundTrack()->media, *writer)) return s;
            return writer->Finish();
        }
        std::vector<int16_t> block(kBlockFrames * size_t(source->Channels()));
        for (;;) {
            size_t frames = 0;
            if (Status s = source->Read(block.data(), kBlockFrames, frames)) return s;
            if (frames > 0)
                if (Status s = writer->WriteFrames(block.data(), frames)) return s;
            if (frames < kBlockFrames) break;
        }
        return writer->Finish();
    } catch (const std::bad_alloc&) {
        return MediaFailure(util::kMemoryFull, "no memory to render the sound");
    }
}

Status RenderToMemory(const Movie& movie, const RenderOptions& options, Movie& rendered, const OutputFormat& format) {
    std::unique_ptr<MixedBlockSource> source;
    if (Status s = MixedBlockSource::Open(movie, format, options, source)) return s;
    const SampleDescription description = PcmSoundDescription(kFormatSowt, format.channels, 16, format.sampleRate);
    const size_t frameBytes = size_t(format.channels) * 2;
    try {
        // Sized from the stated lengths up front, so that the buffer never moves (a move would hold
        // the sound twice); a mix that comes out longer grows it, one that comes out shorter is cut.
        std::vector<uint8_t> bytes(size_t(StatedMixFrames(movie, format)) * frameBytes);
        size_t filled = 0;
        for (;;) {
            if (bytes.size() == filled) bytes.resize(filled + kBlockFrames * frameBytes);
            const size_t want = std::min(kBlockFrames, (bytes.size() - filled) / frameBytes);
            size_t frames = 0;
            if (Status s = source->Read(reinterpret_cast<int16_t*>(bytes.data() + filled), want, frames)) return s;
            filled += frames * frameBytes;
            if (frames < want) break;
        }
        bytes.resize(filled);
        Movie made;
        if (Status s = NewMemorySoundMovie(format.sampleRate, made)) return s;
        Track& track = *made.FirstSoundTrack();
        track.media.AddDescription(description);  // an empty mix still tells its format
        if (Status s = track.media.AdoptSamples(description, std::move(bytes), int64_t(filled / frameBytes))) return s;
        track.InsertMedia(0);
        rendered = std::move(made);
    } catch (const std::bad_alloc&) {
        return MediaFailure(util::kMemoryFull, "no memory for the rendered sound");
    }
    return util::kNoError;
}

}  // namespace vd::media

#include "platform/media/plain_wav.h"

#include "platform/media/codec_formats.h"
#include "platform/media/mac_time.h"
#include "platform/media/sample_store.h"

#include <new>

#include <fcntl.h>
#include <unistd.h>

namespace vd::media {

Status MovieFromPlainWav(const std::string& path, const struct stat& info, Movie& movie, bool& handled) {
    handled = false;
    PlainWavLayout layout;
    {
        const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
        if (fd < 0) return util::kNoError;  // the library opener reports why
        const bool plain = ReadPlainWavLayout(fd, int64_t(info.st_size), layout);
        ::close(fd);
        if (!plain) return util::kNoError;
    }
    const CodecFormat* row = FindCodecFormat(layout.codecName);
    if (!row) return util::kNoError;
    handled = true;
    try {
        Movie opened;
        opened.dataReference = {DataReference::Kind::kFile, path};
        opened.creationTime = opened.modificationTime = MacSecondsFromUnix(int64_t(info.st_mtime));
        opened.importerSubtype = FourCC("WAVE");
        SampleDescription d = PcmSoundDescription(row->dataFormat, layout.channels, row->sampleSize, layout.rate);
        d.bigEndian = row->bigEndian;
        Media media(kSoundMediaType, layout.rate);
        media.creationTime = media.modificationTime = opened.creationTime;
        media.AddDescription(d);
        Track& track = opened.AddTrack(Characteristic::kAudio, std::move(media));
        track.InsertMedia(0);
        const int64_t frames = layout.dataSize / BytesPerFrame(d);
        if (frames > 0) {
            std::shared_ptr<FileSampleStore> store;
            if (Status s = FileSampleStore::Open(path, layout.dataOffset, frames * BytesPerFrame(d), store)) return s;
            if (Status s = track.media.AppendRun(SampleRun{std::move(store), 0, frames, 1}, d)) return s;
        }
        movie = std::move(opened);
    } catch (const std::bad_alloc&) {
        return MediaFailure(util::kMemoryFull, "no memory to open " + path);
    }
    return util::kNoError;
}

}  // namespace vd::media

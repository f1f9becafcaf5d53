#include "container/sound_resource_movie.h"

#include "container/sound_resource.h"
#include "platform/media/memory_sound_decoder.h"
#include "platform/media/new_sound_movie.h"
#include "util/status_codes.h"

#include <bit>
#include <vector>

namespace vd::container {

namespace {

int32_t TimeScaleOf(uint32_t rate) { return int32_t((uint64_t(rate) + 32768) >> 16); }

}  // namespace

int32_t MovieFromSoundResource(std::span<const uint8_t> stream, media::Movie& movie) {
    SoundResourceLayout layout;
    if (int32_t e = ParseSoundResource(stream, layout)) return e;
    const double hertz = double(layout.rate) / 65536.0;
    if (TimeScaleOf(layout.rate) < 1) return util::kBadSoundFormat;  // below half a hertz
    media::Movie made;
    if (media::Status s = media::NewMemorySoundMovie(TimeScaleOf(layout.rate), made)) return s;
    media::Media& media = made.TrackAt(0).media;
    const uint8_t* samples = stream.data() + layout.dataOffset;
    if (layout.compression == 0) {
        media::SampleDescription d = media::PcmSoundDescription(layout.bits == 8 ? media::kFormatRaw : media::kFormatTwos,
                                                                layout.channels, layout.bits, hertz);
        d.sampleRate = layout.rate;  // the header's exact value, not one recomputed from a double
        if (media::Status s = media.AppendSamples(d, samples, layout.dataSize, layout.frames)) return s;
    } else {
        std::vector<int16_t> decoded;
        media::Status s = media::DecodeSoundBytes(layout.compression, layout.channels, TimeScaleOf(layout.rate), samples,
                                                  layout.dataSize, decoded);
        if (s == util::kNoCodec) return util::kBadSoundFormat;
        if (s) return s == util::kMemoryFull ? s : util::kCorruptData;
        media::SampleDescription d = media::PcmSoundDescription(media::kFormatSowt, layout.channels, 16, hertz);
        d.sampleRate = layout.rate;
        const size_t frames = decoded.size() / size_t(layout.channels);
        // Decoded samples are native 16-bit; 'sowt' names them on this little-endian machine.
        static_assert(std::endian::native == std::endian::little, "decoded samples are stored as 'sowt'");
        if (media::Status e = media.AppendSamples(d, decoded.data(), frames * size_t(layout.channels) * 2, int64_t(frames)))
            return e;
    }
    made.TrackAt(0).InsertMedia(0);
    movie = std::move(made);
    return 0;
}

}  // namespace vd::container

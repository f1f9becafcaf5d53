#include "sound/sound_function_steps.h"

#include "container/movie_parameter.h"
#include "container/sound_container.h"
#include "platform/media/movie_from_file.h"
#include "sound/wav_conversion.h"

namespace vd::sound {

int32_t SoundParameter(const FMX_DataVect* args, uint32_t index, PcmNeed need, SoundMovie& sound, bool& found) {
    SoundMovie opened;
    if (int32_t e = container::MovieFromParameter(args, index, opened.movie, found)) return e;
    if (!found) return 0;
    const media::Status s = need == PcmNeed::kLittleEndian ? EnsureLittleEndianPcm(opened) : EnsurePcm(opened);
    if (s) {
        found = false;
        return s;
    }
    sound = std::move(opened);
    return 0;
}

int32_t StoreSoundResult(FMX_Data* result, const media::Movie& edited) {
    SoundMovie rendered;
    if (media::Status s = TemporaryFile::Create(".wav", rendered.backing)) return s;
    if (media::Status s = WriteMovieAsWav(edited, rendered.backing.Path())) return s;
    if (media::Status s = media::MovieFromFile(rendered.backing.Path(), rendered.movie)) return s;
    return container::StoreMovieAsSound(result, rendered.movie);
}

}  // namespace vd::sound

// The steps every sound-editing function takes around its own work, in this order: the argument
// becomes a sound movie in PCM (converted into a temporary WAV file when it is not), the work makes
// a new movie, and that movie is written to a temporary WAV file, opened again and stored as the
// container result. The temporary files belong to owner objects (SoundMovie, TemporaryFile), so
// they are gone when the function returns, whichever step failed.
#pragma once

#include "platform/media/movie.h"
#include "sound/sound_movie.h"

#include <fmx/fmx.h>

#include <cstdint>

namespace vd::sound {

enum class PcmNeed { kAnyPcm, kLittleEndian };

// Argument index as a sound movie in PCM. 0 with found set; 0 with found false for an empty
// argument; the failure's code otherwise.
int32_t SoundParameter(const FMX_DataVect* args, uint32_t index, PcmNeed need, SoundMovie& sound, bool& found);

// The edited movie as the container result, by way of a temporary WAV file that is removed
// afterwards. 0 or the failure's code; the result is untouched on failure.
int32_t StoreSoundResult(FMX_Data* result, const media::Movie& edited);

}  // namespace vd::sound

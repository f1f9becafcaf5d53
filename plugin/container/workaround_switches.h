// The two workaround switches that Vandrel_Set changes and the movie-storing functions read:
// "lmworkaround" (link media instead of copying it, for movies the media layer would hang on) and
// "rfworkaround" (copy remote files to the temporary folder first). Each is a 16-bit word: bit 15
// says the word is still at its default, the low 15 bits hold the value. Both start at default 1.
#pragma once

#include <cstdint>

namespace vd::container {

extern uint16_t gLinkMediaWorkaround;
extern uint16_t gRemoteFileWorkaround;

// Both words at their default, value 1; done at every start-up.
void InitWorkaroundSwitches() noexcept;

inline bool WorkaroundValue(uint16_t word) { return (word & 0x7FFF) != 0; }
inline bool WorkaroundChangedByUser(uint16_t word) { return (word & 0x8000) == 0; }

}  // namespace vd::container

// Registering the function table with the host at start-up and removing it at shut-down.
#pragma once

#include <cstdint>

namespace vd {

// The id the next image or file entry takes; after registration the highest id handed out + 1,
// and shut-down counts it back down to 0.
extern int16_t gNextFunctionId;

// Ids 1..27 with their localized prototypes. When one is refused, those registered before it are
// removed again (k - 1 down to 1) and the answer is false.
bool RegisterSoundGroup() noexcept;

// The image and file entries, numbered from 51; a refused entry is simply missing from the host.
void RegisterImageGroup() noexcept;

// Unregisters gNextFunctionId, gNextFunctionId - 1, ... 1 (ids never registered included: the host
// answers those with an error we do not need).
void UnregisterAllFunctions() noexcept;

}  // namespace vd

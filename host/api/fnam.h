// The host's own encoding of "FNAM" streams (the name of an inserted file): one version byte (1)
// followed by the name in UTF-8. Plug-ins reach it only through FM_BinaryData_AddFNAMData and
// FM_BinaryData_GetFNAMData.
#pragma once

#include "objects.h"

#include <optional>
#include <span>
#include <string>

namespace vdhost {

constexpr uint32_t kFnamType = 0x464E414D;  // 'FNAM'

Bytes encodeFnam(std::u16string_view name);
// nullopt for bytes that are not in this encoding.
std::optional<std::u16string> decodeFnam(std::span<const uint8_t> bytes);

}  // namespace vdhost

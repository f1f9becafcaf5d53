// Reading a function's arguments. Indexes count from 0. Host failures arrive as exceptions from
// the host wrappers; the frame's own checks answer a status.
#pragma once

#include <fmx/fmx.h>

#include <cstdint>
#include <string>

namespace vd {

uint16_t ArgCount(const FMX_DataVect* args);
const FMX_Text* ArgText(const FMX_DataVect* args, uint32_t i);
const FMX_FixPt* ArgNumber(const FMX_DataVect* args, uint32_t i);
bool ArgHostBoolean(const FMX_DataVect* args, uint32_t i);
const FMX_BinaryData* ArgBinary(const FMX_DataVect* args, uint32_t i);
const FMX_Data* ArgData(const FMX_DataVect* args, uint32_t i);
int32_t ArgType(const FMX_Data* data);
bool ArgEmpty(const FMX_Data* data);

// The whole text as UTF-16 units, without terminator.
std::u16string ArgUtf16(const FMX_Text* text);
// The whole text as UTF-8.
std::string ArgCText(const FMX_Text* text);

// Argument i as a yes/no word (BooleanFromWord). 0 done; -50 no such argument; -108 out of memory.
int16_t ArgBoolean(const FMX_DataVect* args, uint32_t i, bool& value);

}  // namespace vd

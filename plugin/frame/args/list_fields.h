// "|"-separated lists in arguments, cut into the fixed slots the list-reading functions share.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace vd {

inline constexpr size_t kListSlots = 10;
inline constexpr size_t kListFieldMaxLength = 100;

struct ListFields {
    std::array<std::string, kListSlots> slots;
    int16_t count = 0;
};

// The fields of the last GetParams call.
extern ListFields gListFields;

// Field index (from 1) of the text into field. 0 done; 2 the text has fewer fields; 1 the field is
// longer than maxLength (legacy result 20003).
int GetParam(int index, std::string& field, std::string_view text, size_t maxLength, char separator);

// Cuts the text into gListFields. At most nine fields are taken although ten slots exist: the
// tenth field fails the call (legacy result 20100); callers were written against that limit and
// keep to it. Answers 1 when a field was too long or there were too many, else 0.
int GetParams(std::string_view text, char separator);

}  // namespace vd

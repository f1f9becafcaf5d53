#include "frame/args/list_fields.h"

#include "frame/args/legacy_result.h"

namespace vd {

ListFields gListFields;

int GetParam(int index, std::string& field, std::string_view text, size_t maxLength, char separator) {
    if (index < 1) return 2;
    size_t start = 0;
    for (int i = 1; i < index; ++i) {
        auto next = text.find(separator, start);
        if (next == std::string_view::npos) return 2;
        start = next + 1;
    }
    auto end = text.find(separator, start);
    auto piece = text.substr(start, end == std::string_view::npos ? std::string_view::npos : end - start);
    if (piece.size() > maxLength) {
        SetLegacyResult(20003, "getParam: parameter too long for result");
        return 1;
    }
    field.assign(piece);
    return 0;
}

int GetParams(std::string_view text, char separator) {
    for (auto& slot : gListFields.slots) slot.clear();
    gListFields.count = 0;
    if (text.empty()) return 0;
    bool tooLong = false;
    for (int index = 1;; ) {
        int got = GetParam(index, gListFields.slots[static_cast<size_t>(index - 1)], text,
                           kListFieldMaxLength, separator);
        if (got == 2) {
            gListFields.count = static_cast<int16_t>(index - 1);
            break;
        }
        tooLong |= got == 1;
        if (++index == static_cast<int>(kListSlots) + 1) {
            SetLegacyResult(20100, "GetParams:too many parameters for array");
            return 1;
        }
    }
    return tooLong ? 1 : 0;
}

}  // namespace vd

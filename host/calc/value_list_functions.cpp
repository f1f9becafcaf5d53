// List, ValueCount and GetValue: texts holding one value per line. Values are separated by a
// carriage return (¶); a line feed or CR LF from outside the host separates them as well. A
// separator at the very end does not start another value.
#include "builtin_function.h"
#include "function_arguments.h"

#include <vector>

namespace vdhost::calc {

namespace {

using Args = std::span<const FMX_Data>;

std::vector<std::u16string_view> splitValues(std::u16string_view text) {
    std::vector<std::u16string_view> values;
    size_t begin = 0;
    while (begin < text.size()) {
        size_t end = text.find_first_of(u"\r\n", begin);
        if (end == std::u16string_view::npos) {
            values.push_back(text.substr(begin));
            break;
        }
        values.push_back(text.substr(begin, end - begin));
        begin = end + (text[end] == u'\r' && end + 1 < text.size() && text[end + 1] == u'\n' ? 2 : 1);
    }
    return values;
}

// The values that are not empty, one per line.
FMX_Data list(Args a, SourcePosition) {
    std::u16string out;
    for (const FMX_Data& value : a) {
        auto text = textArgument(value);
        if (text.empty()) continue;
        if (!out.empty()) out.push_back(u'\r');
        out.append(text);
    }
    return makeText(std::move(out));
}

FMX_Data valueCount(Args a, SourcePosition) {
    return makeNumber(static_cast<double>(splitValues(textArgument(a[0])).size()));
}

// GetValue ( list ; n ): the n-th value (1-based), empty beyond the list.
FMX_Data getValue(Args a, SourcePosition) {
    auto values = splitValues(textArgument(a[0]));
    long long n = wholeArgument(a[1]);
    if (n < 1 || n > static_cast<long long>(values.size())) return makeText({});
    return makeText(std::u16string(values[static_cast<size_t>(n - 1)]));
}

constexpr BuiltinFunction kFunctions[] = {
    {u"List", 1, -1, list},
    {u"ValueCount", 1, 1, valueCount},
    {u"GetValue", 2, 2, getValue},
};

}  // namespace

std::span<const BuiltinFunction> valueListFunctions() { return kFunctions; }

}  // namespace vdhost::calc

// PatternCount and Position: finding text inside text without regard to case. Occurrences may
// overlap ("aa" occurs twice in "aaa").
#include "builtin_function.h"
#include "case_folding.h"
#include "function_arguments.h"

#include <algorithm>

namespace vdhost::calc {

namespace {

using Args = std::span<const FMX_Data>;

FMX_Data patternCount(Args a, SourcePosition) {
    std::u16string text = lowerCase(textArgument(a[0]));
    std::u16string search = lowerCase(textArgument(a[1]));
    if (search.empty()) return makeNumber(0);
    double count = 0;
    for (size_t at = text.find(search); at != std::u16string::npos; at = text.find(search, at + 1)) ++count;
    return makeNumber(count);
}

// Position ( text ; search ; start ; occurrence ): the 1-based position of the occurrence-th match
// counted from start, forwards for a positive occurrence and backwards for a negative one; 0 when
// there is none.
FMX_Data position(Args a, SourcePosition) {
    std::u16string text = lowerCase(textArgument(a[0]));
    std::u16string search = lowerCase(textArgument(a[1]));
    long long start = wholeArgument(a[2]);
    long long occurrence = wholeArgument(a[3]);
    if (search.empty() || occurrence == 0 || search.size() > text.size()) return makeNumber(0);
    long long lastStart = static_cast<long long>(text.size() - search.size());

    if (occurrence > 0) {
        long long from = std::max(start - 1, 0LL);
        if (from > lastStart) return makeNumber(0);
        size_t at = text.find(search, static_cast<size_t>(from));
        while (at != std::u16string::npos && --occurrence > 0) at = text.find(search, at + 1);
        return makeNumber(at == std::u16string::npos ? 0 : static_cast<double>(at + 1));
    }
    long long from = std::min(start - 1, lastStart);
    if (from < 0) return makeNumber(0);
    size_t at = text.rfind(search, static_cast<size_t>(from));
    while (at != std::u16string::npos && ++occurrence < 0) at = at == 0 ? std::u16string::npos : text.rfind(search, at - 1);
    return makeNumber(at == std::u16string::npos ? 0 : static_cast<double>(at + 1));
}

constexpr BuiltinFunction kFunctions[] = {
    {u"PatternCount", 2, 2, patternCount},
    {u"Position", 4, 4, position},
};

}  // namespace

std::span<const BuiltinFunction> searchFunctions() { return kFunctions; }

}  // namespace vdhost::calc

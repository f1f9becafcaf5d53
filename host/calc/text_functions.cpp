// GetAsText, Length, Left, Middle, Right, Substitute, Upper, Lower, Trim, Exact and Quote. Positions
// and lengths count UTF-16 units; counts outside the text are held to it rather than refused.
#include "builtin_function.h"
#include "case_folding.h"
#include "function_arguments.h"

#include <algorithm>

namespace vdhost::calc {

namespace {

using Args = std::span<const FMX_Data>;

constexpr char16_t kPilcrow = 0x00B6;

// The units of text in [from, to), both held to the text.
FMX_Data slice(std::u16string_view text, long long from, long long to) {
    long long size = static_cast<long long>(text.size());
    from = std::clamp(from, 0LL, size);
    to = std::clamp(to, 0LL, size);
    if (to <= from) return makeText({});
    return makeText(std::u16string(text.substr(static_cast<size_t>(from), static_cast<size_t>(to - from))));
}

FMX_Data getAsText(Args a, SourcePosition) { return makeText(textOf(a[0]).units); }

FMX_Data length(Args a, SourcePosition) { return makeNumber(static_cast<double>(textArgument(a[0]).size())); }

FMX_Data left(Args a, SourcePosition) { return slice(textArgument(a[0]), 0, wholeArgument(a[1])); }

FMX_Data right(Args a, SourcePosition) {
    auto text = textArgument(a[0]);
    long long size = static_cast<long long>(text.size());
    long long count = wholeArgument(a[1]);
    if (count <= 0) return makeText({});
    return slice(text, size - count, size);
}

// Middle ( text ; start ; count ): start is 1-based; the portion of [start, start + count) that lies
// within the text, so a start before 1 shortens the result rather than failing.
FMX_Data middle(Args a, SourcePosition) {
    long long from = wholeArgument(a[1]) - 1;
    long long count = wholeArgument(a[2]);
    if (count <= 0) return makeText({});
    return slice(textArgument(a[0]), from, from + count);
}

// Substitute ( text ; search ; replace ) or with bracketed pairs, flattened by the parser into
// text, search1, replace1, search2, replace2, ... Each pair works on the result of the ones before
// it; the search is case-sensitive.
FMX_Data substitute(Args a, SourcePosition) {
    std::u16string text(textArgument(a[0]));
    for (size_t i = 1; i + 1 < a.size(); i += 2) {
        std::u16string_view search = textArgument(a[i]);
        std::u16string_view replacement = textArgument(a[i + 1]);
        if (search.empty()) continue;
        std::u16string out;
        size_t from = 0;
        for (size_t at; (at = text.find(search, from)) != std::u16string::npos; from = at + search.size()) {
            out.append(text, from, at - from);
            out.append(replacement);
        }
        out.append(text, from, std::u16string::npos);
        text = std::move(out);
    }
    return makeText(std::move(text));
}

FMX_Data upper(Args a, SourcePosition) { return makeText(upperCase(textArgument(a[0]))); }
FMX_Data lower(Args a, SourcePosition) { return makeText(lowerCase(textArgument(a[0]))); }

FMX_Data trim(Args a, SourcePosition) {
    auto text = textArgument(a[0]);
    size_t begin = text.find_first_not_of(u' ');
    if (begin == std::u16string_view::npos) return makeText({});
    size_t end = text.find_last_not_of(u' ');
    return makeText(std::u16string(text.substr(begin, end - begin + 1)));
}

FMX_Data exact(Args a, SourcePosition) { return makeBoolean(textArgument(a[0]) == textArgument(a[1])); }

// The text as a literal that reads back as the same text.
FMX_Data quote(Args a, SourcePosition) {
    std::u16string out = u"\"";
    for (char16_t c : textArgument(a[0])) {
        if (c == u'"' || c == u'\\' || c == kPilcrow) out.push_back(u'\\');
        out.push_back(c == u'\r' ? kPilcrow : c);
    }
    out.push_back(u'"');
    return makeText(std::move(out));
}

constexpr BuiltinFunction kFunctions[] = {
    {u"GetAsText", 1, 1, getAsText},
    {u"Length", 1, 1, length},
    {u"Left", 2, 2, left},
    {u"Middle", 3, 3, middle},
    {u"Right", 2, 2, right},
    {u"Substitute", 3, -1, substitute},
    {u"Upper", 1, 1, upper},
    {u"Lower", 1, 1, lower},
    {u"Trim", 1, 1, trim},
    {u"Exact", 2, 2, exact},
    {u"Quote", 1, 1, quote},
};

}  // namespace

std::span<const BuiltinFunction> textFunctions() { return kFunctions; }

}  // namespace vdhost::calc

// The records of a table: NewRecord ( table ) makes one and makes it current, GoToRecord ( table ;
// id ) makes an existing one current, CurrentRecord ( table ) tells which is. Each answers the
// record's id, so a script can keep it ($id := NewRecord ( "Photos" )) and come back to it.
#include "api/text_codec.h"
#include "builtin_function.h"
#include "calc_error.h"
#include "context.h"
#include "function_arguments.h"

#include <cmath>

namespace vdhost::calc {

namespace {

using Args = std::span<const FMX_Data>;

std::string tableArgument(const FMX_Data& d) { return utf16ToUtf8(textArgument(d)); }

FMX_Data newRecord(Context& context, Args a, SourcePosition) {
    return makeNumber(static_cast<double>(context.newRecord(tableArgument(a[0]))));
}

FMX_Data goToRecord(Context& context, Args a, SourcePosition where) {
    const double id = numberOf(a[1]);
    if (!(id >= 1) || id != std::trunc(id) || id > 9e15)
        throw CalcError(CalcError::Kind::Evaluation, where,
                        "GoToRecord needs a record id (a whole number from 1), not " + utf8Of(a[1]));
    context.goToRecord(tableArgument(a[0]), static_cast<int64_t>(id));
    return makeNumber(id);
}

FMX_Data currentRecord(Context& context, Args a, SourcePosition) {
    return makeNumber(static_cast<double>(context.currentRecord(tableArgument(a[0]))));
}

constexpr BuiltinFunction kFunctions[] = {
    {u"NewRecord", 1, 1, nullptr, newRecord},
    {u"GoToRecord", 2, 2, nullptr, goToRecord},
    {u"CurrentRecord", 1, 1, nullptr, currentRecord},
};

}  // namespace

std::span<const BuiltinFunction> recordFunctions() { return kFunctions; }

}  // namespace vdhost::calc

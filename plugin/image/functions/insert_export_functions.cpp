// Vandrel_InsertImage, Vandrel_InsertFile and Vandrel_ExportField.
#include "image/functions/insert_export_functions.h"

#include "fmapi/args/arguments.h"
#include "image/field_export.h"
#include "image/file_insertion.h"
#include "image/image_insertion.h"

namespace vd::image {

fmapi::Outcome InsertImageFunction(const FunctionCall& call) {
    return InsertImage(ArgData(call.args, 0), ArgHostBoolean(call.args, 1));
}

fmapi::Outcome InsertFileFunction(const FunctionCall& call) {
    return InsertFile(ArgData(call.args, 0), ArgHostBoolean(call.args, 1), ArgHostBoolean(call.args, 2));
}

fmapi::Outcome ExportFieldFunction(const FunctionCall& call) {
    return ExportField(call.args, 1, ArgHostBoolean(call.args, 2));
}

}  // namespace vd::image

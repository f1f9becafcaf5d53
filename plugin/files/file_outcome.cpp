#include "files/file_outcome.h"

#include "fmapi/args/arg_count.h"
#include "fmapi/args/results.h"

namespace vd::files {

namespace {

constexpr util::Status kWrongCount = 20100;

}  // namespace

FileOutcome Succeeded(std::string text, const ResolvedItem* item) {
    FileOutcome outcome;
    if (item && !item->chosenPath.empty()) {
        outcome.text = item->chosenPath;
        if (!text.empty()) outcome.text += '\r';
    }
    outcome.text += text;
    return outcome;
}

FileOutcome Failed(util::Status status, std::string_view message) {
    FileOutcome outcome;
    outcome.status = status;
    outcome.message = message;
    return outcome;
}

FileOutcome FailedToResolve(const ResolvedItem& item, std::string_view message) {
    FileOutcome outcome = Failed(item.status, item.message.empty() ? message : std::string_view(item.message));
    outcome.detail = item.detail;
    return outcome;
}

FileOutcome WrongArgumentCount(int expected) { return Failed(kWrongCount, ArgCountMessage(expected)); }

FMX_ErrCode Answer(VDSError& error, FMX_Data* result, const FileOutcome& outcome) {
    error.SetCode(outcome.status);
    if (outcome.message.empty()) return SetResultUtf8(result, outcome.text);
    error.SetMessage(outcome.message);
    error.AppendDetail(outcome.detail);
    return SetResultUtf8(result, error.StatusText());
}

}  // namespace vd::files

#include "files/file_outcome.h"

namespace vd::files {

fmapi::Outcome Succeeded(std::string text, const ResolvedItem* item) {
    if (!item || item->chosenPath.empty()) return fmapi::Outcome::Text(std::move(text));
    return fmapi::Outcome::Text(item->chosenPath + (text.empty() ? "" : "\r") + text);
}

fmapi::Outcome Failed(util::Status status, std::string_view message, std::string_view detail) {
    std::string text(message);
    if (!detail.empty()) text.append(" ").append(detail);
    return fmapi::Outcome::Failure(status, std::move(text));
}

fmapi::Outcome FailedToResolve(const ResolvedItem& item, std::string_view message) {
    return Failed(item.status, item.message.empty() ? message : std::string_view(item.message), item.detail);
}

}  // namespace vd::files

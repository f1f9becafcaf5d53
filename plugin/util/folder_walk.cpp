#include "util/folder_walk.h"

namespace vd::util {

FolderWalk::FolderWalk(std::string floor, AtFloor atFloor) : floor_(std::move(floor)), atFloor_(atFloor) {}

Status FolderWalk::Step(std::string_view piece) {
    if (piece.empty() || piece == ".") return kNoError;
    if (piece == "..") {
        if (!names_.empty()) {
            names_.pop_back();
            return kNoError;
        }
        return atFloor_ == AtFloor::Stay ? kNoError : kFolderNotFound;
    }
    names_.emplace_back(piece);
    return kNoError;
}

Status FolderWalk::Walk(std::string_view text, std::string_view separators) {
    while (true) {
        const size_t end = text.find_first_of(separators);
        if (const Status status = Step(text.substr(0, end)); status != kNoError) return status;
        if (end == std::string_view::npos) return kNoError;
        text.remove_prefix(end + 1);
    }
}

std::string FolderWalk::Path() const {
    std::string path = floor_;
    for (const std::string& name : names_) {
        if (path.empty() || path.back() != '/') path.push_back('/');
        path.append(name);
    }
    return path.empty() ? std::string("/") : path;
}

std::string NormalizeAbsolutePath(std::string_view path) {
    FolderWalk walk("/", FolderWalk::AtFloor::Stay);
    walk.Walk(path, "/");
    return walk.Path();
}

}  // namespace vd::util

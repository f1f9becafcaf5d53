#include "files/file_path_resolver.h"

#include "files/special_folder_codes.h"
#include "platform/fs/item_operations.h"
#include "platform/ui/dialog_service.h"
#include "platform/fs/path_resolver.h"

namespace vd::files {

namespace {

constexpr size_t kLongestPrompt = 255;  // the dialogs' prompt was a Pascal string

char UpperAscii(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

// Cut at a whole UTF-8 character, never inside one.
std::string PromptOf(std::string_view text) {
    if (text.size() <= kLongestPrompt) return std::string(text);
    size_t cut = kLongestPrompt;
    while (cut > 0 && (static_cast<unsigned char>(text[cut]) & 0xC0) == 0x80) --cut;
    return std::string(text.substr(0, cut));
}

// A path text against a base folder. The resolver says a missing target is a new item in an
// existing folder; a broken symbolic link is missing to it but is an item all the same.
ResolvedItem ResolveText(std::string_view text, const std::string& base) {
    ResolvedItem item;
    item.status = util::ResolvePath(item.location, text, true, base);
    if (item.status != util::kNoError) {
        item.location = util::FileLocation{};
        return item;
    }
    if (!item.location.leafName.empty()) {
        const std::string path = item.Path();
        const platform::fs::ItemProbe itself = platform::fs::ProbeItemItself(path);
        if (itself.kind != platform::fs::ItemKind::Missing) {
            item.location.existingPath = path;
            item.location.leafName.clear();
        } else {
            item.status = util::kFileNotFound;
        }
    }
    return item;
}

// The line that holds the reference: from the return before it to the return after it.
std::string_view ReferenceLine(std::string_view text, size_t at) {
    const size_t before = text.rfind('\r', at);
    const size_t start = before == std::string_view::npos ? 0 : before + 1;
    const size_t end = text.find('\r', at);
    return text.substr(start, end == std::string_view::npos ? std::string_view::npos : end - start);
}

ResolvedItem Failed(util::Status status) {
    ResolvedItem item;
    item.status = status;
    return item;
}

ResolvedItem ResolveCode(std::string_view text, const std::string& defaultFolder) {
    const char letter = text.size() > 1 ? UpperAscii(text[1]) : '\0';
    std::string folder;
    std::string chosenPath;
    if (letter == 'U' || letter == 'V') {
        platform::ui::DialogRequest request;
        request.kind = letter == 'U' ? platform::ui::DialogKind::ChooseFolder : platform::ui::DialogKind::ChooseFile;
        if (text.size() > 2 && text[2] == ':') request.prompt = PromptOf(text.substr(3));
        request.startFolder = defaultFolder;
        platform::ui::DialogAnswer answer = platform::ui::ShowDialog(request);
        if (answer.status != util::kNoError) {
            ResolvedItem item = Failed(answer.status);
            item.detail = std::move(answer.detail);
            return item;
        }
        folder = std::move(answer.path);
        if (letter == 'V') chosenPath = folder;
    } else if (const auto special = SpecialFolderOfCode(letter)) {
        if (const util::Status status = platform::fs::FindSpecialFolder(*special, folder); status != util::kNoError) {
            return Failed(status);
        }
    } else {
        ResolvedItem item = Failed(util::kUnknownFolderCode);
        item.message = kUnknownCodeMessage;
        return item;
    }

    ResolvedItem item = text.size() > 2 && text[2] == '/' && text.size() > 3 ? ResolveText(text.substr(3), folder)
                                                                            : ResolveText(folder, "/");
    item.chosenPath = std::move(chosenPath);
    return item;
}

}  // namespace

ResolvedItem ResolveFilePath(const PathArgument& argument, const std::string& defaultFolder) {
    if (!argument.isText && argument.holdsContainerData) return Failed(util::kContainerData);
    const std::string_view text = argument.text;
    if (const size_t reference = text.find("mac:/"); reference != std::string_view::npos) {
        return ResolveText(ReferenceLine(text, reference), defaultFolder);
    }
    if (!text.empty() && text[0] == '.' && (text.size() < 2 || text[1] != '.')) {
        return ResolveCode(text, defaultFolder);
    }
    return ResolveText(text, defaultFolder);
}

}  // namespace vd::files

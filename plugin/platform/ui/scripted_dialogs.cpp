#include "platform/ui/scripted_dialogs.h"

#include <cctype>
#include <cerrno>
#include <fstream>
#include <optional>
#include <utility>
#include <vector>

#include <sys/stat.h>

#include "util/status_codes.h"
#include "platform/fs/item_probe.h"
#include "util/folder_walk.h"

namespace vd::platform::ui {

namespace {

struct ScriptPosition {
    std::string path;
    dev_t device = 0;
    ino_t inode = 0;
    timespec modified{};
    off_t size = 0;
    size_t nextAnswer = 0;
};

// Dialogs are shown on the host's main thread only, so the position needs no lock.
ScriptPosition gPosition;

bool SameFile(const ScriptPosition& p, const std::string& path, const struct stat& info) {
    return p.path == path && p.device == info.st_dev && p.inode == info.st_ino && p.size == info.st_size &&
           p.modified.tv_sec == info.st_mtim.tv_sec && p.modified.tv_nsec == info.st_mtim.tv_nsec;
}

std::vector<std::string> Answers(const std::string& path) {
    std::vector<std::string> answers;
    std::ifstream in(path);
    std::string line;
    constexpr size_t kMostAnswers = 10000;
    while (answers.size() < kMostAnswers && std::getline(in, line)) {
        while (!line.empty() && (line.back() == '\r' || line.back() == ' ' || line.back() == '\t')) line.pop_back();
        size_t start = line.find_first_not_of(" \t");
        if (start == std::string::npos || line[start] == '#') continue;
        answers.push_back(line.substr(start));
    }
    return answers;
}

DialogAnswer Failure(util::Status status, std::string detail) {
    DialogAnswer answer;
    answer.status = status;
    answer.detail = "(" + std::move(detail) + ")";
    return answer;
}

const char* KindWord(DialogKind kind) {
    switch (kind) {
        case DialogKind::ChooseFolder: return "folder chooser";
        case DialogKind::ChooseFile: return "file chooser";
        case DialogKind::Alert: return "alert";
    }
    return "dialog";
}

DialogAnswer Chosen(std::string_view path, DialogKind kind) {
    if (path.empty() || path.front() != '/') {
        return Failure(util::kBadParameter, "the UI script must give an absolute path");
    }
    std::string normalised = util::NormalizeAbsolutePath(path);
    const fs::ItemProbe probe = fs::ProbeItem(normalised);
    if (probe.status != util::kNoError) return Failure(probe.status, "the UI script's item cannot be reached");
    if (probe.kind == fs::ItemKind::Missing) return Failure(util::kFileNotFound, "the UI script's item does not exist");
    if (kind == DialogKind::ChooseFolder && probe.kind != fs::ItemKind::Folder) {
        return Failure(util::kNotAFolder, "the UI script chose a file in a folder chooser");
    }
    if (kind == DialogKind::ChooseFile && probe.kind != fs::ItemKind::File) {
        return Failure(util::kNotAFile, "the UI script chose a folder in a file chooser");
    }
    DialogAnswer answer;
    answer.path = std::move(normalised);
    return answer;
}

std::string_view TrimFront(std::string_view text) {
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
    return text;
}

// The line's first word, and the rest after the blanks that follow it.
std::pair<std::string_view, std::string_view> FirstWord(std::string_view line) {
    line = TrimFront(line);
    const size_t blank = line.find_first_of(" \t");
    if (blank == std::string_view::npos) return {line, {}};
    return {line.substr(0, blank), TrimFront(line.substr(blank + 1))};
}

bool SameWord(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (size_t i = 0; i < a.size(); ++i) {
        if (std::tolower(static_cast<unsigned char>(a[i])) != std::tolower(static_cast<unsigned char>(b[i]))) {
            return false;
        }
    }
    return true;
}

std::string FormWord(const FormRequest& request) {
    return request.title.empty() ? std::string("the settings form") : "the " + request.title + " dialog";
}

FormAnswer FormFailure(util::Status status, std::string detail) {
    DialogAnswer failure = Failure(status, std::move(detail));
    return FormAnswer{failure.status, {}, std::move(failure.detail)};
}

// "rate, channels, size": what a person who wrote a wrong word needs to write a right one.
template <typename Items, typename Word>
std::string ListOf(const Items& items, Word word) {
    std::string list;
    for (const auto& item : items) {
        if (!list.empty()) list += ", ";
        list += word(item);
    }
    return list;
}

// Sets one control from "name=value".
std::optional<FormAnswer> SetControl(std::string_view pair, const FormRequest& request,
                                     std::vector<size_t>& selected) {
    const size_t equals = pair.find('=');
    if (equals == std::string_view::npos || equals == 0) {
        return FormFailure(util::kBadParameter, "the UI script gives \"" + std::string(pair) + "\" to " +
                                                    FormWord(request) + "; settings are given as name=value");
    }
    const std::string_view name = pair.substr(0, equals);
    const std::string_view value = pair.substr(equals + 1);
    for (size_t c = 0; c < request.controls.size(); ++c) {
        const FormControl& control = request.controls[c];
        if (!SameWord(control.name, name)) continue;
        for (size_t i = 0; i < control.choices.size(); ++i) {
            if (SameWord(control.choices[i].value, value)) {
                selected[c] = i;
                return std::nullopt;
            }
        }
        return FormFailure(util::kBadParameter,
                           "the UI script gives " + control.name + " \"" + std::string(value) + "\"; the choices are " +
                               ListOf(control.choices, [](const FormChoice& choice) { return choice.value; }));
    }
    return FormFailure(util::kBadParameter,
                       "the UI script sets \"" + std::string(name) + "\", which " + FormWord(request) +
                           " does not have: " +
                           ListOf(request.controls, [](const FormControl& control) { return control.name; }));
}

// The next answer of the script, or the failure that stands for it; what names the dialog asking.
DialogAnswer NextLine(const std::string& scriptPath, const std::string& what, std::string& line) {
    struct stat info {};
    if (::stat(scriptPath.c_str(), &info) != 0) {
        return Failure(platform::StatusFromErrno(errno), "the UI script " + scriptPath + " cannot be read");
    }
    if (!SameFile(gPosition, scriptPath, info)) {
        gPosition = ScriptPosition{scriptPath, info.st_dev, info.st_ino, info.st_mtim, info.st_size, 0};
    }
    const std::vector<std::string> answers = Answers(scriptPath);
    if (gPosition.nextAnswer >= answers.size()) {
        return Failure(util::kUserCancelled, "the UI script has no answer left for " + what);
    }
    line = answers[gPosition.nextAnswer++];
    return DialogAnswer{};
}

}  // namespace

DialogAnswer NextScriptAnswer(const std::string& scriptPath, const std::string& what, std::string& line) {
    return NextLine(scriptPath, what, line);
}

FormAnswer AnswerFromLine(std::string_view line, const FormRequest& request) {
    auto [word, rest] = FirstWord(line);
    if (word == "cancel") return FormAnswer{util::kUserCancelled, {}, {}};
    if (word != "ok") {
        return FormFailure(util::kBadParameter, "the UI script answers \"" + std::string(line) + "\" to " +
                                                    FormWord(request));
    }
    std::vector<size_t> selected;
    for (const FormControl& control : request.controls) selected.push_back(control.selected);
    while (!rest.empty()) {
        const auto [pair, after] = FirstWord(rest);
        if (std::optional<FormAnswer> failure = SetControl(pair, request, selected)) return std::move(*failure);
        rest = after;
    }
    return FormAnswer{util::kNoError, std::move(selected), {}};
}

DialogAnswer AnswerFromLine(std::string_view line, const DialogRequest& request) {
    const auto [word, rest] = FirstWord(line);

    if (word == "cancel") return DialogAnswer{util::kUserCancelled, {}, {}};
    if (word == "ok" && rest.empty() && request.kind == DialogKind::Alert) return DialogAnswer{};
    if (word == "choose-folder" && request.kind == DialogKind::ChooseFolder) return Chosen(rest, request.kind);
    if (word == "choose-file" && request.kind == DialogKind::ChooseFile) return Chosen(rest, request.kind);
    return Failure(util::kBadParameter,
                   "the UI script answers \"" + std::string(line) + "\" to a " + KindWord(request.kind));
}

DialogAnswer AnswerFromScript(const std::string& scriptPath, const DialogRequest& request) {
    std::string line;
    DialogAnswer next = NextLine(scriptPath, std::string("this ") + KindWord(request.kind), line);
    if (next.status != util::kNoError) return next;
    return AnswerFromLine(line, request);
}

FormAnswer AnswerFromScript(const std::string& scriptPath, const FormRequest& request) {
    std::string line;
    DialogAnswer next = NextLine(scriptPath, FormWord(request), line);
    if (next.status != util::kNoError) return FormAnswer{next.status, {}, std::move(next.detail)};
    return AnswerFromLine(line, request);
}

}  // namespace vd::platform::ui

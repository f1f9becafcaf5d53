#include "platform/ui/scripted_dialogs.h"

#include <cerrno>
#include <fstream>
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

}  // namespace

DialogAnswer AnswerFromLine(std::string_view line, const DialogRequest& request) {
    const size_t blank = line.find(' ');
    const std::string_view word = line.substr(0, blank);
    std::string_view rest = blank == std::string_view::npos ? std::string_view() : line.substr(blank + 1);
    while (!rest.empty() && rest.front() == ' ') rest.remove_prefix(1);

    if (word == "cancel") return DialogAnswer{util::kUserCancelled, {}, {}};
    if (word == "ok" && request.kind == DialogKind::Alert) return DialogAnswer{};
    if (word == "choose-folder" && request.kind == DialogKind::ChooseFolder) return Chosen(rest, request.kind);
    if (word == "choose-file" && request.kind == DialogKind::ChooseFile) return Chosen(rest, request.kind);
    return Failure(util::kBadParameter,
                   "the UI script answers \"" + std::string(line) + "\" to a " + KindWord(request.kind));
}

DialogAnswer AnswerFromScript(const std::string& scriptPath, const DialogRequest& request) {
    struct stat info {};
    if (::stat(scriptPath.c_str(), &info) != 0) {
        return Failure(fs::StatusFromErrno(errno), "the UI script " + scriptPath + " cannot be read");
    }
    if (!SameFile(gPosition, scriptPath, info)) {
        gPosition = ScriptPosition{scriptPath, info.st_dev, info.st_ino, info.st_mtim, info.st_size, 0};
    }
    const std::vector<std::string> answers = Answers(scriptPath);
    if (gPosition.nextAnswer >= answers.size()) {
        return Failure(util::kUserCancelled, "the UI script has no answer left for this " +
                                               std::string(KindWord(request.kind)));
    }
    return AnswerFromLine(answers[gPosition.nextAnswer++], request);
}

}  // namespace vd::platform::ui

#include "platform/common/library_search.h"

#include <glob.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <sstream>

namespace vd::platform {

namespace {

void AddFolder(std::vector<std::string>& folders, std::string folder) {
    while (folder.size() > 1 && folder.back() == '/') folder.pop_back();
    if (folder.empty() || folder[0] != '/') return;  // relative entries would depend on our cwd
    if (std::find(folders.begin(), folders.end(), folder) == folders.end()) folders.push_back(std::move(folder));
}

struct GlobFree {
    void operator()(glob_t* g) const {
        globfree(g);
        delete g;
    }
};

// One ld.so.conf file; depth bounds include cycles.
void ReadConf(const std::string& path, std::vector<std::string>& folders, int depth) {
    if (depth > 8) return;
    std::ifstream conf(path);
    std::string line;
    while (std::getline(conf, line)) {
        if (auto hash = line.find('#'); hash != std::string::npos) line.resize(hash);
        std::istringstream words(line);
        std::string word;
        if (!(words >> word)) continue;
        if (word == "include") {
            std::string pattern;
            while (words >> pattern) {
                if (pattern[0] != '/') {
                    auto slash = path.rfind('/');
                    pattern = path.substr(0, slash + 1) + pattern;
                }
                std::unique_ptr<glob_t, GlobFree> matches(new glob_t{});
                if (glob(pattern.c_str(), 0, nullptr, matches.get()) == 0)
                    for (size_t i = 0; i < matches->gl_pathc; ++i) ReadConf(matches->gl_pathv[i], folders, depth + 1);
            }
        } else if (word != "hwcap") {
            AddFolder(folders, word);
        }
    }
}

}  // namespace

std::vector<std::string> LibrarySearchFolders() {
    std::vector<std::string> folders;
    if (const char* env = std::getenv("LD_LIBRARY_PATH")) {
        std::istringstream list(env);
        std::string folder;
        while (std::getline(list, folder, ':')) AddFolder(folders, folder);
    }
    ReadConf("/etc/ld.so.conf", folders, 0);
    for (const char* system : {"/lib", "/usr/lib", "/lib64", "/usr/lib64"}) AddFolder(folders, system);
    return folders;
}

std::string FindLibrary(std::string_view soname, const std::vector<std::string>& folders) {
    for (const auto& folder : folders) {
        std::string path = folder + "/" + std::string(soname);
        if (access(path.c_str(), R_OK) == 0) return path;
    }
    return {};
}

}  // namespace vd::platform

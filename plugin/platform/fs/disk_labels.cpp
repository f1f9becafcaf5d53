#include "platform/fs/disk_labels.h"

#include <memory>

#include <dirent.h>
#include <sys/stat.h>

namespace vd::platform::fs {

namespace {

int HexValue(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

struct DirCloser {
    void operator()(DIR* dir) const { closedir(dir); }
};

// A machine has a handful of labelled devices; a folder with more is not udev's and is not
// worth reading in full.
constexpr size_t kMaxLabels = 4096;

}  // namespace

std::string DecodeLabelEscapes(std::string_view linkName) {
    std::string label;
    label.reserve(linkName.size());
    for (size_t i = 0; i < linkName.size(); ++i) {
        if (linkName[i] == '\\' && i + 3 < linkName.size() && linkName[i + 1] == 'x') {
            const int high = HexValue(linkName[i + 2]);
            const int low = HexValue(linkName[i + 3]);
            if (high >= 0 && low >= 0) {
                label.push_back(static_cast<char>(high * 16 + low));
                i += 3;
                continue;
            }
        }
        label.push_back(linkName[i]);
    }
    return label;
}

std::vector<DiskLabel> ReadDiskLabels(const std::string& folder) {
    std::vector<DiskLabel> labels;
    std::unique_ptr<DIR, DirCloser> dir(opendir(folder.c_str()));
    if (!dir) return labels;
    while (const dirent* item = readdir(dir.get())) {
        const std::string_view name = item->d_name;
        if (name == "." || name == "..") continue;
        struct stat info {};
        // stat follows the link to the device node; a dangling link is a device that went away.
        if (stat((folder + "/" + item->d_name).c_str(), &info) != 0 || !S_ISBLK(info.st_mode)) continue;
        labels.push_back(DiskLabel{info.st_rdev, DecodeLabelEscapes(name)});
        if (labels.size() >= kMaxLabels) break;
    }
    return labels;
}

}  // namespace vd::platform::fs

#include "value_output.h"

#include "api/fnam.h"
#include "api/text_codec.h"
#include "api/values.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <stdexcept>
#include <unistd.h>

namespace vdhost {

namespace fs = std::filesystem;

namespace {

constexpr uint32_t kSizeType = 0x53495A45;  // 'SIZE'

std::string showLineBreaks(std::string s) {
    for (auto& c : s)
        if (c == '\r') c = '\n';
    return s;
}

}  // namespace

std::string displayText(const FMX_Data& value, bool raw) {
    if (isContainer(value) && !value.binary.streams.empty()) {
        std::string out;
        for (const auto& s : value.binary.streams) {
            if (!out.empty()) out += '\n';
            out += fourCharText(s.type) + " " + std::to_string(s.size());
            if (s.type == kFnamType)
                if (auto name = decodeFnam(*s.bytes)) out += " " + utf16ToUtf8(*name);
        }
        return out;
    }
    std::string text = utf8Of(value);
    return raw ? text : showLineBreaks(std::move(text));
}

std::shared_ptr<const StreamBytes> outputBytes(const FMX_Data& value, bool raw) {
    if (isContainer(value))
        for (const auto& s : value.binary.streams)
            if (s.type != kFnamType && s.type != kSizeType) return s.bytes;
    std::string text = raw ? utf8Of(value) : showLineBreaks(utf8Of(value));
    return std::make_shared<const StreamBytes>(Bytes(text.begin(), text.end()));
}

void writeFileAtomically(const fs::path& path, std::span<const uint8_t> bytes) {
    fs::path folder = path.has_parent_path() ? path.parent_path() : fs::path(".");
    std::string pattern = (folder / ("." + path.filename().string() + ".XXXXXX")).string();
    int fd = mkstemp(pattern.data());
    if (fd < 0) throw std::runtime_error("cannot write " + path.string() + ": " + std::strerror(errno));
    const uint8_t* p = bytes.data();
    size_t left = bytes.size();
    int error = 0;
    while (left > 0) {
        ssize_t n = ::write(fd, p, left);
        if (n < 0) {
            if (errno == EINTR) continue;
            error = errno;
            break;
        }
        p += n;
        left -= static_cast<size_t>(n);
    }
    if (::close(fd) != 0 && !error) error = errno;
    if (!error) {
        // mkstemp makes the file private; results are ordinary files.
        mode_t mask = umask(0);
        umask(mask);
        ::chmod(pattern.c_str(), 0666 & ~mask);
        if (std::rename(pattern.c_str(), path.c_str()) != 0) error = errno;
    }
    if (error) {
        ::unlink(pattern.c_str());
        throw std::runtime_error("cannot write " + path.string() + ": " + std::strerror(error));
    }
}

}  // namespace vdhost

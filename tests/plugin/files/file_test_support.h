// What the file-function tests share: a session of the real bundle, a private home with its XDG
// folders inside a temporary folder, and calls whose path arguments travel as $ variables, so that
// names with quotes, returns and "¶" reach the plug-in as they are.
#pragma once

#include "plugin/plugin_test_support.h"

#include <api/text_codec.h>
#include <api/values.h>
#include <session/session.h>
#include <support/temp_folder.h>

#include <sys/stat.h>
#include <sys/xattr.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <optional>
#include <vector>
#include <initializer_list>
#include <string>

namespace vdtest {

inline std::string FinderInfoBytes(const char type[4], const char creator[4], uint16_t flags) {
    std::string bytes(32, '\0');
    bytes.replace(0, 4, type, 4);
    bytes.replace(4, 4, creator, 4);
    bytes[8] = static_cast<char>(flags >> 8);
    bytes[9] = static_cast<char>(flags & 0xFF);
    return bytes;
}

// Some file systems keep no user attributes; tests that need them skip there.
inline bool SetAttribute(const std::filesystem::path& path, const char* name, const std::string& value) {
    return lsetxattr(path.c_str(), name, value.data(), value.size(), 0) == 0;
}

inline std::string Attribute(const std::filesystem::path& path, const char* name) {
    char buffer[4096];
    const ssize_t size = lgetxattr(path.c_str(), name, buffer, sizeof buffer);
    return size < 0 ? std::string("<none>") : std::string(buffer, static_cast<size_t>(size));
}

class FileFunctionsTest : public ::testing::Test {
protected:
    FileFunctionsTest()
        : home_("HOME", (root_ / "home").string()),
          config_("XDG_CONFIG_HOME", std::nullopt),
          data_("XDG_DATA_HOME", std::nullopt),
          tmp_("TMPDIR", (root_ / "tmp").string()),
          script_("VANDREL_UI_SCRIPT", std::nullopt),
          display_("DISPLAY", std::nullopt),
          wayland_("WAYLAND_DISPLAY", std::nullopt) {
        std::filesystem::create_directories(root_ / "home");
        std::filesystem::create_directories(root_ / "tmp");
        std::filesystem::create_directories(root_ / "work");
        session_.emplace(BundleSession(root_ / "Test.vddb"));
        // The default folder lives as long as the plug-in; every test starts from its own.
        EXPECT_EQ(Call(u"Vandrel_SetDefaultFolder ( $a )", {Work().string()}), "");
    }

    std::filesystem::path Work() const { return root_.path() / "work"; }
    std::filesystem::path Home() const { return root_.path() / "home"; }

    // The calculation with $a, $b, $c set to the texts, in order.
    std::string Call(const std::u16string& calculation, std::initializer_list<std::string> texts = {}) {
        std::vector<FMX_Data> values;
        for (const std::string& text : texts) values.push_back(vdhost::makeTextUtf8(text));
        return vdhost::utf8Of(EvaluateWith(*session_, calculation, values));
    }
    std::string LastError() { return Call(u"Vandrel_GetLastError"); }

    static void Write(const std::filesystem::path& path, const std::string& bytes = "data") {
        std::filesystem::create_directories(path.parent_path());
        writeFile(path, bytes);
    }

    TempFolder root_;
    ScopedEnv home_, config_, data_, tmp_, script_, display_, wayland_;
    std::optional<vdhost::Session> session_;
};

// Everything below a folder as "relative/path" lines, sorted, for before-and-after comparisons.
inline std::string TreeListing(const std::filesystem::path& folder) {
    std::vector<std::string> lines;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        lines.push_back(std::filesystem::relative(entry.path(), folder).string() +
                        (entry.is_directory() ? "/" : ""));
    }
    std::sort(lines.begin(), lines.end());
    std::string text;
    for (const std::string& line : lines) text += line + "\n";
    return text;
}

}  // namespace vdtest

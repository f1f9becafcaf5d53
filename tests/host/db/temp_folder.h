// A fresh folder per test, removed with everything in it when the test ends.
#pragma once

#include <api/objects.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

namespace vdhost::db::testing {

class TempFolderTest : public ::testing::Test {
protected:
    void SetUp() override {
        std::string pattern = (std::filesystem::temp_directory_path() / "vddb-test-XXXXXX").string();
        ASSERT_NE(mkdtemp(pattern.data()), nullptr);
        folder_ = pattern;
    }
    void TearDown() override {
        std::error_code ec;
        std::filesystem::remove_all(folder_, ec);
    }

    std::filesystem::path file(const std::string& name) const { return folder_ / name; }
    const std::filesystem::path& folder() const { return folder_; }

    // Names of everything in the folder, sorted.
    std::vector<std::string> listing() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder_))
            names.push_back(entry.path().filename().string());
        std::sort(names.begin(), names.end());
        return names;
    }

private:
    std::filesystem::path folder_;
};

inline std::string fileBytes(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

inline void writeFile(const std::filesystem::path& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

inline std::shared_ptr<const Bytes> bytesOf(const std::string& s) {
    return std::make_shared<const Bytes>(s.begin(), s.end());
}

}  // namespace vdhost::db::testing

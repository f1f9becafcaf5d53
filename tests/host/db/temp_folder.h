// A fresh folder per database test (the shared TempFolder), with the helpers these tests use.
// Members of a derived fixture are made after the folder and gone before it.
#pragma once

#include "support/temp_folder.h"

#include <api/objects.h>
#include <api/values.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace vdhost::db::testing {

class TempFolderTest : public ::testing::Test {
protected:
    std::filesystem::path file(const std::string& name) const { return folder_ / name; }
    const std::filesystem::path& folder() const { return folder_.path(); }

    // Names of everything in the folder, sorted.
    std::vector<std::string> listing() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder()))
            names.push_back(entry.path().filename().string());
        std::sort(names.begin(), names.end());
        return names;
    }

private:
    vdtest::TempFolder folder_;
};

using vdtest::readFile;
using vdtest::writeFile;

inline std::shared_ptr<const StreamBytes> bytesOf(const std::string& s) {
    return std::make_shared<const StreamBytes>(Bytes(s.begin(), s.end()));
}

// The same own text and the same streams, byte for byte, in the same order.
inline void expectSameContainer(const FMX_Data& actual, const FMX_Data& expected) {
    ASSERT_EQ(actual.type, FMX_TYPE_BINARY);
    EXPECT_EQ(actual.text.units, expected.text.units);
    ASSERT_EQ(actual.binary.streams.size(), expected.binary.streams.size());
    for (size_t i = 0; i < expected.binary.streams.size(); ++i) {
        SCOPED_TRACE(fourCharText(expected.binary.streams[i].type));
        EXPECT_EQ(actual.binary.streams[i].type, expected.binary.streams[i].type);
        ASSERT_TRUE(actual.binary.streams[i].bytes);
        const StreamBytes empty;
        const StreamBytes& want = expected.binary.streams[i].bytes ? *expected.binary.streams[i].bytes : empty;
        EXPECT_TRUE(std::ranges::equal(*actual.binary.streams[i].bytes, want)) << "the stream's bytes differ";
    }
}

}  // namespace vdhost::db::testing

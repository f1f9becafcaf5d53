// The list of functions that answer "not implemented yet" is written in one place only, the
// function table (the entries the not-implemented handler serves). The README and the function
// reference carry a copy of it between markers; this test says when the copies are stale and
// prints the block to paste.
#include "frame/function_table.h"
#include "frame/functions/frame_functions.h"

#include <support/temp_folder.h>

#include <gtest/gtest.h>

#include <set>
#include <vector>

namespace {

constexpr const char* kBegin =
    "<!-- not-implemented list: begin (generated from the function table; "
    "the test UnfinishedFunctions.DocsListWhatTheTableSays prints it) -->\n";
constexpr const char* kEnd = "<!-- not-implemented list: end -->\n";
constexpr size_t kLineWidth = 100;

std::vector<std::string> UnfinishedFunctionNames() {
    std::vector<std::string> names;
    std::set<std::string> seen;  // a function registered twice is listed once
    for (const vd::FunctionEntry& entry : vd::FunctionTable()) {
        if (entry.handler == vd::NotImplemented && seen.insert(entry.name).second) names.emplace_back(entry.name);
    }
    return names;
}

std::string Block(const std::vector<std::string>& names) {
    // With nothing left to list, the block says so rather than ending on an empty list.
    const std::vector<const char*> opening =
        names.empty() ? std::vector<const char*>{"Every", "registered", "function", "is", "implemented:", "none",
                                                 "answers", "the", "status", "text",
                                                 "`$-4:<their name>: Feature is not implemented yet.`"}
                      : std::vector<const char*>{"These", "registered", "functions", "answer", "the", "status", "text",
                                                 "`$-4:<their name>: Feature is not implemented yet.`", "(and",
                                                 "`Vandrel_GetLastError`", "reports", "it)", "until", "their",
                                                 "subsystem", "lands:"};
    std::vector<std::string> words(opening.begin(), opening.end());
    for (size_t i = 0; i < names.size(); ++i) words.push_back("`" + names[i] + "`" + (i + 1 < names.size() ? "," : "."));
    std::string text = kBegin;
    std::string line;
    for (const std::string& word : words) {
        if (!line.empty() && line.size() + 1 + word.size() > kLineWidth) {
            text += line + "\n";
            line.clear();
        }
        line += (line.empty() ? "" : " ") + word;
    }
    return text + line + "\n" + kEnd;
}

// The committed block, markers included; empty when the markers are missing.
std::string CommittedBlock(const std::string& text) {
    const size_t begin = text.find(kBegin);
    const size_t end = text.find(kEnd);
    if (begin == std::string::npos || end == std::string::npos || end < begin) return {};
    return text.substr(begin, end + std::string(kEnd).size() - begin);
}

TEST(UnfinishedFunctions, DocsListWhatTheTableSays) {
    const std::vector<std::string> names = UnfinishedFunctionNames();
    const std::string expected = Block(names);
    for (const char* document : {"README.md", "docs/functions.md"}) {
        const std::string text = vdtest::readFile(std::string(VD_SOURCE_DIR) + "/" + document);
        EXPECT_EQ(CommittedBlock(text), expected)
            << document << " is out of step with the function table; put this block in its place:\n\n" << expected;
    }
    // The README's own list of working functions must not claim one of them.
    const std::string readme = vdtest::readFile(std::string(VD_SOURCE_DIR) + "/README.md");
    const size_t working = readme.find("Working now:");
    ASSERT_NE(working, std::string::npos);
    const std::string workingList = readme.substr(working, readme.find(kBegin) - working);
    for (const std::string& name : names) {
        EXPECT_EQ(workingList.find("`" + name + "`"), std::string::npos) << name << " is listed as working";
    }
}

}  // namespace

#include <db/reference_text.h>

#include <gtest/gtest.h>

namespace vdhost::db {
namespace {

TEST(ReferenceText, OnlyTheFirstLinesExactPrefixCounts) {
    EXPECT_TRUE(isReferenceText(u"size:120,80\rimage:/a.png"));
    EXPECT_TRUE(isReferenceText(u"url:"));

    EXPECT_FALSE(isReferenceText(u""));
    EXPECT_FALSE(isReferenceText(u"File:a.txt"));     // case matters
    EXPECT_FALSE(isReferenceText(u" file:a.txt"));    // at the very start only
    EXPECT_FALSE(isReferenceText(u"file"));           // the colon belongs to the prefix
    EXPECT_FALSE(isReferenceText(u"photo\rfile:a"));  // only the first line counts
}

}  // namespace
}  // namespace vdhost::db

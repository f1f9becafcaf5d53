// The report and the look-up of one tag, from tags as the libraries hand them over.
#include "metadata/tag_report.h"
#include "sound/information/information_extraction.h"

#include <gtest/gtest.h>

namespace {

using namespace vd::metadata;

const std::vector<TagEntry> kTags = {
    {"ID3v2", "ID3v2.TIT2", "TIT2", "Song", "Song"},
    {"EXIF", "Exif.Photo.ExposureTime", "ExposureTime", "1/250 s", "1/250"},
    {"IPTC", "Iptc.Application2.Keywords", "Keywords", "Alpha", "Alpha"},
    {"IPTC", "Iptc.Application2.Keywords", "Keywords", "Beta", "Beta"},
    {"ID3v2", "ID3v2.TXXX.a:b/c", "TXXX.a:b/c", "two\r\nlines", "two\r\nlines"},
};

// Families in a fixed order, repeats on one line, and every label reachable by Vandrel_ExtractInfo's path.
TEST(MetadataReport, SectionsReadBackThroughExtractInfo) {
    const std::string report = MetadataReport(kTags, ValueForm::kInterpreted);
    EXPECT_EQ(report,
              "EXIF\r  ExposureTime: 1/250 s\r"
              "IPTC\r  Keywords: Alpha; Beta\r"
              "ID3v2\r  TIT2: Song\r  TXXX.a_b_c: two  lines\r");
    EXPECT_EQ(vd::sound::ExtractInfo(report, "EXIF/ExposureTime").value, "1/250 s");
    EXPECT_EQ(vd::sound::ExtractInfo(report, "ID3v2/TXXX.a_b_c").value, "two  lines");
    EXPECT_EQ(MetadataReport(kTags, ValueForm::kRaw).substr(0, 25), "EXIF\r  ExposureTime: 1/25");
    EXPECT_EQ(MetadataReport({}, ValueForm::kRaw), "");
    // Cut after the last whole line that fits.
    EXPECT_EQ(MetadataReport(kTags, ValueForm::kInterpreted, 30), "EXIF\r  ExposureTime: 1/250 s\r");
}

TEST(MetadataReport, FindsATagByFullKeyOrReportPath) {
    EXPECT_EQ(FindTag(kTags, "Exif.Photo.ExposureTime", ValueForm::kRaw), "1/250");
    EXPECT_EQ(FindTag(kTags, " EXIF/ExposureTime ", ValueForm::kInterpreted), "1/250 s");
    EXPECT_EQ(FindTag(kTags, "IPTC/Keywords", ValueForm::kRaw), "Alpha; Beta");
    EXPECT_EQ(FindTag(kTags, "Exif.Photo.FNumber", ValueForm::kRaw), std::nullopt);
    EXPECT_EQ(FindTag(kTags, "ExposureTime", ValueForm::kRaw), std::nullopt);  // the family is part of the path
}

TEST(MetadataReport, TextInAnyEncodingBecomesUtf8) {
    EXPECT_EQ(vd::metadata::AsUtf8("Gr\xC3\xBC\xC3\x9F" "e \xE6\x9D\xB1"), "Gr\xC3\xBC\xC3\x9F" "e \xE6\x9D\xB1");
    EXPECT_EQ(vd::metadata::AsUtf8("Ren\xE9"), "Ren\xC3\xA9");          // Latin-1
    EXPECT_EQ(vd::metadata::AsUtf8("\xC0\xAF"), "\xC3\x80\xC2\xAF");    // an overlong "/" is no UTF-8
    EXPECT_EQ(vd::metadata::AsUtf8("\xE6\x9D"), "\xC3\xA6\xC2\x9D");    // nor a sequence cut short
    EXPECT_EQ(vd::metadata::ValueFormOf(" RAW "), ValueForm::kRaw);
    EXPECT_EQ(vd::metadata::ValueFormOf(""), ValueForm::kInterpreted);
    EXPECT_EQ(vd::metadata::ValueFormOf("pretty"), std::nullopt);
}

}  // namespace

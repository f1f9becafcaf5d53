#include "files/item_report.h"

#include "util/date_text.h"

namespace vd::files {

namespace {

char Flag(bool set) { return set ? '1' : '0'; }

}  // namespace

std::string FourCharText(uint32_t code) {
    std::string text;
    for (int shift = 24; shift >= 0; shift -= 8) {
        const char c = static_cast<char>((code >> shift) & 0xFF);
        if (c == '\0') break;
        text.push_back(c);
    }
    return text;
}

std::string FormatItemReport(const platform::fs::CatalogInfo& info) {
    std::string report;
    report += "Created: " + util::FormatDateTime(platform::fs::MacSecondsFromUnix(info.creationTime)) + '\r';
    report += "Modified: " + util::FormatDateTime(platform::fs::MacSecondsFromUnix(info.modificationTime)) + '\r';
    report += std::string("Invisible: ") + Flag(info.isInvisible) + '\r';
    report += std::string("Directory: ") + Flag(info.isFolder) + '\r';
    if (info.isFolder) return report;
    report += "Data size (b): " + std::to_string(info.dataSize) + '\r';
    report += "Resource size (b): " + std::to_string(info.resourceSize) + '\r';
    report += std::string("Locked: ") + Flag(info.isLocked) + '\r';
    report += std::string("Alias: ") + Flag(info.isAlias) + '\r';
    report += "Type: " + FourCharText(info.finder.type) + '\r';
    report += "Creator: " + FourCharText(info.finder.creator) + '\r';
    return report;
}

}  // namespace vd::files

#include "reference_text.h"

namespace vdhost::db {
namespace {

constexpr std::u16string_view kPrefixes[] = {
    u"size:",     u"image:", u"imagemac:", u"imagewin:", u"movie:",   u"moviemac:",
    u"moviewin:", u"file:",  u"filemac:",  u"filewin:",  u"filenet:", u"url:",
};

}  // namespace

bool isReferenceText(std::u16string_view text) {
    std::u16string_view firstLine = text.substr(0, text.find_first_of(u"\r\n"));
    for (std::u16string_view prefix : kPrefixes)
        if (firstLine.starts_with(prefix)) return true;
    return false;
}

}  // namespace vdhost::db

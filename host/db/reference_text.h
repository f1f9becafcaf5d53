// Texts that stand for a container stored by reference: a path or address with its kind in front,
// or a "size:" line as containers of pictures begin. Such a text written into a container field
// becomes a container without streams whose own text is the text.
#pragma once

#include <string_view>

namespace vdhost::db {

// True when the first line (up to the first CR or LF) starts with "size:" or with one of the
// prefixes image:, imagemac:, imagewin:, movie:, moviemac:, moviewin:, file:, filemac:, filewin:,
// filenet:, url: (case matters).
bool isReferenceText(std::u16string_view text);

}  // namespace vdhost::db

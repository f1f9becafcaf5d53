// The words that begin the host's container reference texts ("imagemac:/Users/a.jpg", "file:a.wav").
#pragma once

#include <string>
#include <string_view>

namespace vd::util {

// The prefix word the text begins with, or an empty view. Only the word is compared, not its colon,
// and the longer words are tried before the words they begin with; so "moviemacX" is "moviemac" and
// "movie:" is "movie". Callers check the character after the word themselves.
std::string_view ReferencePrefix(std::string_view text);

// Appends the word and "mac:" and answers true; an empty word appends nothing and answers false.
// References the plug-in writes always carry the "mac" form, whatever form they were read in.
bool AppendPlatformPrefix(std::string& text, std::string_view word);

}  // namespace vd::util

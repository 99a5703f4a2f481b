#pragma once

// Texts from files and servers, made fit to be shown. A front end shows nothing else.

#include <cstddef>
#include <string>
#include <string_view>

namespace tarnwick {

// UTF-8 without control characters: CR LF becomes "\n", any other control character or separator of lines a blank, and
// a byte that is no UTF-8 becomes U+FFFD.
std::string ShownLines(std::string_view text);

// The same on one line.
std::string ShownLine(std::string_view text);

// The text up to its first CR, LF or separator of lines (U+2028, U+2029).
std::string_view FirstLine(std::string_view text);

// The first `characters` characters and "..." when there are more. A byte that is no UTF-8 counts as one.
std::string Shortened(std::string_view text, std::size_t characters);

// The number of characters of a text.
std::size_t CharacterCount(std::string_view text);

} // namespace tarnwick

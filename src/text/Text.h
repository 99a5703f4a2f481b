#pragma once

// Texts from files and servers, made fit to be shown. A front end shows nothing else.

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace tarnwick {

// UTF-8 without control characters: CR LF becomes "\n", any other control character or separator of lines a blank. A
// byte that is no UTF-8 becomes U+FFFD, and so does a character that makes others be read in another order than they
// are stored (U+202A to 202E, U+2066 to 2069).
std::string ShownLines(std::string_view text);

// The same on one line.
std::string ShownLine(std::string_view text);

// The text up to its first CR, LF or separator of lines (U+2028, U+2029).
std::string_view FirstLine(std::string_view text);

// The first `characters` characters and "..." when there are more. A byte that is no UTF-8 counts as one.
std::string Shortened(std::string_view text, std::size_t characters);

// Lines of a tool tip, ended by CR LF: at most 1,000 characters, in lines of at most 100, which fit every screen.
std::string ToolTipText(std::string_view text);

// The text, or as much of it as is no wider than `width` with "..." after it. `widthOf` measures a text.
std::string Elided(std::string_view text, int width, const std::function<int(const std::string&)>& widthOf);

// The number of characters of a text.
std::size_t CharacterCount(std::string_view text);

} // namespace tarnwick

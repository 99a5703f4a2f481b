#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tarnwick {

// One character of a UTF-8 text (RFC 3629).
struct Utf8Character {
    char32_t Code = 0;     // of an invalid one the byte
    std::size_t Bytes = 1; // of an invalid one 1
    bool Valid = false;
};

// The character that begins at `at`, which must be below the size of `text`. A byte that begins no whole character is
// taken by itself and is not valid.
Utf8Character DecodeUtf8(std::string_view text, std::size_t at);

// Appends a code point; a surrogate gets the three bytes that its number would have.
void AppendUtf8(std::string& text, char32_t code);

// At most `bytes` bytes from the start of `text`, cut in front of a character that would not fit whole.
std::string_view CutUtf8(std::string_view text, std::size_t bytes);

} // namespace tarnwick

#pragma once

// The letters, controls and digits of ASCII, whatever the language of the desktop. All other bytes are themselves.

#include <algorithm>
#include <string>
#include <string_view>

namespace tarnwick {

constexpr char AsciiUpper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - ('a' - 'A')) : c; }

inline std::string AsciiUpper(std::string_view text) {
    std::string upper(text);
    std::ranges::transform(upper, upper.begin(), [](char c) { return AsciiUpper(c); });
    return upper;
}

constexpr bool IsAscii(std::string_view text) {
    return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

constexpr bool IsAsciiControl(char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7F'; }

// Only the letters of ASCII have a case here.
constexpr bool EqualRegardlessOfCase(std::string_view a, std::string_view b) {
    return std::ranges::equal(a, b, [](char one, char other) { return AsciiUpper(one) == AsciiUpper(other); });
}

constexpr bool BeginsWithRegardlessOfCase(std::string_view text, std::string_view beginning) {
    return EqualRegardlessOfCase(text.substr(0, beginning.size()), beginning);
}

constexpr bool EndsWithRegardlessOfCase(std::string_view text, std::string_view ending) {
    return text.size() >= ending.size() && EqualRegardlessOfCase(text.substr(text.size() - ending.size()), ending);
}

// The two hexadecimal digits of a byte, in upper case.
inline std::string HexOf(char c) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    const auto byte = static_cast<unsigned char>(c);
    return {digits[byte >> 4U], digits[byte & 0x0FU]};
}

} // namespace tarnwick

#pragma once

// Initialisation files, the form of shortcuts and of settings: sections headed by a name in square brackets, lines of
// key, "=" and value under them. Pure functions over bytes.

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace tarnwick {

// The text of a file's bytes: a UTF-8 mark is passed over, a file with the UTF-16LE mark is converted. All other bytes
// are text as they are.
std::string IniText(std::string_view bytes);

// Where a key is in a text, or where its line would belong. Offsets in bytes.
struct IniPlace {
    std::optional<std::string_view> Value; // up to its first NUL; none: the section or the key is missing
    std::size_t LineStart = 0;             // the key's line with its line end
    std::size_t LineEnd = 0;
    std::optional<std::size_t> SectionEnd; // after the last line of the section that isn't blank; none: no such section
};

IniPlace FindIniPlace(std::string_view text, std::string_view section, std::string_view key);

// The value without the outer quotes, at most `size` - 1 bytes of it, cut in front of a character that would not fit
// whole; with a `size` of 0 the whole value. The empty text where there is none.
std::string FindIniValue(std::string_view bytes, std::string_view section, std::string_view key, std::size_t size);

} // namespace tarnwick

#include "text/IniFile.h"

#include "text/Ascii.h"
#include "text/Utf8.h"

#include <algorithm>

namespace tarnwick {

namespace {

constexpr std::string_view Utf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view Utf16Mark = "\xFF\xFE";
constexpr char32_t Replacement = 0xFFFD;

std::string_view Trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\v\f";
    const std::size_t start = text.find_first_not_of(blanks);
    if (start == std::string_view::npos)
        return {};
    return text.substr(start, text.find_last_not_of(blanks) - start + 1);
}

std::string_view WithoutOuterQuotes(std::string_view text) {
    const bool quoted =
        text.size() >= 2 && (text.front() == '"' || text.front() == '\'') && text.back() == text.front();
    return quoted ? text.substr(1, text.size() - 2) : text;
}

// Every shortcut passes here a character at a time: find_first_of() takes three times as long.
std::size_t LineEndFrom(std::string_view text, std::size_t at) {
    while (at < text.size() && text[at] != '\n' && text[at] != '\r')
        ++at;
    return at;
}

// The name in a section's heading; none for any other line.
std::optional<std::string_view> SectionOf(std::string_view line) {
    const std::size_t end = line.find(']');
    if (!line.starts_with('[') || end == std::string_view::npos)
        return std::nullopt;
    return Trimmed(line.substr(1, end - 1));
}

std::string Utf8FromUtf16(std::string_view bytes) {
    const auto unitAt = [bytes](std::size_t at) {
        return static_cast<char32_t>(static_cast<unsigned char>(bytes[at]) | static_cast<unsigned char>(bytes[at + 1])
                                                                                 << 8U);
    };
    std::string text;
    text.reserve(bytes.size());
    for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
        char32_t code = unitAt(at);
        if (code >= 0xD800 && code < 0xE000) {
            const char32_t low = at + 3 < bytes.size() ? unitAt(at + 2) : 0;
            const bool pair = code < 0xDC00 && low >= 0xDC00 && low < 0xE000;
            code = pair ? 0x10000 + ((code - 0xD800) << 10U) + (low - 0xDC00) : Replacement;
            at += pair ? 2 : 0;
        }
        AppendUtf8(text, code);
    }
    return text;
}

} // namespace

std::string IniText(std::string_view bytes) {
    if (bytes.starts_with(Utf16Mark))
        return Utf8FromUtf16(bytes.substr(Utf16Mark.size()));
    return std::string(bytes.substr(bytes.starts_with(Utf8Mark) ? Utf8Mark.size() : 0));
}

IniPlace FindIniPlace(std::string_view text, std::string_view section, std::string_view key) {
    IniPlace place;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = LineEndFrom(text, start);
        const std::size_t next = std::min(end + (text.substr(end).starts_with("\r\n") ? 2 : 1), text.size());
        const std::string_view line = Trimmed(text.substr(start, end - start));
        if (const auto name = SectionOf(line)) {
            if (place.SectionEnd)
                return place; // a later section of the same name never helps
            if (EqualRegardlessOfCase(*name, section))
                place.SectionEnd = next;
        } else if (place.SectionEnd && !line.empty()) {
            place.SectionEnd = next;
            const std::size_t equals = line.starts_with(';') ? std::string_view::npos : line.find('=');
            if (equals != std::string_view::npos && EqualRegardlessOfCase(Trimmed(line.substr(0, equals)), key)) {
                const std::string_view value = line.substr(equals + 1);
                place.Value = WithoutOuterQuotes(Trimmed(value.substr(0, value.find('\0'))));
                place.LineStart = start;
                place.LineEnd = next;
                return place;
            }
        }
        start = next;
    }
    return place;
}

std::string FindIniValue(std::string_view bytes, std::string_view section, std::string_view key, std::size_t size) {
    std::string converted;
    if (bytes.starts_with(Utf16Mark))
        bytes = converted = IniText(bytes);
    else if (bytes.starts_with(Utf8Mark))
        bytes.remove_prefix(Utf8Mark.size());
    const IniPlace place = FindIniPlace(bytes, section, key);
    return std::string(CutUtf8(place.Value.value_or(""), size - 1));
}

} // namespace tarnwick

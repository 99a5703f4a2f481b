#include "text/Text.h"

#include "text/Utf8.h"

#include <algorithm>
#include <numeric>
#include <vector>

namespace tarnwick {

namespace {

constexpr char32_t ReplacementCharacter = 0xFFFD;

bool IsControl(char32_t code) {
    return code < U' ' || (code >= 0x7F && code < 0xA0) || code == 0x2028 || code == 0x2029;
}

bool ChangesOrder(char32_t code) { return (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069); }

} // namespace

std::string ShownLines(std::string_view text) {
    std::string lines;
    lines.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        if (text.substr(at, 2) == "\r\n") {
            lines += '\n';
            at += 2;
            continue;
        }
        const Utf8Character character = DecodeUtf8(text, at);
        if (!character.Valid || ChangesOrder(character.Code))
            AppendUtf8(lines, ReplacementCharacter);
        else if (IsControl(character.Code))
            lines += ' ';
        else
            lines += text.substr(at, character.Bytes);
        at += character.Bytes;
    }
    return lines;
}

std::string ShownLine(std::string_view text) {
    std::string line = ShownLines(text);
    std::ranges::replace(line, '\n', ' ');
    return line;
}

std::string_view FirstLine(std::string_view text) {
    std::size_t end = text.find_first_of("\r\n");
    for (const std::string_view separator : {"\xE2\x80\xA8", "\xE2\x80\xA9"})
        end = std::min(end, text.find(separator));
    return text.substr(0, end);
}

std::string Shortened(std::string_view text, std::size_t characters) {
    std::size_t at = 0;
    for (; characters > 0 && at < text.size(); --characters)
        at += DecodeUtf8(text, at).Bytes;
    return at == text.size() ? std::string(text) : std::string(text.substr(0, at)) + "...";
}

std::string ToolTipText(std::string_view text) {
    constexpr std::size_t most = 1000;   // characters
    constexpr std::size_t longest = 100; // characters of a line
    const std::string shown = Shortened(ShownLine(text), most);
    std::string lines;
    std::size_t length = 0;
    for (std::size_t at = 0; at < shown.size(); ++length) {
        const std::size_t bytes = DecodeUtf8(shown, at).Bytes;
        if (length == longest) {
            lines += "\r\n";
            length = 0;
        }
        lines += shown.substr(at, bytes);
        at += bytes;
    }
    return lines;
}

std::string Elided(std::string_view text, int width, const std::function<int(const std::string&)>& widthOf) {
    std::string whole(text);
    if (widthOf(whole) <= width)
        return whole;
    std::vector<std::size_t> counts(CharacterCount(text));
    std::iota(counts.begin(), counts.end(), std::size_t{0});
    const auto over = std::ranges::partition_point(
        counts, [&](std::size_t count) { return widthOf(Shortened(text, count)) <= width; });
    return Shortened(text, over == counts.begin() ? 0 : *(over - 1));
}

std::size_t CharacterCount(std::string_view text) {
    std::size_t count = 0;
    for (std::size_t at = 0; at < text.size(); at += DecodeUtf8(text, at).Bytes)
        ++count;
    return count;
}

} // namespace tarnwick

#include "text/Text.h"

#include "text/Utf8.h"

#include <algorithm>

namespace tarnwick {

namespace {

constexpr char32_t ReplacementCharacter = 0xFFFD;

bool IsControl(char32_t code) {
    return code < U' ' || (code >= 0x7F && code < 0xA0) || code == 0x2028 || code == 0x2029;
}

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
        if (!character.Valid)
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

std::size_t CharacterCount(std::string_view text) {
    std::size_t count = 0;
    for (std::size_t at = 0; at < text.size(); at += DecodeUtf8(text, at).Bytes)
        ++count;
    return count;
}

} // namespace tarnwick

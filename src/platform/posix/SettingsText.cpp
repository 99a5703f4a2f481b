#include "platform/posix/SettingsText.h"

#include "text/Ascii.h"
#include "text/IniFile.h"

namespace tarnwick {

namespace {

// `text` without a character that means something to the reader: controls and "\" anywhere, those of `atEnds` as the
// first or last one, those of `anywhere`.
std::string Escaped(std::string_view text, std::string_view atEnds, std::string_view anywhere) {
    std::string escaped;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool end = i == 0 || i + 1 == text.size();
        if (IsAsciiControl(text[i]) || text[i] == '\\' || anywhere.find(text[i]) != std::string_view::npos ||
            (end && atEnds.find(text[i]) != std::string_view::npos))
            escaped += "\\x" + HexOf(text[i]);
        else
            escaped += text[i];
    }
    return escaped;
}

std::string EscapedName(std::string_view name) { return Escaped(name, " ", "=[];"); }
std::string EscapedValue(std::string_view value) { return Escaped(value, " \"'", ""); }

std::optional<unsigned> HexDigit(char c) {
    if (c >= '0' && c <= '9')
        return static_cast<unsigned>(c - '0');
    if (c >= 'A' && c <= 'F')
        return static_cast<unsigned>(c - 'A') + 10U;
    if (c >= 'a' && c <= 'f')
        return static_cast<unsigned>(c - 'a') + 10U;
    return std::nullopt;
}

// A "\" that begins no "\xHH" was typed by a user and is taken as it is.
std::string Unescaped(std::string_view text) {
    std::string plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool escape = text.substr(i).starts_with("\\x") && i + 3 < text.size();
        const auto high = escape ? HexDigit(text[i + 2]) : std::nullopt;
        const auto low = escape ? HexDigit(text[i + 3]) : std::nullopt;
        if (high && low) {
            plain += static_cast<char>(static_cast<unsigned char>(*high << 4U | *low));
            i += 3;
        } else {
            plain += text[i];
        }
    }
    return plain;
}

} // namespace

std::optional<std::string> SettingIn(std::string_view text, std::string_view section, std::string_view key) {
    const auto value = FindIniPlace(text, EscapedName(section), EscapedName(key)).Value;
    return value ? std::optional(Unescaped(*value)) : std::nullopt;
}

void PutSetting(std::string& text, std::string_view section, std::string_view key, std::string_view value) {
    const IniPlace place = FindIniPlace(text, EscapedName(section), EscapedName(key));
    const std::size_t at = place.Value ? place.LineStart : place.SectionEnd.value_or(text.size());
    const std::size_t length = place.Value ? place.LineEnd - place.LineStart : 0;
    std::string line;
    if (at > 0 && text[at - 1] != '\n' && text[at - 1] != '\r')
        line += '\n';
    if (!place.SectionEnd)
        line.append("[").append(EscapedName(section)).append("]\n");
    line.append(EscapedName(key)).append("=").append(EscapedValue(value)).append("\n");
    text.replace(at, length, line);
}

} // namespace tarnwick

#include "platform/posix/PosixSettings.h"

#include "favorites/InitialisationFile.h"
#include "platform/posix/RegularFile.h"
#include "platform/posix/UserFolders.h"

#include <optional>

namespace tarnwick {

namespace {

// The application's own folder; the empty text when there can be none.
std::string FolderOf(const std::string& application) {
    const bool plain = !application.empty() && application != "." && application != ".." &&
                       application.find_first_of(std::string_view("/\\\0", 3)) == std::string::npos;
    const std::string configuration = ConfigurationFolder();
    return plain && !configuration.empty() ? configuration + "/" + application : std::string();
}

std::string FileIn(const std::string& folder) { return folder + "/settings.ini"; }

bool IsControl(char c) { return static_cast<unsigned char>(c) < 0x20 || c == '\x7F'; }

void AppendEscaped(std::string& text, char c) {
    constexpr std::string_view Digits = "0123456789ABCDEF";
    const auto byte = static_cast<unsigned char>(c);
    text += "\\x";
    text += Digits[byte >> 4U];
    text += Digits[byte & 0x0FU];
}

// `text` without a character that means something to the reader: controls and "\" anywhere, those of `atEnds` as the
// first or last one, those of `anywhere`.
std::string Escaped(std::string_view text, std::string_view atEnds, std::string_view anywhere) {
    std::string escaped;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool end = i == 0 || i + 1 == text.size();
        if (IsControl(text[i]) || text[i] == '\\' || anywhere.find(text[i]) != std::string_view::npos ||
            (end && atEnds.find(text[i]) != std::string_view::npos))
            AppendEscaped(escaped, text[i]);
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

// A "\" that begins no "\xHH" was typed by a user and stands for itself.
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

// Puts the key's line in the place of the old one, behind the last line of its section, or into a new section.
void PutLine(std::string& text, std::string_view section, std::string_view key, std::string_view value) {
    const InitialisationPlace place = FindInitialisationPlace(text, section, key);
    const std::size_t at = place.Value ? place.LineStart : place.SectionEnd.value_or(text.size());
    const std::size_t length = place.Value ? place.LineEnd - place.LineStart : 0;
    std::string line;
    if (at > 0 && text[at - 1] != '\n' && text[at - 1] != '\r')
        line += '\n';
    if (!place.SectionEnd)
        line.append("[").append(section).append("]\n");
    line.append(key).append("=").append(value).append("\n");
    text.replace(at, length, line);
}

} // namespace

std::string PosixSettings::Read(const std::string& application, const std::string& section, const std::string& key,
                                const std::string& fallback) {
    const std::string folder = FolderOf(application);
    std::string bytes;
    if (folder.empty() || ReadRegularFile(FileIn(folder), SizeLimit, bytes) != FileReading::Done)
        return fallback;
    const std::string text = InitialisationText(bytes);
    const auto value = FindInitialisationPlace(text, EscapedName(section), EscapedName(key)).Value;
    return value ? Unescaped(*value) : fallback;
}

bool PosixSettings::Write(const std::string& application, const std::string& section,
                          const std::vector<Setting>& settings) {
    const std::string folder = FolderOf(application);
    if (folder.empty() || section.empty())
        return false;
    const std::string file = FileIn(folder);
    std::string bytes;
    // What can't be read in full must not be replaced.
    if (ReadRegularFile(file, SizeLimit + 1, bytes) == FileReading::Failed || bytes.size() > SizeLimit)
        return false;
    std::string text = InitialisationText(bytes);
    for (const Setting& setting : settings) {
        if (setting.Key.empty())
            return false;
        PutLine(text, EscapedName(section), EscapedName(setting.Key), EscapedValue(setting.Value));
    }
    return text.size() <= SizeLimit && MakeFolders(folder) && ReplaceRegularFile(file, text);
}

} // namespace tarnwick

// The reader of shortcut files: the input as a whole file, and as the value in a sound one.

#include "favorites/InitialisationFile.h"
#include "fuzz/Targets.h"

#include <algorithm>

namespace tarnwick::fuzz {

namespace {

constexpr std::size_t Room = 10000;

std::string Read(std::string_view file, std::size_t size = Room) {
    return FindInitialisationValue(file, "InternetShortcut", "URL", size);
}

bool IsLineEnd(char c) { return c == '\r' || c == '\n'; }

// The same lines, each ended by `end`.
std::string WithLineEnds(std::string_view file, std::string_view end) {
    std::string lines;
    for (std::size_t at = 0; at < file.size(); ++at) {
        if (!IsLineEnd(file[at]))
            lines += file[at];
        else
            lines += end;
        if (file.substr(at).starts_with("\r\n"))
            ++at;
    }
    return lines;
}

void CheckAsFile(std::string_view file) {
    const std::string whole = Read(file);
    Require(whole.size() < Room, "a value is longer than its buffer");
    Require(std::ranges::none_of(whole, IsLineEnd) || file.starts_with("\xFF\xFE"), "a value runs over a line's end");
    for (const std::size_t size : {1U, 2U, 5U, 17U}) {
        const std::string cut = Read(file, size);
        Require(cut.size() < size, "a cut value is longer than its buffer");
        Require(whole.starts_with(cut), "a cut value is not the beginning of the whole one");
    }
    if (file.starts_with("\xFF\xFE"))
        return;
    for (const std::string_view end : {"\n", "\r", "\r\n"})
        Require(Read(WithLineEnds(file, end)) == whole, "the kind of line end changes the value");
    if (!whole.empty())
        Require(Read(std::string(file) + "\n[InternetShortcut]\nURL=later\n") == whole, "a later section counts");
}

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\v' || c == '\f'; }

std::string_view Trimmed(std::string_view text) {
    while (!text.empty() && IsBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && IsBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

void CheckAsValue(std::string_view input) {
    std::string value(input);
    std::erase_if(value, IsLineEnd);
    value.resize(std::min(value.find('\0'), value.size()));
    std::string_view expected = Trimmed(value);
    if (expected.size() > 1 && expected.front() == expected.back() &&
        (expected.front() == '"' || expected.front() == '\''))
        expected = expected.substr(1, expected.size() - 2);
    const std::string file = "[InternetShortcut]\r\nURL=" + value + "\r\n";
    const std::string read = Read(file);
    constexpr std::size_t longestCharacter = 4; // bytes of UTF-8
    Require(expected.starts_with(read), "a value changes on the way");
    Require(read.size() == expected.size() || read.size() + longestCharacter >= Room, "a value is cut too early");
    Require(Read("\xEF\xBB\xBF" + file) == read, "a byte order mark changes the value");

    std::string comment = ";" + value + "\n";
    Require(Read(comment + "[internetshortcut] " + comment + comment + " url\t= " + value) == read,
            "comments, blanks or letter case change the value");

    if (std::ranges::any_of(value, [](char c) { return static_cast<unsigned char>(c) >= 0x80; }))
        return;
    std::string wide = "\xFF\xFE";
    for (const char c : file)
        wide += {c, '\0'};
    Require(Read(wide) == read, "a UTF-16 file gives another value");
}

} // namespace

void Shortcut(std::string_view input) {
    CheckAsFile(input);
    CheckAsValue(input);
}

} // namespace tarnwick::fuzz

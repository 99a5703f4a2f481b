#include "window/BoxText.h"

#include "services/Services.h"
#include "text/Text.h"
#include "text/Utf8.h"

#include <algorithm>
#include <string_view>
#include <vector>

namespace tarnwick {

namespace {

// What is left of 1024 x 600 beside the icon and the margins, under a title bar and over the buttons.
constexpr int MostWidth = 800;   // pixels at 96 DPI
constexpr int HighestText = 420; // pixels at 96 DPI
// A box with shorter lines is given its width by the desktop, which breaks them at their blanks.
constexpr int MostUsualWidth = 420; // pixels at 96 DPI

int WidestLine() { return std::min(MostWidth, services().Windows.WidestInBox()); }
int UsualWidth() { return std::min(MostUsualWidth, services().Windows.WidestInBox()); }

using Lines = std::vector<std::string>;

int WidthOf(std::string_view line) { return services().Windows.SizeInBox(std::string(line)).Width; }

Lines LinesOf(std::string_view text) {
    Lines lines;
    for (std::size_t at = 0; at <= text.size();) {
        const std::size_t end = std::min(text.find("\r\n", at), text.size());
        lines.emplace_back(text.substr(at, end - at));
        at = end + 2;
    }
    return lines;
}

// Where the characters end that fit the widest line: after the last blank of them, or within a word that has none.
std::size_t FittingBytes(std::string_view line) {
    std::vector<std::size_t> ends; // of characters
    for (std::size_t at = 0; at < line.size(); ends.push_back(at))
        at += DecodeUtf8(line, at).Bytes;
    const int widest = WidestLine();
    const auto over = std::ranges::partition_point(
        ends, [line, widest](std::size_t end) { return WidthOf(line.substr(0, end)) <= widest; });
    if (over == ends.end())
        return line.size();
    const std::size_t fitting = over == ends.begin() ? ends.front() : *(over - 1);
    const std::size_t blank = line.substr(0, fitting).rfind(' ');
    return blank == std::string_view::npos ? fitting : blank + 1;
}

// The lines broken at the box's width, each of at most so many characters before.
Lines Broken(const Lines& lines, std::size_t characters) {
    Lines broken;
    for (const std::string& line : lines) {
        const std::string cut = Shortened(line, characters);
        std::string_view rest = cut;
        do {
            const std::size_t fitting = FittingBytes(rest);
            broken.emplace_back(rest.substr(0, fitting));
            rest.remove_prefix(fitting);
        } while (!rest.empty());
    }
    return broken;
}

bool HasOnlyShortWords(std::string_view line) {
    for (std::size_t at = 0; at <= line.size();) {
        const std::size_t end = std::min(line.find(' ', at), line.size());
        if (WidthOf(line.substr(at, end - at)) > UsualWidth())
            return false;
        at = end + 1;
    }
    return true;
}

bool FitsUsualBox(const Lines& lines, int lineHeight) {
    int height = 0;
    for (const std::string& line : lines)
        height += lineHeight * (WidthOf(line) / (UsualWidth() / 2) + 1); // with room for words that break early
    return height <= HighestText && std::ranges::all_of(lines, HasOnlyShortWords);
}

} // namespace

BoxText FittedToBox(const std::string& text) {
    const Lines lines = LinesOf(text);
    const int lineHeight = std::max(1, services().Windows.SizeInBox("X").Height);
    if (FitsUsualBox(lines, lineHeight))
        return {text, 0};
    const auto most = static_cast<std::size_t>(HighestText / lineHeight);
    std::size_t characters = text.size();
    Lines broken = Broken(lines, characters);
    while (broken.size() > most && characters > 0) {
        characters -= characters / 4 + 1;
        broken = Broken(lines, characters);
    }
    std::string fitted = broken.front();
    for (auto line = broken.begin() + 1; line != broken.end(); ++line)
        fitted += "\r\n" + *line;
    return {fitted, WidestLine()};
}

} // namespace tarnwick

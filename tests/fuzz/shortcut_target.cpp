// The reader of shortcut files: the input as a whole file, and as the value in a sound one.

#include "favorites/InitialisationFile.h"
#include "fuzz/Targets.h"

#include <algorithm>
#include <string>

namespace tarnwick::fuzz {

namespace {

std::string Read(std::string_view file, std::size_t size = 10000) {
    return FindInitialisationValue(file, "InternetShortcut", "URL", size);
}

} // namespace

void Shortcut(std::string_view input) {
    const std::string whole = Read(input);
    Require(whole.size() < 10000, "a value is longer than its buffer");
    for (const std::size_t size : {1U, 2U, 17U}) {
        const std::string cut = Read(input, size);
        Require(cut.size() < size, "a cut value is longer than its buffer");
        Require(whole.starts_with(cut), "a cut value is not the beginning of the whole one");
    }
    if (!input.starts_with("\xFF\xFE")) { // UTF-16
        Require(whole.find_first_of("\r\n") == std::string::npos, "a value runs over a line's end");
        Require(whole.empty() || Read(std::string(input) + "\n[InternetShortcut]\nURL=later\n") == whole,
                "a later section counts");
    }
    const bool plain =
        std::ranges::all_of(input, [](char c) { return c > ' ' && c != '"' && c != '\'' && c != '\x7F'; });
    if (plain && input.size() < 9000)
        Require(Read("; comment\n[internetshortcut] \r\n\turl =  " + std::string(input) + " \r\n") == input,
                "a value changes on the way");
}

} // namespace tarnwick::fuzz

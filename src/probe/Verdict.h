#pragma once

#include "shell/Preferences.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace tarnwick {

// The second of the blank-separated words of a reply's first chunk as a number; nothing if there is none, or if the
// word is not wholly a number of 32 bits.
std::optional<std::int32_t> ReplyStatus(std::string_view data);

// What a status means for a link.
struct Verdict {
    std::int32_t Status;
    const char* Shown;                         // the status field's text
    std::int32_t PreferencesRecord::*Category; // the switch that makes it a finding, nullptr: never one
    const char* Problem;                       // the finding's text
};

// nullptr for every status that passes without a word.
const Verdict* VerdictOf(std::int32_t status);

} // namespace tarnwick

#pragma once

// The text of a settings file, in the form of an initialisation file. What is odd in a name or a value is written as
// "\xHH", so that every text comes back byte for byte; lines that a user put into the file stay. Pure functions.

#include <optional>
#include <string>
#include <string_view>

namespace tarnwick {

std::optional<std::string> SettingIn(std::string_view text, std::string_view section, std::string_view key);

// Puts the key's line in the place of the old one, after the last line of its section, or into a new section.
void PutSetting(std::string& text, std::string_view section, std::string_view key, std::string_view value);

} // namespace tarnwick

#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tarnwick {

// What the user has set. A switch is on when it is not 0.
struct PreferencesRecord {
    std::int32_t Catch401 = 0;
    std::int32_t Catch403 = 0;
    std::int32_t Catch404 = 0;
    std::int32_t CatchUnabled = 0;
    std::int32_t CatchTimedout = 0;
    std::int32_t CatchConnerr = 0;
    std::int32_t KeepAlive = 0;
    std::int32_t UseProxy = 0;
    std::string ProxyAddress;
    std::string ProxyPort;
    std::int32_t Timeout = 0; // seconds
};

extern PreferencesRecord Preferences;

// Overwrites every field from the settings store, the only place that does so. A key that isn't there, or a text that
// is no number where one belongs, gives the key's default.
void LoadPreferences();

// One key with the text to store under it.
struct PreferenceText {
    std::string_view Key;
    std::string Text;
};

// Writes the texts as they are, in their order. Preferences doesn't change.
void SavePreferences(const std::vector<PreferenceText>& texts);

} // namespace tarnwick

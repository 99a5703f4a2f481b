#pragma once

#include "services/Services.h"

#include <cstdint>
#include <string>
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
// is no number where one belongs, yields the key's default.
void LoadPreferences();

// Stores the texts as they are, in their order: all of them, or none and the result is false. Preferences doesn't
// change.
bool SavePreferences(const std::vector<Setting>& texts);

} // namespace tarnwick

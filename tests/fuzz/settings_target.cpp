// The settings file: the input as the file that is there already, and as what is stored in it.

#include "fuzz/Targets.h"
#include "platform/posix/SettingsText.h"

namespace tarnwick::fuzz {

void Settings(std::string_view input) {
    const std::string half(input.substr(0, input.size() / 2));
    std::string text(input);
    const auto timeout = SettingIn(text, "Preferences", "Timeout");
    for (const char* key : {"Key", "Key", "Other"}) {
        PutSetting(text, "Preferences", key, input);
        Require(SettingIn(text, "Preferences", key) == input, "a value changes on the way");
        Require(SettingIn(text, "Preferences", "Timeout") == timeout, "a save changes another value");
    }
    PutSetting(text, "section " + half, "key " + half, "value");
    Require(SettingIn(text, "section " + half, "key " + half) == "value", "a name changes on the way");
}

} // namespace tarnwick::fuzz

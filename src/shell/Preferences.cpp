#include "shell/Preferences.h"

#include "text/Number.h"

#include <variant>

namespace tarnwick {

PreferencesRecord Preferences;

namespace {

constexpr const char* Application = "Tarnwick";
constexpr const char* Section = "Preferences";

using NumberField = std::int32_t PreferencesRecord::*;
using TextField = std::string PreferencesRecord::*;

struct Key {
    std::variant<NumberField, TextField> Field;
    const char* Name;
    const char* Default;
};

// In the order of reading. "proxy.invalid" can't be a real host (RFC 2606).
const Key Keys[] = {
    {&PreferencesRecord::Catch401, "Catch401", "0"},
    {&PreferencesRecord::Catch403, "Catch403", "0"},
    {&PreferencesRecord::Catch404, "Catch404", "1"},
    {&PreferencesRecord::CatchUnabled, "CatchUnabled", "0"},
    {&PreferencesRecord::CatchTimedout, "CatchTimedout", "0"},
    {&PreferencesRecord::CatchConnerr, "CatchConnerr", "0"},
    {&PreferencesRecord::KeepAlive, "Keep-alive", "0"},
    {&PreferencesRecord::UseProxy, "UseProxy", "0"},
    {&PreferencesRecord::ProxyAddress, "ProxyAddress", "proxy.invalid"},
    {&PreferencesRecord::ProxyPort, "ProxyPort", "8080"},
    {&PreferencesRecord::Timeout, "Timeout", "10"},
};

std::int32_t NumberOrDefault(const std::string& text, const char* fallback) {
    return NumberFromText(text).value_or(NumberFromText(fallback).value_or(0));
}

} // namespace

void LoadPreferences() {
    std::vector<Setting> stored;
    for (const Key& key : Keys)
        stored.push_back({key.Name, key.Default});
    services().Settings.Read(Application, Section, stored);
    auto setting = stored.begin();
    for (const Key& key : Keys) {
        const std::string& text = setting++->Value;
        if (const auto* number = std::get_if<NumberField>(&key.Field))
            Preferences.** number = NumberOrDefault(text, key.Default);
        else
            Preferences.*std::get<TextField>(key.Field) = text;
    }
}

bool SavePreferences(const std::vector<Setting>& texts) {
    return services().Settings.Write(Application, Section, texts);
}

} // namespace tarnwick

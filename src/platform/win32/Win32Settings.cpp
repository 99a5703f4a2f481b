#include "platform/win32/Win32Settings.h"

#include <windows.h>

#include <algorithm>
#include <optional>
#include <vector>

namespace tarnwick {

namespace {

// `path` is that of a key of the current user.
std::optional<std::string> Stored(const std::string& path, const std::string& name) {
    std::string value;
    DWORD size = 0;
    LSTATUS status =
        RegGetValueA(HKEY_CURRENT_USER, path.c_str(), name.c_str(), RRF_RT_REG_SZ, nullptr, nullptr, &size);
    // Once more where the value has grown meanwhile, and for the end that the system adds where it is missing.
    while (status == ERROR_MORE_DATA || (status == ERROR_SUCCESS && value.empty())) {
        value.resize(std::max<std::size_t>(size, value.size()) + 1);
        size = static_cast<DWORD>(value.size());
        status =
            RegGetValueA(HKEY_CURRENT_USER, path.c_str(), name.c_str(), RRF_RT_REG_SZ, nullptr, value.data(), &size);
    }
    return status == ERROR_SUCCESS ? std::optional(value.substr(0, value.find('\0'))) : std::nullopt;
}

bool Store(const std::string& path, const std::string& name, const std::string& value) {
    return RegSetKeyValueA(HKEY_CURRENT_USER, path.c_str(), name.c_str(), REG_SZ, value.c_str(),
                           static_cast<DWORD>(value.size() + 1)) == ERROR_SUCCESS;
}

} // namespace

std::string Win32Settings::PathOf(const std::string& application, const std::string& section) const {
    return root_ + "\\" + application + "\\" + section;
}

void Win32Settings::Read(const std::string& application, const std::string& section, std::vector<Setting>& settings) {
    for (Setting& setting : settings)
        setting.Value = Stored(PathOf(application, section), setting.Key).value_or(setting.Value);
}

// The registry has no save of several values in one step: after a failure the values that were written go back.
bool Win32Settings::Write(const std::string& application, const std::string& section,
                          const std::vector<Setting>& settings) {
    const std::string path = PathOf(application, section);
    std::vector<std::pair<std::string, std::optional<std::string>>> before;
    for (const Setting& setting : settings) {
        before.emplace_back(setting.Key, Stored(path, setting.Key));
        if (Store(path, setting.Key, setting.Value))
            continue;
        for (const auto& [key, value] : before) {
            if (value)
                Store(path, key, *value);
            else
                RegDeleteKeyValueA(HKEY_CURRENT_USER, path.c_str(), key.c_str());
        }
        return false;
    }
    return true;
}

} // namespace tarnwick

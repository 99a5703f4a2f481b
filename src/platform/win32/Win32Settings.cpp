#include "platform/win32/Win32Settings.h"

#include <windows.h>

#include <algorithm>

namespace tarnwick {

std::string Win32Settings::PathOf(const std::string& application, const std::string& section) const {
    return root_ + "\\" + application + "\\" + section;
}

std::string Win32Settings::Read(const std::string& application, const std::string& section, const std::string& key,
                                const std::string& fallback) {
    const std::string path = PathOf(application, section);
    std::string value;
    DWORD size = 0;
    LSTATUS status = RegGetValueA(HKEY_CURRENT_USER, path.c_str(), key.c_str(), RRF_RT_REG_SZ, nullptr, nullptr, &size);
    // Once more where the value has grown meanwhile, and for the end that the system adds where it is missing.
    while (status == ERROR_MORE_DATA || (status == ERROR_SUCCESS && value.empty())) {
        value.resize(std::max<std::size_t>(size, value.size()) + 1);
        size = static_cast<DWORD>(value.size());
        status =
            RegGetValueA(HKEY_CURRENT_USER, path.c_str(), key.c_str(), RRF_RT_REG_SZ, nullptr, value.data(), &size);
    }
    return status == ERROR_SUCCESS ? value.substr(0, value.find('\0')) : fallback;
}

bool Win32Settings::Write(const std::string& application, const std::string& section, const std::string& key,
                          const std::string& value) {
    const std::string path = PathOf(application, section);
    return RegSetKeyValueA(HKEY_CURRENT_USER, path.c_str(), key.c_str(), REG_SZ, value.c_str(),
                           static_cast<DWORD>(value.size() + 1)) == ERROR_SUCCESS;
}

} // namespace tarnwick

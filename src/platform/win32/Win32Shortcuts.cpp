#include "platform/win32/Win32Shortcuts.h"

#include <windows.h>

namespace tarnwick {

std::string Win32Shortcuts::ReadValue(const std::string& section, const std::string& key, const std::string& fallback,
                                      std::size_t size, const std::string& file) {
    std::string buffer(size, '\0');
    const DWORD count = GetPrivateProfileStringA(section.c_str(), key.c_str(), fallback.c_str(), buffer.data(),
                                                 static_cast<DWORD>(size), file.c_str());
    buffer.resize(count);
    return buffer;
}

} // namespace tarnwick

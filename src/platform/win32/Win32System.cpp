#include "platform/win32/Win32System.h"

#include <windows.h>

namespace tarnwick {

void* SystemAddress(const wchar_t* library, const char* function) {
    const HMODULE loaded = LoadLibraryExW(library, nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    return loaded == nullptr ? nullptr : reinterpret_cast<void*>(GetProcAddress(loaded, function));
}

void LoadFromSystemAlone() {
    SetDefaultDllDirectories(LOAD_LIBRARY_SEARCH_SYSTEM32);
    SetDllDirectoryW(L"");
}

} // namespace tarnwick

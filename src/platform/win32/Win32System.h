#pragma once

#include "platform/win32/Win32Handles.h"

namespace tarnwick {

// From the system's own folder, and from nowhere else; nullptr when the system has no such function.
void* SystemAddress(const wchar_t* library, const char* function);

// A function that only newer systems have, or of a library that must not come from beside the program: those that the
// program is linked with, the system finds in its own folder (its known libraries).
template <class Function> Function SystemFunction(const wchar_t* library, const char* function) {
    return reinterpret_cast<Function>(SystemAddress(library, function));
}

// From now on nothing that is loaded comes from beside the program or from the current folder.
void LoadFromSystemAlone();

} // namespace tarnwick

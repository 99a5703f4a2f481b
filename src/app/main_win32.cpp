#include "platform/win32/Win32Platform.h"
#include "platform/win32/Win32System.h"
#include "shell/Form9.h"

#include <windows.h>

#include <objbase.h>

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
    tarnwick::LoadFromSystemAlone();
    // The shell and the screen readers' interface want it.
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE);
    {
        tarnwick::Win32Platform platform;
        tarnwick::Form9.Show();
        platform.Windows.Run();
    }
    CoUninitialize();
    return 0;
}

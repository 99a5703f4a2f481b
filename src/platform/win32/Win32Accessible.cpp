#include "platform/win32/Win32Accessible.h"

#include "platform/win32/Win32Text.h"

#include <initguid.h>
#include <windows.h>

#include <oleacc.h>

#include <iterator>

namespace tarnwick {

namespace {

// Accessibility identifiers that not every set of headers defines (oleacc.h).
const GUID NameProperty = {0x608d3df8, 0x8128, 0x4aa7, {0xa4, 0x28, 0xf5, 0x5e, 0x49, 0x26, 0x72, 0x91}};
const GUID DescriptionProperty = {0x4d48dfe4, 0xbd3f, 0x491f, {0xa6, 0x48, 0x49, 0x2d, 0x6f, 0x20, 0xc5, 0x88}};
const GUID LiveProperty = {0xc12bcd8e, 0x2a8e, 0x4950, {0x8a, 0xe7, 0x36, 0x25, 0x11, 0x1d, 0x58, 0xeb}};
constexpr DWORD LiveRegionChanged = 0x8019; // EVENT_OBJECT_LIVEREGIONCHANGED
const GUID PropertyServicesClass = {0xb5f8350b, 0x0548, 0x48b1, {0xa6, 0xee, 0x88, 0xbd, 0x00, 0xb4, 0xa5, 0xe7}};
const GUID PropertyServicesInterface = {0x6e26e776, 0x04f0, 0x495d, {0x80, 0xe4, 0x33, 0x30, 0x35, 0x2e, 0x31, 0x69}};

IAccPropServices* PropertyServices() {
    static IAccPropServices* const services = [] {
        void* made = nullptr;
        CoCreateInstance(PropertyServicesClass, nullptr, CLSCTX_INPROC_SERVER, PropertyServicesInterface, &made);
        return static_cast<IAccPropServices*>(made);
    }();
    return services;
}

void Set(HWND window, const GUID& property, const std::string& text) {
    if (!text.empty() && PropertyServices() != nullptr)
        PropertyServices()->SetHwndPropStr(window, static_cast<DWORD>(OBJID_CLIENT), CHILDID_SELF, property,
                                           SingleLineOf(text).c_str());
}

} // namespace

void SetAccessible(HWND__* window, const std::string& name, const std::string& description) {
    Set(window, NameProperty, name);
    Set(window, DescriptionProperty, description);
}

void SetAnnouncing(HWND__* window) {
    VARIANT polite = {};
    polite.vt = VT_I4;
    polite.lVal = 1; // LiveSetting Polite
    if (PropertyServices() != nullptr)
        PropertyServices()->SetHwndProp(window, static_cast<DWORD>(OBJID_CLIENT), CHILDID_SELF, LiveProperty, polite);
}

void AnnounceText(HWND__* window) { NotifyWinEvent(LiveRegionChanged, window, OBJID_CLIENT, CHILDID_SELF); }

void ForgetAccessible(HWND__* window) {
    const GUID properties[] = {NameProperty, DescriptionProperty, LiveProperty};
    if (PropertyServices() != nullptr)
        PropertyServices()->ClearHwndProps(window, static_cast<DWORD>(OBJID_CLIENT), CHILDID_SELF, properties,
                                           static_cast<int>(std::size(properties)));
}

} // namespace tarnwick

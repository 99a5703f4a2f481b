#include "platform/win32/Win32Procedures.h"

#include "platform/win32/Win32Handles.h"

#include <windows.h>

#include <utility>

namespace tarnwick {

namespace {

Win32Procedures* Procedures = nullptr; // the system's call carries no object of ours

LRESULT CALLBACK Bridge(HWND window, UINT message, WPARAM first, LPARAM second) {
    if (Procedures == nullptr)
        return DefWindowProcA(window, message, first, second);
    return Procedures->Deliver(HandleOf(window), message, first, second);
}

} // namespace

Win32Procedures::Win32Procedures() { Procedures = this; }

Win32Procedures::~Win32Procedures() { Procedures = nullptr; }

PreviousProcedure Win32Procedures::Install(WindowHandle window, WindowProcedure procedure) {
    installed_[window] = procedure;
    return SetWindowLongPtrA(WindowOf(window), GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(Bridge));
}

void Win32Procedures::Restore(WindowHandle window, PreviousProcedure previous) {
    if (previous != 0)
        SetWindowLongPtrA(WindowOf(window), GWLP_WNDPROC, previous);
}

std::int32_t Win32Procedures::Call(PreviousProcedure previous, WindowHandle window, std::uint32_t message,
                                   std::int32_t first, std::int32_t second) {
    const auto procedure = reinterpret_cast<WNDPROC>(previous);
    if (procedure == nullptr || procedure == Bridge)
        return 0;
    const bool same = underWay_ != nullptr && underWay_->Window == window && underWay_->Message == message &&
                      static_cast<std::int32_t>(underWay_->First) == first &&
                      static_cast<std::int32_t>(underWay_->Second) == second;
    if (!same)
        return static_cast<std::int32_t>(
            CallWindowProcA(procedure, WindowOf(window), message, static_cast<WPARAM>(first), second));
    Whole& whole = *underWay_;
    whole.Result = CallWindowProcA(procedure, WindowOf(window), message, whole.First, whole.Second);
    return static_cast<std::int32_t>(whole.Result);
}

std::intptr_t Win32Procedures::Deliver(WindowHandle window, std::uint32_t message, std::uintptr_t first,
                                       std::intptr_t second) {
    const auto found = installed_.find(window);
    if (found == installed_.end())
        return DefWindowProcA(WindowOf(window), message, first, second);
    Whole whole{window, message, first, second, 0};
    Whole* const outer = std::exchange(underWay_, &whole);
    const std::int32_t result =
        found->second(window, message, static_cast<std::int32_t>(first), static_cast<std::int32_t>(second));
    underWay_ = outer;
    return static_cast<std::int32_t>(whole.Result) == result ? whole.Result : result;
}

} // namespace tarnwick

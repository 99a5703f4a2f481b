#pragma once

#include "platform/win32/Win32Procedures.h"
#include "platform/win32/Win32Pump.h"
#include "platform/win32/Win32Window.h"

#include <memory>
#include <vector>

namespace tarnwick {

class Win32Windows final : public WindowService {
public:
    explicit Win32Windows(ClockService& clock);

    // The event loop of the program; returns after End().
    void Run();

    WindowHandle Open(Window& window) override;
    void Show(Window& window) override;
    void ShowModal(Window& window) override;
    void Hide(Window& window) override;
    void Discard(Window& window) override;
    MessageAnswer RunMessageBox(const BoxText& text, const std::string& title, MessageIcon icon,
                                MessageButtons buttons) override;
    LineSize SizeInBox(const std::string& line) override;
    int WidestInBox() override;
    const MenuEntry* RunMenu(const Menu& menu, Window& window) override;
    PreviousProcedure InstallProcedure(WindowHandle window, WindowProcedure procedure) override;
    void RestoreProcedure(WindowHandle window, PreviousProcedure previous) override;
    std::int32_t CallProcedure(PreviousProcedure previous, WindowHandle window, std::uint32_t message,
                               std::int32_t first, std::int32_t second) override;
    bool PumpEvents() override { return pump_.PumpEvents(); }
    bool WaitForEvents() override { return pump_.WaitForEvents(); }
    void PaintUntil(const std::function<bool(std::int64_t)>& isDone, std::int64_t ms) override {
        pump_.PaintUntil(isDone, ms);
    }
    void End() override;
    bool HasEnded() const override { return pump_.State().Ended(); }

private:
    void Sync();
    bool Filter(const tagMSG& message);
    Win32Window* Find(const Window& window) const;
    Win32Window* Find(HWND__* real) const;
    // The window in front: the active one of this program, else the last one that shows.
    HWND__* Front() const;

    MessageLoop loop_; // its timers; messages and procedures are the system's
    Win32Procedures procedures_;
    Win32Pump pump_;
    std::vector<std::unique_ptr<Win32Window>> windows_; // of the loaded windows
    std::vector<std::unique_ptr<Win32Window>> gone_;    // unloaded while a handler may still be on the stack
    const Win32Window* boxOwner_ = nullptr;             // the system's message box disables it
    bool opensBox_ = false;
};

} // namespace tarnwick

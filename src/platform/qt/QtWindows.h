#pragma once

#include "platform/posix/PosixSockets.h"
#include "platform/qt/QtPump.h"
#include "platform/qt/QtWindow.h"

#include <limits>
#include <memory>
#include <vector>

namespace tarnwick {

// Windows on Qt Widgets. A QApplication must be there before and after it; the windows of the model must be given up
// (WindowSlot::DropAll) before it is destroyed.
class QtWindows : public WindowService {
public:
    QtWindows(MessageLoop& loop, ClockService& clock, PosixSockets& sockets);
    ~QtWindows() override;

    // The program's event loop: returns after End().
    void Run();

    WindowHandle Open(Window& window) override;
    void Show(Window& window) override;
    void ShowModal(Window& window) override;
    void Hide(Window& window) override;
    void Discard(Window& window) override;

    MessageAnswer RunMessageBox(const BoxText& text, const std::string& title, MessageIcon icon,
                                MessageButtons buttons) override;
    LineSize SizeInBox(const std::string& line) override;
    int WidestInBox() override { return std::numeric_limits<int>::max(); } // a box is given its width
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
    QtWindow* Find(const Window& window) const;
    QtWindow& RealWindow(Window& window);
    void SyncWindows();

    MessageLoop& loop_;
    QtPump pump_;
    HeldKeys heldKeys_;
    std::vector<std::unique_ptr<QtWindow>> windows_;   // built at the first show
    std::vector<std::unique_ptr<QtWindow>> discarded_; // a handler on the stack may still be in one
};

} // namespace tarnwick

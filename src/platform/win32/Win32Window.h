#pragma once

// The real window of a window of the model, built from its table by one generic builder.

#include "platform/win32/Win32Control.h"
#include "platform/win32/Win32Pump.h"
#include "window/Window.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace tarnwick {

class Win32Window {
public:
    // What a control posts to itself through its form (WM_APP); the control's window first, then what it said.
    static constexpr unsigned ControlMessage = 0x8000;

    Win32Window(Window& window, Win32Pump& pump);
    ~Win32Window();
    Win32Window(const Win32Window&) = delete;
    Win32Window& operator=(const Win32Window&) = delete;

    Window& Model() const { return model_; }
    HWND__* Real() const { return real_; }
    // nullptr for a control that has no window of its own.
    Win32Control* Find(const Control* control) const;
    Win32Control* Focused() const;

    // From now on the form keeps its model's object, whose slot has given it up.
    void KeepModel() { kept_ = model_.shared_from_this(); }

    bool IsShown() const { return shown_; }
    // Centred on the screen the first time. `owner`: the window it stays in front of, or nullptr.
    void Show(HWND__* owner);
    void Hide();
    // Whether the user can work with it: no modal window stands before it.
    void SetReachable(bool reachable);
    bool IsReachable() const { return reachable_; }
    void Sync();
    void ShowDefaultButton();
    void SetFocus(Win32Control& control);

    // Sees a message of the program's own loop before the system does; true: it has been handled.
    bool Filter(const tagMSG& message);

    bool IsEcho() const { return pump_.Syncing(); }
    template <class... Parameters, class... Arguments>
    void Raise(const std::function<void(Parameters...)>& handler, Arguments... arguments) {
        pump_.Handle([&] { model_.Raise(handler, arguments...); });
    }

    // Where the next pop-up menu opens, in pixels of the screen.
    void SetMenuPlace(long x, long y) { menuPlace_ = {x, y}; }
    std::pair<long, long> MenuPlace() const { return menuPlace_; }

    // For the system.
    std::intptr_t OnMessage(unsigned message, std::uintptr_t first, std::intptr_t second);

private:
    void Build();
    void Place();
    void Center(HWND__* owner);
    void AddToolTip(const Win32Control& control);
    void SyncFrame();
    void SyncFocus();
    void RememberFocus();
    void OnActivation(bool active);
    void OnClose();
    void Paint();
    void PaintOutlines(HDC__* surface) const;
    void OnMouse(const tagMSG& message);

    Window& model_;
    std::shared_ptr<Window> kept_;
    Win32Pump& pump_;
    HWND__* real_ = nullptr;
    HWND__* toolTips_ = nullptr;
    std::vector<std::unique_ptr<Win32Control>> controls_; // in the order of the table
    std::pair<long, long> menuPlace_;
    int dots_ = 0;

    const Control* lastFocus_ = nullptr; // had the focus last
    Control* pressed_ = nullptr;         // the left button went down on it

    // As last shown.
    std::string title_;
    std::string icon_;
    Color backColor_;
    int edge_ = 0;
    bool topMost_ = false;
    unsigned focusRevision_ = 0;
    bool shown_ = false;
    bool reachable_ = true;
};

} // namespace tarnwick

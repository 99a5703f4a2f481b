#pragma once

// The real window of a window of the model, built from its table by one generic builder.

#include "platform/win32/Win32Control.h"
#include "platform/win32/Win32Pump.h"
#include "platform/win32/Win32ToolTips.h"
#include "window/Input.h"
#include "window/Shown.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace tarnwick {

class Win32Window {
public:
    // What a control posts to itself through its window (WM_APP): the control's real window first, then what it said.
    static constexpr unsigned ControlMessage = 0x8000;

    Win32Window(Window& window, Win32Pump& pump);
    ~Win32Window();
    Win32Window(const Win32Window&) = delete;
    Win32Window& operator=(const Win32Window&) = delete;

    Window& Model() const { return model_; }
    HWND__* Real() const { return real_; }
    Win32ToolTips& ToolTips() { return toolTips_; }
    // nullptr for a control that has no window of its own.
    Win32Control* Find(const Control* control) const;

    // From now on the window keeps its model's object, whose slot has given it up.
    void KeepModel() { kept_ = model_.shared_from_this(); }

    bool IsShown() const { return shown_; }
    // Centred on the screen the first time. `owner`: the window it stays in front of, or nullptr.
    void Show(HWND__* owner);
    void Hide();
    void SetEnabled(bool enabled);
    void Sync();
    void ShowDefaultButton();

    // Sees a message of the program's own loop before the system does; true: it has been handled.
    bool Filter(const tagMSG& message);

    // What real windows report while fields are written into them is no input.
    bool IsEcho() const { return pump_.State().Syncing(); }
    // Hands what the user does to the model, which decides what follows: at once, or later while the program only
    // paints, so that `act` holds no reference to what may have gone by then. The window's controls stay until then.
    template <class Act> void Pass(Act act) {
        pump_.Handle([window = std::weak_ptr(input_), act = std::move(act)] {
            if (const std::shared_ptr<Input> input = window.lock())
                act(*input);
        });
    }

    // Where the next pop-up menu opens, in pixels of the screen.
    void SetMenuPlace(long x, long y) { menuPlace_ = {x, y}; }
    std::pair<long, long> MenuPlace() const { return menuPlace_; }

    // For the system.
    std::intptr_t OnMessage(unsigned message, std::uintptr_t first, std::intptr_t second);

private:
    void Build();
    void Place();
    std::pair<int, int> SizeAt(int dpi) const;
    void Center(HWND__* owner);
    void SyncFrame();
    // The control that this window belongs to, be it a part of it; nullptr when it is none of ours.
    Win32Control* ControlOf(HWND__* window) const;

    const Control* Focused() const;
    void SyncFocus();
    void SetFocus(Control& control);
    void RememberFocus();
    void OnActivation(bool active);
    bool OnKey(const tagMSG& message);
    void OnMouse(const tagMSG& message);
    void OnNewColors(unsigned message, std::uintptr_t first, std::intptr_t second);
    void OnNewScale(int dpi, long left, long top);

    Window& model_;
    std::shared_ptr<Window> kept_;
    std::shared_ptr<Input> input_;
    Win32Pump& pump_;
    HWND__* real_ = nullptr;
    Win32ToolTips toolTips_;
    std::vector<std::unique_ptr<Win32Control>> controls_; // in the order of the table
    std::pair<long, long> menuPlace_;
    int dpi_ = 0;
    const Control* lastFocus_ = nullptr; // had the focus last

    // As last shown.
    Shown<std::string> title_;
    Shown<std::string> icon_{{}};
    Shown<std::pair<Color, int>> ground_; // its colour and its edge
    Shown<bool> topMost_{false};
    Shown<unsigned> focusRequest_{0};
    bool shown_ = false;
    Shown<bool> enabled_{true};
};

} // namespace tarnwick

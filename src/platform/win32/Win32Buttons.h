#pragma once

#include "platform/win32/Win32Control.h"
#include "window/ShownCaption.h"

namespace tarnwick {

// What is clicked for the caption that it shows.
class Win32Button : public Win32Control {
public:
    void OnCommand(unsigned notice) override;
    const std::string& SeenCaption() const override;
    // The mouse or the space bar holds it down.
    void Press();

protected:
    Win32Button(Win32Window& owner, Control& model, HWND__* parent, int number, unsigned long style);
    void SyncContent() override;

private:
    ShownCaption caption_;
};

class Win32CommandButton final : public Win32Button {
public:
    Win32CommandButton(Win32Window& owner, CommandButton& model, HWND__* parent, int number);

    // Has the thick border of the button that Enter presses.
    void ShowDefault(bool isDefault);

private:
    Shown<bool> isDefault_{false};
};

// A check box or an option button.
class Win32Mark final : public Win32Button {
public:
    Win32Mark(Win32Window& owner, CheckBox& model, HWND__* parent, int number);
    Win32Mark(Win32Window& owner, OptionButton& model, HWND__* parent, int number);

private:
    void SyncContent() override;
    bool Value() const;

    Shown<bool> value_{false};
};

} // namespace tarnwick

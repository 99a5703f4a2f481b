#pragma once

#include "platform/win32/Win32Control.h"

namespace tarnwick {

class Win32CommandButton final : public Win32Control {
public:
    Win32CommandButton(Win32Window& owner, CommandButton& model, HWND__* parent, int number);

    void OnCommand(unsigned notice) override;
    void Press() override;
    // Has the thick border of the button that Enter presses.
    void ShowDefault(bool isDefault);

private:
    void SyncContent() override { ShowText(Model().Caption); }

    bool isDefault_ = false;
};

class Win32CheckBox final : public Win32Control {
public:
    Win32CheckBox(Win32Window& owner, CheckBox& model, HWND__* parent, int number);

    void OnCommand(unsigned notice) override;
    void Press() override;

private:
    void SyncContent() override;

    CheckBox& box_;
    std::int32_t value_ = 0;
};

class Win32OptionButton final : public Win32Control {
public:
    Win32OptionButton(Win32Window& owner, OptionButton& model, HWND__* parent, int number);

    void OnCommand(unsigned notice) override;
    void Press() override;

private:
    void SyncContent() override;

    OptionButton& option_;
    bool value_ = false;
};

} // namespace tarnwick

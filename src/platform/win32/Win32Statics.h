#pragma once

// The controls that only show something.

#include "platform/win32/Win32Control.h"

namespace tarnwick {

class Win32Label final : public Win32Control {
public:
    Win32Label(Win32Window& owner, Label& model, HWND__* parent, int number);

private:
    void SyncContent() override;
    void Scale(int /*dpi*/) override { ShowWhole(); }
    bool IsEmpty() const override;
    void ShowLast() override;
    void ShowWhole();

    Label& label_;
    Shown<std::string> lines_{{}};
    Shown<unsigned> announced_{0};
};

// Holds other controls and hides what it lies over.
class Win32Frame final : public Win32Control {
public:
    Win32Frame(Win32Window& owner, Frame& model, HWND__* parent, int number);

private:
    void SyncContent() override { ShowText(Model().Caption, true); }
};

class Win32Picture final : public Win32Control {
public:
    Win32Picture(Win32Window& owner, PictureBox& model, HWND__* parent, int number);
    ~Win32Picture() override;

private:
    void SyncContent() override;
    void Scale(int dpi) override;
    bool IsEmpty() const override { return picture_.Picture.empty(); }

    PictureBox& picture_;
    Shown<std::string> shown_{{}};
    HBITMAP__* bitmap_ = nullptr;
};

} // namespace tarnwick

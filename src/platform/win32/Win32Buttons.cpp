#include "platform/win32/Win32Buttons.h"

#include "platform/win32/Win32Window.h"

#include <windows.h>

namespace tarnwick {

Win32CommandButton::Win32CommandButton(Win32Window& owner, CommandButton& model, HWND__* parent, int number)
    : Win32Control(owner, model, parent, number, {L"BUTTON", BS_PUSHBUTTON | BS_NOTIFY}) {}

void Win32CommandButton::OnCommand(unsigned notice) {
    if (notice == BN_CLICKED)
        Press();
    else if (notice == BN_SETFOCUS || notice == BN_KILLFOCUS)
        Owner().ShowDefaultButton();
}

void Win32CommandButton::Press() { Owner().Raise(Model().Click); }

void Win32CommandButton::ShowDefault(bool isDefault) {
    if (isDefault_ == isDefault)
        return;
    isDefault_ = isDefault;
    Send(BM_SETSTYLE, isDefault ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON, TRUE);
}

Win32CheckBox::Win32CheckBox(Win32Window& owner, CheckBox& model, HWND__* parent, int number)
    : Win32Control(owner, model, parent, number, {L"BUTTON", BS_CHECKBOX}), box_(model) {}

void Win32CheckBox::OnCommand(unsigned notice) {
    if (notice == BN_CLICKED)
        Press();
}

void Win32CheckBox::Press() {
    if (Owner().IsEcho())
        return;
    box_.Value = box_.Value == 0 ? 1 : 0;
    Owner().Raise(box_.Click);
}

void Win32CheckBox::SyncContent() {
    ShowText(box_.Caption);
    if (value_ == box_.Value)
        return;
    value_ = box_.Value;
    Send(BM_SETCHECK, value_ != 0 ? BST_CHECKED : BST_UNCHECKED);
}

Win32OptionButton::Win32OptionButton(Win32Window& owner, OptionButton& model, HWND__* parent, int number)
    : Win32Control(owner, model, parent, number, {L"BUTTON", BS_RADIOBUTTON}), option_(model) {}

void Win32OptionButton::OnCommand(unsigned notice) {
    if (notice == BN_CLICKED)
        Press();
}

void Win32OptionButton::Press() {
    if (Owner().IsEcho() || option_.Value)
        return;
    for (Control* other : Owner().Model().Controls)
        if (other->Kind == ControlKind::OptionButton)
            static_cast<OptionButton*>(other)->Value = other == &option_;
    Owner().Raise(option_.Click);
}

void Win32OptionButton::SyncContent() {
    ShowText(option_.Caption);
    if (value_ == option_.Value)
        return;
    value_ = option_.Value;
    Send(BM_SETCHECK, value_ ? BST_CHECKED : BST_UNCHECKED);
}

} // namespace tarnwick

#include "platform/win32/Win32Buttons.h"

#include "platform/win32/Win32Window.h"

#include <windows.h>

#include <commctrl.h>

namespace tarnwick {

namespace {

LRESULT CALLBACK ButtonProcedure(HWND window, UINT message, WPARAM first, LPARAM second, UINT_PTR /*number*/,
                                 DWORD_PTR button) {
    if (message == WM_LBUTTONDOWN || message == WM_LBUTTONDBLCLK || (message == WM_KEYDOWN && first == VK_SPACE))
        reinterpret_cast<Win32Button*>(button)->Press();
    return DefSubclassProc(window, message, first, second);
}

std::int64_t Now() { return static_cast<std::int64_t>(GetTickCount64()); }

// When the message that is being handled was posted; one that another program has sent comes at once and has no time.
std::int64_t MessageTime() {
    return InSendMessage() ? Now() : Now() - (GetTickCount() - static_cast<DWORD>(GetMessageTime()));
}

} // namespace

Win32Button::Win32Button(Win32Window& owner, Control& model, HWND__* parent, int number, unsigned long style)
    : Win32Control(owner, model, parent, number, {L"BUTTON", style | BS_NOTIFY}) {
    SetWindowSubclass(Real(), ButtonProcedure, 0, reinterpret_cast<DWORD_PTR>(this));
}

void Win32Button::OnCommand(unsigned notice) {
    if (notice == BN_CLICKED)
        Owner().Pass([&model = Model(), shown = SeenCaption()](Input& input) { input.Click(model, shown); });
    else if (notice == BN_SETFOCUS || notice == BN_KILLFOCUS)
        Owner().ShowDefaultButton();
}

const std::string& Win32Button::SeenCaption() const { return caption_.At(MessageTime()); }

void Win32Button::Press() {
    Owner().Pass([&model = Model(), shown = SeenCaption()](Input& input) { input.Press(model, shown); });
}

void Win32Button::SyncContent() {
    if (caption_.Differs(Model().Caption, Now()))
        ShowText(Model().Caption);
}

Win32CommandButton::Win32CommandButton(Win32Window& owner, CommandButton& model, HWND__* parent, int number)
    : Win32Button(owner, model, parent, number, BS_PUSHBUTTON) {}

void Win32CommandButton::ShowDefault(bool isDefault) {
    if (isDefault_.Differs(isDefault))
        Send(BM_SETSTYLE, isDefault ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON, TRUE);
}

Win32Mark::Win32Mark(Win32Window& owner, CheckBox& model, HWND__* parent, int number)
    : Win32Button(owner, model, parent, number, BS_CHECKBOX) {}

Win32Mark::Win32Mark(Win32Window& owner, OptionButton& model, HWND__* parent, int number)
    : Win32Button(owner, model, parent, number, BS_RADIOBUTTON) {}

bool Win32Mark::Value() const {
    return Model().Kind == ControlKind::CheckBox ? static_cast<CheckBox&>(Model()).Value != 0
                                                 : static_cast<OptionButton&>(Model()).Value;
}

void Win32Mark::SyncContent() {
    Win32Button::SyncContent();
    if (value_.Differs(Value()))
        Send(BM_SETCHECK, Value() ? BST_CHECKED : BST_UNCHECKED);
}

} // namespace tarnwick

#include "platform/win32/Win32TextBox.h"

#include "platform/win32/Win32Text.h"
#include "platform/win32/Win32Window.h"

#include <windows.h>

namespace tarnwick {

Win32TextBox::Win32TextBox(Win32Window& owner, TextBox& model, HWND__* parent, int number)
    : Win32Control(owner, model, parent, number,
                   {L"EDIT",
                    DWORD{ES_AUTOHSCROLL} | (model.Alignment == Alignment::Center ? DWORD{ES_CENTER} : DWORD{ES_LEFT}),
                    WS_EX_CLIENTEDGE}),
      box_(model) {
    if (model.MaxLength > 0)
        Send(EM_LIMITTEXT, static_cast<WPARAM>(model.MaxLength));
}

void Win32TextBox::OnCommand(unsigned notice) {
    if (notice != EN_CHANGE || Owner().IsEcho())
        return;
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(Real())) + 1, L'\0');
    text.resize(static_cast<std::size_t>(GetWindowTextW(Real(), text.data(), static_cast<int>(text.size()))));
    shown_.Differs(Utf8Of(text));
    Owner().Pass([&box = box_, typed = Utf8Of(text)](Input& input) { input.Edit(box, typed); });
}

void Win32TextBox::SyncContent() {
    if (shown_.Differs(box_.Text))
        SetWindowTextW(Real(), SingleLineOf(box_.Text).c_str());
    if (selection_.Differs(box_.SelectRevision))
        Send(EM_SETSEL, 0, -1);
}

} // namespace tarnwick

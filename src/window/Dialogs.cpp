#include "window/Dialogs.h"

#include "window/BoxText.h"
#include "window/Window.h"

namespace tarnwick {

// The program may end before the box opens, or under it: an answer that comes with the end doesn't count.
MessageAnswer ShowMessage(const std::string& text, const std::string& title, MessageIcon icon, MessageButtons buttons) {
    WindowService& windows = services().Windows;
    const MessageAnswer none = buttons == MessageButtons::Ok ? MessageAnswer::Ok : MessageAnswer::No;
    if (windows.HasEnded())
        return none;
    const ModalScope front(nullptr);
    const MessageAnswer answer = windows.RunMessageBox(FittedToBox(text), title, icon, buttons);
    return windows.HasEnded() ? none : answer;
}

void Refuse(const std::string& text, const std::string& title) {
    ShowMessage(text, title, MessageIcon::Critical, MessageButtons::Ok);
}

void PopUp(Menu& menu, Window& window) {
    WindowService& windows = services().Windows;
    if (windows.HasEnded())
        return;
    const std::shared_ptr<Window> keep = window.shared_from_this();
    const MenuEntry* chosen = windows.RunMenu(menu, window);
    if (chosen != nullptr && chosen->Enabled && window.TakesInput() && !windows.HasEnded())
        window.Raise(chosen->Click);
}

} // namespace tarnwick

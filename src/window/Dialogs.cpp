#include "window/Dialogs.h"

#include "window/Window.h"

namespace tarnwick {

MessageAnswer ShowMessage(const std::string& text, const std::string& title, MessageIcon icon, MessageButtons buttons) {
    const ModalScope front(nullptr);
    return services().Windows.ShowMessage(text, title, icon, buttons);
}

void Refuse(const std::string& text, const std::string& title) {
    ShowMessage(text, title, MessageIcon::Critical, MessageButtons::Ok);
}

void PopUp(Menu& menu, Window& window) {
    const std::shared_ptr<Window> keep = window.shared_from_this();
    const MenuEntry* chosen = services().Windows.PopUp(menu, window);
    if (chosen != nullptr && chosen->Enabled && window.TakesInput())
        window.Raise(chosen->Click);
}

} // namespace tarnwick

#pragma once

#include "probe/Winsock.h"
#include "window/Window.h"

#include <memory>

namespace tarnwick {

// Never shown: owns the socket, both pop-up menus, and the picture and icon that the other windows take over. Each
// handler is beside what it does: the socket's in probe/, the menus' in report/ and duplicates/.
class Form2Window : public Window {
public:
    Form2Window();

    std::unique_ptr<Winsock> SOCKET;
    PictureBox Picture1;

    Menu mnuBad;
    MenuEntry mnuBadName;
    MenuEntry Sep1;
    MenuEntry mnuBadRemove;
    MenuEntry mnuBadHide;
    MenuEntry mnuBadGo;
    MenuEntry mnuBadInfo;

    Menu mnuDup;
    MenuEntry mnuDup1;
    MenuEntry Sep2;
    MenuEntry mnuDupK1;
    MenuEntry mnuDupK2;

private:
    void Layout();
    void OnLoad() override;

    void SOCKET_CONNECT();
    void SOCKET_DISCONNECT();
    void SOCKET_Receive(const std::string& Data);
    void SOCKET_ERROR(std::int32_t ErrorID);

    void mnuBadRemove_Click();
    void mnuBadHide_Click();
    void mnuBadGo_Click();
    void mnuDupK1_Click();
    void mnuDupK2_Click();
};

extern WindowObject<Form2Window> Form2;

} // namespace tarnwick

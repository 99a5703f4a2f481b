#include "shell/Form2.h"

namespace tarnwick {

WindowObject<Form2Window> Form2;

Form2Window::Form2Window() {
    Layout();
    mnuBadRemove.Click = [this] { mnuBadRemove_Click(); };
    mnuBadHide.Click = [this] { mnuBadHide_Click(); };
    mnuBadGo.Click = [this] { mnuBadGo_Click(); };
    mnuDupK1.Click = [this] { mnuDupK1_Click(); };
    mnuDupK2.Click = [this] { mnuDupK2_Click(); };
}

void Form2Window::OnLoad() {
    SOCKET = std::make_unique<Winsock>();
    SOCKET->Connect = [this] { SOCKET_CONNECT(); };
    SOCKET->Disconnect = [this] { SOCKET_DISCONNECT(); };
    SOCKET->Receive = [this](const std::string& Data) { SOCKET_Receive(Data); };
    SOCKET->Error = [this](std::int32_t ErrorID) { SOCKET_ERROR(ErrorID); };
}

} // namespace tarnwick

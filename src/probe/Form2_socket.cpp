// What the events of the socket do to the link under check. None of these handlers pumps.

#include "availability/Form4.h"
#include "favorites/Favorites.h"
#include "probe/Request.h"
#include "probe/Verdict.h"
#include "shell/Form2.h"
#include "shell/Preferences.h"

namespace tarnwick {

using Favorites::CurrentLink;
using Favorites::LinkFinished;

// Through a proxy no credentials go out: those in the record are an earlier link's.
void Form2Window::SOCKET_CONNECT() {
    Form4->Label8.Caption = "Checking document...";
    SOCKET->SOCKET_SEND(BuildRequest(CurrentLink, Preferences.KeepAlive != 0, Preferences.UseProxy == 0));
}

// The first chunk alone is looked at; the socket is closed after it, however much there is to come.
void Form2Window::SOCKET_Receive(const std::string& Data) {
    const auto status = ReplyStatus(Data);
    if (const Verdict* verdict = status ? VerdictOf(*status) : nullptr) {
        Form4->Label8.Caption = verdict->Shown;
        if (verdict->Category != nullptr && Preferences.*verdict->Category != 0)
            Form4->AddFinding(CurrentLink.UrlShown, verdict->Problem);
    }
    SOCKET->SOCKET_DISCONNECT(Handle());
    LinkFinished = true;
}

void Form2Window::SOCKET_ERROR(std::int32_t /*ErrorID*/) {
    Form4->Label8.Caption = "Connection error";
    SOCKET->SOCKET_DISCONNECT(Handle());
    LinkFinished = true;
    if (Preferences.CatchConnerr != 0)
        Form4->AddFinding(CurrentLink.UrlShown, "Connection error");
}

void Form2Window::SOCKET_DISCONNECT() { LinkFinished = true; }

} // namespace tarnwick

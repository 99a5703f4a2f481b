// The walk over one folder's shortcuts and the check of one link, with the timers that bound and show it.

#include "availability/Form4.h"
#include "favorites/Folders.h"
#include "favorites/Shortcut.h"
#include "report/Form5.h"
#include "shell/Form2.h"
#include "shell/Preferences.h"
#include "text/Number.h"

#include <cstdio>
#include <optional>

namespace tarnwick {

using Favorites::CurrentLink;
using Favorites::LinkFinished;

namespace {

constexpr std::uint16_t WebPort = 80;
constexpr std::int32_t LargestPort = 65534; // 0 and 65535 are reserved (RFC 6335, 6)

// Nothing for a text that is no port to connect to.
std::optional<std::uint16_t> PortNumber(const std::string& text) {
    if (text.empty())
        return WebPort;
    const auto port = NumberFromText(text);
    if (!port || *port < 1 || *port > LargestPort)
        return std::nullopt;
    return static_cast<std::uint16_t>(*port);
}

bool IsDotName(const std::string& name) { return name == "." || name == ".."; }

} // namespace

bool Form4Window::ScanFolder(std::string szMainPath, std::string szShow) {
    const auto scan = [&](const std::string& name) {
        CurrentLink.FolderShown = szShow;
        Label5.Caption = szShow;
        ScanFile(szMainPath, name);
    };
    return Favorites::WalkShortcuts(szMainPath, visits_, scan, [this] {
        if (StopRequested)
            Form2->SOCKET->SOCKET_DISCONNECT(Form2->Handle());
        return static_cast<bool>(StopRequested);
    });
}

void Form4Window::ScanFile(std::string szPath, std::string szFile) {
    CurrentLink.ShortcutName = szFile;
    CurrentLink.RawUrl = Favorites::ReadShortcutUrl(szPath + CurrentLink.ShortcutName);
    CurrentLink.ShortcutName = Favorites::DisplayName(CurrentLink.ShortcutName);
    Label6.Caption = CurrentLink.ShortcutName;

    const bool proxy = Preferences.UseProxy != 0;
    if (proxy) {
        CurrentLink.Host = Preferences.ProxyAddress;
        CurrentLink.Port = Preferences.ProxyPort;
        CurrentLink.RequestTarget = CurrentLink.RawUrl;
        CurrentLink.UrlShown = CurrentLink.RawUrl;
    } else {
        Favorites::SplitUrl(CurrentLink.RawUrl, CurrentLink.Host, CurrentLink.RequestTarget, CurrentLink.User,
                            CurrentLink.Password, CurrentLink.Port);
    }
    if (CurrentLink.Host.empty())
        return;
    Label7.Caption = CurrentLink.Host + (proxy ? " (Proxy)" : "");
    Label8.Caption = "Connecting...";
    LinkFinished = false;
    Timer1.Enable();
    ConnectLink();
    WaitForLink();
    Timer1.Disable();
}

void Form4Window::ConnectLink() {
    Winsock& socket = *Form2->SOCKET;
    socket.SOCKET_CONNECT(Form2->Handle(), CurrentLink.Host, PortNumber(CurrentLink.Port),
                          Timer1.DueAt() - services().Clock.Now());
    if (socket.SocketHandle() != Winsock::NotStarted)
        return;
    Label8.Caption = "Unable to connect";
    socket.SOCKET_DISCONNECT(Form2->Handle());
    LinkFinished = true;
    if (Preferences.CatchUnabled != 0)
        AddFinding(CurrentLink.RawUrl, "Unable to connect");
}

void Form4Window::WaitForLink() {
    while (!LinkFinished && !StopRequested)
        if (!services().Windows.WaitForEvents())
            StopRequested = true;
}

// The end of the program is a stop, too.
bool Form4Window::Pump() {
    if (!services().Windows.PumpEvents())
        StopRequested = true;
    return !StopRequested;
}

void Form4Window::AddFinding(const std::string& url, const char* problem) const {
    AddReportRow({Label6.Caption, CurrentLink.FolderShown, url, problem, CurrentLink.File});
}

void Form4Window::Timer1_Tick() {
    // The link's own event, or a stop, may have come earlier in the same pass: the first one ends the link.
    if (LinkFinished || StopRequested)
        return;
    Label8.Caption = "Timed out";
    Form2->SOCKET->SOCKET_DISCONNECT(Form2->Handle());
    LinkFinished = true;
    if (Preferences.CatchTimedout != 0)
        AddFinding(CurrentLink.UrlShown, "Timed out");
}

void Form4Window::Timer2_Tick() {
    const std::size_t colon = Label10.Caption.find(':');
    if (colon == std::string::npos)
        return;
    std::int32_t minutes = NumberFromText(Label10.Caption.substr(0, colon)).value_or(0);
    std::int32_t seconds = NumberFromText(Label10.Caption.substr(colon + 1)).value_or(0);
    if (seconds == 59) {
        seconds = 0;
        ++minutes;
    } else {
        ++seconds;
    }
    char text[32];
    std::snprintf(text, sizeof text, "%02d:%02d", minutes, seconds);
    Label10.Caption = text;
}

void Form4Window::FillFolders(std::string szMainPath, Flag valMain) {
    if (!valMain && szMainPath == visits_.Root())
        return;
    if (Tree1.NodeCheck(Tree1.Nodes().Count()) == 0)
        return;
    Favorites::ListingHandle find = 0;
    std::string name = Favorites::FindFirst(szMainPath + "*", find);
    if (name.empty())
        return;
    // The first name is the folder's own ".".
    for (;;) {
        if (!Pump())
            break;
        name = Favorites::FindNext(find);
        if (name.empty())
            break;
        if (IsDotName(name) || Favorites::IsShortcut(name) || Favorites::UpperExtension(name) == ".INI")
            continue;
        Label6.Caption = name;
        if (ScanFolder(szMainPath + name + "\\", name))
            FillFolders(szMainPath + name + "\\", false);
    }
    Favorites::FindEnd(find);
}

} // namespace tarnwick

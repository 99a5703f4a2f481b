#include "probe/Winsock.h"

#include "probe/SocketModule.h"
#include "probe/WinsockAPI.h"
#include "window/Dialogs.h"

#include <limits>

namespace tarnwick {

using namespace SocketModule;

namespace {

constexpr std::int64_t LongestLookUp = 10000; // ms, where no link's time-out bounds it

// The engine keeps a handle in 16 signed bits; a socket beyond that is closed and counts as not started.
std::int16_t FittedHandle(SocketNumber socket) {
    if (socket <= std::numeric_limits<std::int16_t>::max())
        return static_cast<std::int16_t>(socket);
    services().Sockets.Close(socket);
    return Winsock::NotStarted;
}

} // namespace

Winsock::Winsock() {
    Instance = this;
    SocketModule::SocketHandle = 0;
    PreviousWindowProcedure = 0;
    Connected = 0;
    if (services().Sockets.Startup(WinsockVersion) != 0)
        ShowMessage("Unable to start network section", "Dunmarrow", MessageIcon::Critical, MessageButtons::Ok);
}

Winsock::~Winsock() {
    if (SocketModule::SocketHandle > 0)
        services().Sockets.Close(SocketModule::SocketHandle);
    services().Sockets.Cleanup();
    Instance = nullptr;
}

void Winsock::SOCKET_CONNECT(WindowHandle lngHandle, const std::string& szHost, std::optional<std::uint16_t> intPort,
                             std::int64_t lookUpMs) {
    if (Connected == 1)
        SOCKET_DISCONNECT(lngHandle);
    PreviousWindowProcedure = services().Windows.InstallProcedure(lngHandle, SocketWindowProc);
    if (SocketModule::SocketHandle != 0) {
        services().Sockets.Close(SocketModule::SocketHandle);
        SocketModule::SocketHandle = 0;
    }
    SocketModule::SocketHandle =
        FittedHandle(WinsockAPI::OpenClientSocket(szHost, intPort, lngHandle, lookUps_, lookUpMs));
}

void Winsock::SOCKET_DISCONNECT(WindowHandle lngHandle) {
    services().Sockets.Close(SocketModule::SocketHandle);
    if (PreviousWindowProcedure != 0)
        services().Windows.RestoreProcedure(lngHandle, PreviousWindowProcedure);
}

std::string Winsock::SOCKET_GET_LOCALHOST() const { return WinsockAPI::LocalHostName(); }

std::string Winsock::SOCKET_GET_REMOTEHOST(const std::string& szRemoteMachine) {
    return WinsockAPI::HostNameFromAddress(WinsockAPI::AddressFromHost(szRemoteMachine, lookUps_, LongestLookUp));
}

void Winsock::SOCKET_RAISEEVENT(std::int32_t SOCKET_EVENT, std::int32_t param1, const std::string& param2) {
    if (SOCKET_EVENT == 0 && Connect)
        Connect();
    else if (SOCKET_EVENT == 1 && Disconnect)
        Disconnect();
    else if (SOCKET_EVENT == 2 && Receive)
        Receive(param2);
    else if (SOCKET_EVENT == 3 && Accept)
        Accept(param1);
}

void Winsock::SOCKET_SEND(const std::string& What) { WinsockAPI::SendBytes(SocketModule::SocketHandle, What); }

void Winsock::SOCKET_SETERROR(std::int32_t ErrID) {
    if (Error)
        Error(ErrID);
}

std::int16_t Winsock::SocketHandle() const { return SocketModule::SocketHandle; }

} // namespace tarnwick

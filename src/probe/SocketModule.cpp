#include "probe/SocketModule.h"

#include "probe/Winsock.h"
#include "probe/WinsockAPI.h"

namespace tarnwick::SocketModule {

std::int16_t SocketHandle = 0;
PreviousProcedure PreviousWindowProcedure = 0;
std::int16_t Connected = 0;
Winsock* Instance = nullptr;

namespace {

constexpr std::size_t ReadBufferSize = 16364; // bytes of a reply that are looked at

// One read per notification: a further chunk brings a further one.
void Read() {
    std::string buffer(ReadBufferSize, '\0');
    const std::int32_t count = services().Sockets.Receive(SocketHandle, buffer);
    if (count < 0)
        return;
    buffer.resize(static_cast<std::size_t>(count));
    Instance->SOCKET_RAISEEVENT(2, 0, buffer);
}

void OnConnected(std::int16_t error) {
    if (error != 0) {
        Instance->SOCKET_SETERROR(error);
        return;
    }
    Connected = 1;
    Instance->SOCKET_RAISEEVENT(0);
}

void PeerClosed(WindowHandle window) {
    services().Sockets.Close(SocketHandle);
    SocketHandle = 0;
    services().Windows.RestoreProcedure(window, PreviousWindowProcedure);
    Connected = 0;
    Instance->SOCKET_RAISEEVENT(1);
}

} // namespace

std::int16_t LowWord(std::int32_t value) { return static_cast<std::int16_t>(value & 0xFFFF); }
std::int16_t HighWord(std::int32_t value) { return static_cast<std::int16_t>(value >> 16); }

std::int32_t SocketWindowProc(WindowHandle window, std::uint32_t message, std::int32_t first, std::int32_t second) {
    if (message != WinsockAPI::SocketMessage)
        return services().Windows.CallProcedure(PreviousWindowProcedure, window, message, first, second);
    if (first != SocketHandle)
        return 0;
    switch (LowWord(second)) {
    case SocketEvent::Read:
        Read();
        break;
    case SocketEvent::Connect:
        OnConnected(HighWord(second));
        break;
    case SocketEvent::Close:
        PeerClosed(window);
        break;
    default:
        break;
    }
    return 0;
}

} // namespace tarnwick::SocketModule

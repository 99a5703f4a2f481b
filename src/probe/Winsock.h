#pragma once

// The engine of the one client socket: starts a connection, sends, closes, and turns the machine's socket messages into
// events. It knows nothing of HTTP. There is exactly one object of it, owned by Form2.

#include "probe/HostLookups.h"
#include "services/Services.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace tarnwick {

class Winsock {
public:
    // Starts the network section; a failure is said in a message box, and later links then can't be started.
    Winsock();
    ~Winsock();
    Winsock(const Winsock&) = delete;
    Winsock& operator=(const Winsock&) = delete;

    // Events, raised from the window's procedure.
    std::function<void()> Connect;
    std::function<void()> Disconnect;
    std::function<void(const std::string& Data)> Receive;
    std::function<void(std::int32_t requestID)> Accept; // the program never listens, so nothing raises it
    std::function<void(std::int32_t ErrorID)> Error;

    // Starts a connection whose events go to the window `lngHandle`, and returns without waiting for it. SocketHandle()
    // is NotStarted afterwards when it can't even be started, as without a port. A look-up of the host ends within
    // `lookUpMs`.
    void SOCKET_CONNECT(WindowHandle lngHandle, const std::string& szHost, std::optional<std::uint16_t> intPort,
                        std::int64_t lookUpMs);
    // Closes the socket and gives the window its own procedure back: nothing of this socket arrives any more. Harmless
    // when there is none.
    void SOCKET_DISCONNECT(WindowHandle lngHandle);
    std::string SOCKET_GET_LOCALHOST() const;
    std::string SOCKET_GET_REMOTEHOST(const std::string& szRemoteMachine);
    // 0 Connect, 1 Disconnect, 2 Receive with `param2`, 3 Accept with `param1`; any other number raises nothing.
    void SOCKET_RAISEEVENT(std::int32_t SOCKET_EVENT, std::int32_t param1 = 0, const std::string& param2 = {});
    void SOCKET_SEND(const std::string& What);
    void SOCKET_SETERROR(std::int32_t ErrID);

    static constexpr std::int16_t NotStarted = -1;
    // 0: no socket; NotStarted: the last connection could not be started; else the socket.
    std::int16_t SocketHandle() const;

private:
    HostLookups lookUps_;
};

} // namespace tarnwick

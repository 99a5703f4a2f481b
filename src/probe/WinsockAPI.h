#pragma once

// The Windows Sockets 1.1 calls, wrapped for one asynchronous client socket.

#include "services/Services.h"

#include <cstdint>
#include <optional>
#include <string>

namespace tarnwick {
class HostLookups;
}

namespace tarnwick::WinsockAPI {

inline constexpr std::uint32_t SocketMessage = 1025; // WM_USER + 1, brings a socket's events

// Opens a socket and starts its connection without waiting for it; events go to `lngHandle` as SocketMessage. The
// socket, or SocketError::Failed when it can't even be started, without a port above all, and then nothing stays open.
// A look-up of the host ends within `lookUpMs`.
SocketNumber OpenClientSocket(const std::string& szHost, std::optional<std::uint16_t> intPort, WindowHandle lngHandle,
                              HostLookups& lookUps, std::int64_t lookUpMs);

// 0, or -1.
std::int32_t SetSocketLinger(SocketNumber socket, std::uint16_t onOff, std::uint16_t seconds);

// Network order; all bits set when the host can't be resolved within `lookUpMs`. Windows are painted meanwhile, and
// nothing else happens.
std::uint32_t AddressFromHost(const std::string& szHost, HostLookups& lookUps, std::int64_t lookUpMs);

// "Unknown" when there is no answer.
std::string HostNameFromAddress(std::uint32_t address);
std::string LocalHostName();

// Sends the text in one call; the number of bytes taken, or -1. An empty text sends nothing.
std::int32_t SendBytes(std::int16_t socket, const std::string& text);

} // namespace tarnwick::WinsockAPI

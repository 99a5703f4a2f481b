#include "probe/WinsockAPI.h"

#include "probe/HostLookups.h"

#include <algorithm>
#include <cstring>

namespace tarnwick::WinsockAPI {

namespace {

constexpr std::int32_t ConnectUnderWay = SocketError::Failed; // a non-blocking connect says so by failing
constexpr std::size_t LongestName = 256;                      // bytes

SocketNumber GiveUp(SocketNumber socket) {
    services().Sockets.Close(socket);
    return SocketError::Failed;
}

} // namespace

SocketNumber OpenClientSocket(const std::string& szHost, std::optional<std::uint16_t> intPort, WindowHandle lngHandle,
                              HostLookups& lookUps, std::int64_t lookUpMs) {
    if (!intPort)
        return SocketError::Failed;
    SocketService& sockets = services().Sockets;
    AddressRecord address;
    address.Family = FamilyInternet;
    address.Port = sockets.HostToNetwork(*intPort);
    address.Address = AddressFromHost(szHost, lookUps, lookUpMs);
    if (address.Address == NoAddress)
        return SocketError::Failed;
    const SocketNumber socket = sockets.Open(FamilyInternet, TypeStream, ProtocolTcp);
    if (socket < 0)
        return SocketError::Failed;
    // Lingering for 0 seconds makes a later close drop the connection at once.
    if (SetSocketLinger(socket, 1, 0) != 0)
        return GiveUp(socket);
    if (sockets.AsyncSelect(socket, lngHandle, SocketMessage, SocketEvent::All) != 0)
        return GiveUp(socket);
    if (sockets.Connect(socket, address) != ConnectUnderWay)
        return GiveUp(socket);
    return socket;
}

std::int32_t SetSocketLinger(SocketNumber socket, std::uint16_t onOff, std::uint16_t seconds) {
    LingerRecord linger{onOff, seconds};
    if (services().Sockets.SetOption(socket, LevelSocket, OptionLinger, linger) != 0)
        return SocketError::Failed;
    std::int32_t length = sizeof linger;
    return services().Sockets.GetOption(socket, LevelSocket, OptionLinger, linger, length) == 0 ? 0
                                                                                                : SocketError::Failed;
}

std::uint32_t AddressFromHost(const std::string& szHost, HostLookups& lookUps, std::int64_t lookUpMs) {
    const std::uint32_t dotted = services().Sockets.AddressFromText(szHost);
    if (dotted != NoAddress)
        return dotted;
    const std::string bytes = lookUps.AddressOf(szHost, lookUpMs);
    if (bytes.empty())
        return NoAddress;
    std::uint32_t address = 0;
    std::memcpy(&address, bytes.data(), std::min(bytes.size(), sizeof address));
    return address;
}

std::string HostNameFromAddress(std::uint32_t address) {
    const std::string name = services().Sockets.NameOfHost(address);
    return name.empty() ? "Unknown" : name.substr(0, std::min(name.find('\0'), LongestName));
}

std::string LocalHostName() {
    std::string name;
    if (services().Sockets.LocalName(name) != 0)
        return "Unknown";
    return name.substr(0, std::min(name.find('\0'), LongestName));
}

std::int32_t SendBytes(std::int16_t socket, const std::string& text) {
    return text.empty() ? 0 : services().Sockets.Send(socket, text);
}

} // namespace tarnwick::WinsockAPI

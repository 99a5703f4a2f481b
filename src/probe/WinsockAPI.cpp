#include "probe/WinsockAPI.h"

#include "probe/HostLookups.h"

#include <algorithm>
#include <cstring>

namespace tarnwick::WinsockAPI {

namespace {

// Windows Sockets 1.1, winsock.h.
constexpr std::int32_t FamilyInternet = 2;   // AF_INET
constexpr std::int32_t TypeStream = 1;       // SOCK_STREAM
constexpr std::int32_t ProtocolTcp = 6;      // IPPROTO_TCP
constexpr std::int32_t LevelSocket = 65535;  // SOL_SOCKET
constexpr std::int32_t OptionLinger = 128;   // SO_LINGER
constexpr std::int32_t ConnectUnderWay = -1; // a non-blocking connect says so by failing
constexpr std::uint32_t NoAddress = 0xFFFFFFFF;
constexpr std::size_t LongestName = 256; // bytes

SocketNumber GiveUp(SocketNumber socket) {
    services().Sockets.Close(socket);
    return -1;
}

} // namespace

SocketNumber OpenClientSocket(const std::string& szHost, std::int16_t intPort, WindowHandle lngHandle,
                              std::int64_t lookUpMs) {
    SocketService& sockets = services().Sockets;
    AddressRecord address;
    address.Family = FamilyInternet;
    address.Port = sockets.HostToNetwork(intPort);
    if (address.Port == 0xFFFF)
        return -1;
    address.Address = AddressFromHost(szHost, lookUpMs);
    if (address.Address == NoAddress)
        return -1;
    const SocketNumber socket = sockets.Open(FamilyInternet, TypeStream, ProtocolTcp);
    if (socket < 0)
        return -1;
    // Lingering for 0 seconds makes a later close drop the connection at once.
    if (SetSocketLinger(socket, 1, 0) != 0)
        return GiveUp(socket);
    constexpr std::int32_t mask = EventRead | EventWrite | EventConnect | EventClose;
    if (sockets.AsyncSelect(socket, lngHandle, SocketMessage, mask) != 0)
        return GiveUp(socket);
    if (sockets.Connect(socket, address) != ConnectUnderWay)
        return GiveUp(socket);
    return socket;
}

std::int32_t SetSocketLinger(SocketNumber socket, std::uint16_t onOff, std::uint16_t seconds) {
    LingerRecord linger{onOff, seconds};
    if (services().Sockets.SetOption(socket, LevelSocket, OptionLinger, linger) != 0)
        return -1;
    std::int32_t length = sizeof linger;
    return services().Sockets.GetOption(socket, LevelSocket, OptionLinger, linger, length) == 0 ? 0 : -1;
}

std::uint32_t AddressFromHost(const std::string& szHost, std::int64_t lookUpMs) {
    const std::uint32_t dotted = services().Sockets.AddressFromText(szHost);
    if (dotted != NoAddress)
        return dotted;
    const std::string bytes = AddressOfHost(szHost, lookUpMs);
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

void CleanupNetwork() {
    ForgetLookups();
    services().Sockets.Cleanup();
}

} // namespace tarnwick::WinsockAPI

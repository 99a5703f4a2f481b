#include "platform/win32/Win32Sockets.h"

#include "platform/win32/Win32Handles.h"
#include "platform/win32/Win32Lookup.h"

#include <winsock2.h>

#include <windows.h>

#include <vector>

namespace tarnwick {

namespace {

constexpr std::int32_t NameSize = 256; // bytes, the closing NUL included

// The numbers of the service are the system's own: they go through unchanged.
static_assert(FamilyInternet == AF_INET && TypeStream == SOCK_STREAM && ProtocolTcp == IPPROTO_TCP);
static_assert(LevelSocket == SOL_SOCKET && OptionLinger == SO_LINGER && NoAddress == INADDR_NONE);
static_assert(SocketEvent::All == (FD_READ | FD_WRITE | FD_CONNECT | FD_CLOSE));
static_assert(SocketEvent::Read == FD_READ && SocketEvent::Write == FD_WRITE && SocketEvent::Close == FD_CLOSE);
static_assert(SocketError::Failed == SOCKET_ERROR && SocketError::AddressNotAvailable == WSAEADDRNOTAVAIL);
static_assert(SocketError::NetworkDown == WSAENETDOWN && SocketError::ConnectionReset == WSAECONNRESET);
static_assert(SocketError::ConnectionRefused == WSAECONNREFUSED && SocketError::SystemNotReady == WSASYSNOTREADY);
static_assert(SocketError::VersionNotSupported == WSAVERNOTSUPPORTED);
static_assert(sizeof(LingerRecord) == sizeof(linger) && sizeof(AddressRecord) == sizeof(sockaddr));

SOCKET SocketOf(SocketNumber number) { return static_cast<SOCKET>(number); }

// Takes what is queued for a socket out of its window's queue; what is queued for others stays, in order.
void Purge(HWND window, std::uint32_t message, SocketNumber socket) {
    std::vector<MSG> others;
    MSG queued;
    while (PeekMessageW(&queued, window, message, message, PM_REMOVE | PM_QS_POSTMESSAGE))
        if (queued.message == message && queued.wParam != SocketOf(socket))
            others.push_back(queued);
    for (const MSG& other : others)
        PostMessageW(window, other.message, other.wParam, other.lParam);
}

} // namespace

std::int32_t Win32Sockets::Startup(std::uint16_t version) {
    WSADATA data;
    return WSAStartup(version, &data);
}

std::int32_t Win32Sockets::Cleanup() { return WSACleanup(); }

SocketNumber Win32Sockets::Open(std::int32_t family, std::int32_t type, std::int32_t protocol) {
    const auto number = static_cast<SocketNumber>(socket(family, type, protocol));
    if (number >= 0)
        open_[number] = {};
    return number;
}

std::int32_t Win32Sockets::SetOption(SocketNumber socket, std::int32_t level, std::int32_t option,
                                     const LingerRecord& value) {
    return setsockopt(SocketOf(socket), level, option, reinterpret_cast<const char*>(&value), sizeof value);
}

std::int32_t Win32Sockets::GetOption(SocketNumber socket, std::int32_t level, std::int32_t option, LingerRecord& value,
                                     std::int32_t& length) {
    int size = length;
    const int result = getsockopt(SocketOf(socket), level, option, reinterpret_cast<char*>(&value), &size);
    length = size;
    return result;
}

std::int32_t Win32Sockets::AsyncSelect(SocketNumber socket, WindowHandle window, std::uint32_t message,
                                       std::int32_t mask) {
    const int result = WSAAsyncSelect(SocketOf(socket), WindowOf(window), message, mask);
    if (result == 0)
        open_[socket] = {window, message};
    return result;
}

std::int32_t Win32Sockets::Connect(SocketNumber socket, const AddressRecord& address) {
    // Not every Windows, and no Wine, refuses address 0 by itself; and a connect that fails at once posts nothing.
    int error = WSAEADDRNOTAVAIL;
    if (address.Address != 0) {
        const int result = connect(SocketOf(socket), reinterpret_cast<const sockaddr*>(&address), sizeof address);
        if (result == 0 || WSAGetLastError() == WSAEWOULDBLOCK)
            return result;
        error = WSAGetLastError();
    }
    if (const auto found = open_.find(socket); found != open_.end())
        PostMessageW(WindowOf(found->second.Window), found->second.Message, SocketOf(socket),
                     MAKELPARAM(FD_CONNECT, error));
    return SOCKET_ERROR;
}

std::int32_t Win32Sockets::Send(SocketNumber socket, const std::string& bytes) {
    return send(SocketOf(socket), bytes.data(), static_cast<int>(bytes.size()), 0);
}

std::int32_t Win32Sockets::Receive(SocketNumber socket, std::string& buffer) {
    return recv(SocketOf(socket), buffer.data(), static_cast<int>(buffer.size()), 0);
}

// What was queued before the close would still arrive, and the next socket may get the same number. A number that is
// not open here may be anything of the process.
std::int32_t Win32Sockets::Close(SocketNumber socket) {
    const auto found = open_.find(socket);
    if (found == open_.end())
        return SOCKET_ERROR;
    const Selection selection = found->second;
    open_.erase(found);
    const HWND window = WindowOf(selection.Window);
    if (window != nullptr)
        WSAAsyncSelect(SocketOf(socket), window, 0, 0);
    const int result = closesocket(SocketOf(socket));
    if (window != nullptr)
        Purge(window, selection.Message, socket);
    return result;
}

std::uint16_t Win32Sockets::HostToNetwork(std::uint16_t port) { return htons(port); }

std::uint32_t Win32Sockets::AddressFromText(const std::string& text) {
    return static_cast<std::uint32_t>(inet_addr(text.c_str()));
}

std::shared_ptr<HostLookup> Win32Sockets::LookUp(const std::string& name) { return Win32Lookup::Start(name); }

std::string Win32Sockets::NameOfHost(std::uint32_t address) {
    const hostent* host = gethostbyaddr(reinterpret_cast<const char*>(&address), sizeof address, AF_INET);
    return host == nullptr || host->h_name == nullptr ? std::string() : host->h_name;
}

std::int32_t Win32Sockets::LocalName(std::string& name) {
    std::string buffer(NameSize, '\0');
    const int result = gethostname(buffer.data(), NameSize);
    if (result == 0)
        name = buffer.substr(0, buffer.find('\0'));
    return result;
}

} // namespace tarnwick

#include "platform/posix/PosixSockets.h"

#include "platform/posix/PosixLookup.h"

#include <algorithm>
#include <arpa/inet.h>
#include <array>
#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <netdb.h>
#include <netinet/in.h>
#include <sys/epoll.h>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>

namespace tarnwick {

namespace {

struct ErrorPair {
    int Errno;
    std::int32_t Windows;
};

constexpr std::array ErrorCodes = {
    ErrorPair{ECONNREFUSED, SocketError::ConnectionRefused},
    ErrorPair{ETIMEDOUT, 10060},
    ErrorPair{EHOSTUNREACH, 10065},
    ErrorPair{ENETUNREACH, 10051},
    ErrorPair{ECONNRESET, SocketError::ConnectionReset},
    ErrorPair{EPIPE, SocketError::ConnectionReset},
    ErrorPair{ECONNABORTED, 10053},
    ErrorPair{EADDRNOTAVAIL, SocketError::AddressNotAvailable},
    ErrorPair{EADDRINUSE, 10048},
    ErrorPair{EACCES, 10013},
    ErrorPair{EPERM, 10013},
    ErrorPair{EHOSTDOWN, 10064},
    ErrorPair{ENETDOWN, SocketError::NetworkDown},
    ErrorPair{ENETRESET, 10052},
    ErrorPair{ENOBUFS, 10055},
    ErrorPair{ENOMEM, 10055},
    ErrorPair{EINVAL, 10022},
    ErrorPair{EAFNOSUPPORT, 10047},
};

std::int32_t WindowsError(int error) {
    if (error == 0)
        return 0;
    const auto* const found = std::ranges::find(ErrorCodes, error, &ErrorPair::Errno);
    return found == ErrorCodes.end() ? SocketError::NetworkDown : found->Windows;
}

// Errors that only an established connection can show; a failed connect has others.
bool EndsConnection(int error) { return error == ECONNRESET || error == EPIPE; }

bool IsPassing(int error) { return error == EAGAIN || error == EINTR; }

// The numbers 0 to 2 are taken from a process that was started without standard files; 0 means "none" to callers.
int AboveStandardFiles(int descriptor) {
    if (descriptor < 0 || descriptor > STDERR_FILENO)
        return descriptor;
    const int above = fcntl(descriptor, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    close(descriptor);
    return above;
}

} // namespace

PosixSockets::PosixSockets(MessageLoop& loop) : loop_(loop), epoll_(epoll_create1(EPOLL_CLOEXEC)) {}

PosixSockets::~PosixSockets() {
    for (const auto& [number, socket] : sockets_)
        close(number);
    if (epoll_ >= 0)
        close(epoll_);
}

PosixSockets::Socket* PosixSockets::Find(SocketNumber number) {
    const auto found = sockets_.find(number);
    return found == sockets_.end() ? nullptr : &found->second;
}

// Once per socket: epoll then reports each change, and no further call is needed until the close, which ends it.
void PosixSockets::Watch(SocketNumber number, Socket& socket) {
    if (socket.Watched || socket.Window == 0 || socket.State == Phase::Unconnected)
        return;
    epoll_event event = {};
    event.events = EPOLLIN | EPOLLOUT | EPOLLRDHUP | EPOLLET;
    event.data.u64 = std::uint64_t{socket.Serial} << 32U | static_cast<std::uint32_t>(number);
    socket.Watched = epoll_ctl(epoll_, EPOLL_CTL_ADD, number, &event) == 0;
}

void PosixSockets::Post(SocketNumber number, const Socket& socket, std::int32_t event, int error) const {
    if ((socket.Mask & event) != 0)
        loop_.Post({socket.Window, socket.Message, number, event | WindowsError(error) << 16});
}

void PosixSockets::Collect() {
    const bool fetched = std::exchange(fetched_, false);
    if (!fetched && !sockets_.empty()) // a walk that meets no link pumps for each file: it asks the system nothing
        Fetch(0);
}

void PosixSockets::Wait(std::optional<std::int64_t> ms) {
    Fetch(ms ? static_cast<int>(std::clamp<std::int64_t>(*ms, 0, INT_MAX)) : -1);
    fetched_ = true;
}

void PosixSockets::Fetch(int ms) {
    std::array<epoll_event, 16> events = {};
    const int count = epoll_wait(epoll_, events.data(), static_cast<int>(events.size()), ms);
    for (int i = 0; i < count; ++i)
        Handle(events[static_cast<std::size_t>(i)].data.u64, events[static_cast<std::size_t>(i)].events);
}

// A socket that was closed may still be reported, through its copy in a child that is about to exec.
void PosixSockets::Handle(std::uint64_t key, std::uint32_t events) {
    const auto number = static_cast<SocketNumber>(key & 0xFFFFFFFFU);
    Socket* const socket = Find(number);
    if (socket == nullptr || socket->Serial != key >> 32U)
        return;
    socket->Seen |= events;
    if (socket->State == Phase::Connecting && (events & (EPOLLOUT | EPOLLERR | EPOLLHUP)) != 0)
        FinishConnect(number, *socket);
    if (socket->State == Phase::Connected && !socket->ReadTold && (events & ~std::uint32_t{EPOLLOUT}) != 0)
        TellArrival(number, *socket);
}

void PosixSockets::FinishConnect(SocketNumber number, Socket& socket) {
    if (socket.Error == 0 && (socket.Seen & (EPOLLERR | EPOLLHUP)) != 0) {
        socklen_t length = sizeof socket.Error;
        getsockopt(number, SOL_SOCKET, SO_ERROR, &socket.Error, &length);
    }
    if (socket.Error != 0 && !EndsConnection(socket.Error)) {
        socket.State = Phase::Finished;
        Post(number, socket, SocketEvent::Connect, socket.Error);
        return;
    }
    socket.State = Phase::Connected;
    Post(number, socket, SocketEvent::Connect, 0);
    Post(number, socket, SocketEvent::Write, 0);
}

// Data before the close: a reset, too, is reported only when nothing is left to read.
void PosixSockets::TellArrival(SocketNumber number, Socket& socket) {
    // The first bytes of a peer that is still there need no look.
    const bool isSure =
        !socket.Received && (socket.Seen & EPOLLIN) != 0 && (socket.Seen & (EPOLLRDHUP | EPOLLHUP | EPOLLERR)) == 0;
    char first = 0;
    const ssize_t got = isSure ? 1 : recv(number, &first, 1, MSG_PEEK | MSG_DONTWAIT);
    if (got > 0) {
        socket.ReadTold = true;
        Post(number, socket, SocketEvent::Read, 0);
        return;
    }
    const int error = got < 0 ? errno : 0;
    if (!IsPassing(error) || socket.Error != 0)
        TellClose(number, socket, error);
}

void PosixSockets::TellClose(SocketNumber number, Socket& socket, int error) {
    socket.State = Phase::Finished;
    Post(number, socket, SocketEvent::Close, socket.Error != 0 ? socket.Error : error);
}

std::int32_t PosixSockets::Startup(std::uint16_t version) {
    if ((version & 0xFFU) == 0)
        return SocketError::VersionNotSupported;
    return epoll_ < 0 ? SocketError::SystemNotReady : 0;
}

std::int32_t PosixSockets::Cleanup() {
    while (!sockets_.empty())
        Close(sockets_.begin()->first);
    return 0;
}

SocketNumber PosixSockets::Open(std::int32_t family, std::int32_t type, std::int32_t protocol) {
    if (family != FamilyInternet || type != TypeStream || (protocol != ProtocolTcp && protocol != 0))
        return SocketError::Failed;
    const int number = AboveStandardFiles(socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, IPPROTO_TCP));
    if (number < 0)
        return SocketError::Failed;
    sockets_[number].Serial = ++lastSerial_;
    return number;
}

std::int32_t PosixSockets::SetOption(SocketNumber socket, std::int32_t level, std::int32_t option,
                                     const LingerRecord& value) {
    if (Find(socket) == nullptr || level != LevelSocket || option != OptionLinger)
        return SocketError::Failed;
    const linger own = {value.OnOff, value.Seconds};
    return setsockopt(socket, SOL_SOCKET, SO_LINGER, &own, sizeof own);
}

std::int32_t PosixSockets::GetOption(SocketNumber socket, std::int32_t level, std::int32_t option, LingerRecord& value,
                                     std::int32_t& length) {
    linger own = {};
    socklen_t ownLength = sizeof own;
    if (Find(socket) == nullptr || level != LevelSocket || option != OptionLinger ||
        getsockopt(socket, SOL_SOCKET, SO_LINGER, &own, &ownLength) != 0)
        return SocketError::Failed;
    value = {static_cast<std::uint16_t>(own.l_onoff), static_cast<std::uint16_t>(own.l_linger)};
    length = sizeof value;
    return 0;
}

std::int32_t PosixSockets::AsyncSelect(SocketNumber socket, WindowHandle window, std::uint32_t message,
                                       std::int32_t mask) {
    Socket* const selected = Find(socket);
    if (selected == nullptr || epoll_ < 0)
        return SocketError::Failed;
    selected->Window = mask == 0 ? 0 : window;
    selected->Message = message;
    selected->Mask = mask;
    Watch(socket, *selected);
    return 0;
}

std::int32_t PosixSockets::Connect(SocketNumber socket, const AddressRecord& address) {
    Socket* const connecting = Find(socket);
    if (connecting == nullptr || connecting->State != Phase::Unconnected)
        return SocketError::Failed;
    sockaddr_in own = {};
    own.sin_family = static_cast<sa_family_t>(address.Family);
    own.sin_port = address.Port;
    own.sin_addr.s_addr = address.Address;
    connecting->State = Phase::Connecting;
    if (address.Address == 0)
        connecting->Error = EADDRNOTAVAIL;
    else if (connect(socket, reinterpret_cast<const sockaddr*>(&own), sizeof own) != 0 && errno != EINPROGRESS)
        connecting->Error = errno;
    if (connecting->Error != 0)
        FinishConnect(socket, *connecting);
    if (connecting->State != Phase::Finished)
        Watch(socket, *connecting);
    return SocketError::Failed;
}

std::int32_t PosixSockets::Send(SocketNumber socket, const std::string& bytes) {
    Socket* const sending = Find(socket);
    if (sending == nullptr)
        return SocketError::Failed;
    const ssize_t sent = send(socket, bytes.data(), std::min<std::size_t>(bytes.size(), INT_MAX), MSG_NOSIGNAL);
    // The system reports a reset once, to the first call that meets it; the CLOSE to come needs it too.
    if (sent < 0 && EndsConnection(errno))
        sending->Error = errno;
    return static_cast<std::int32_t>(sent);
}

std::int32_t PosixSockets::Receive(SocketNumber socket, std::string& buffer) {
    Socket* const receiving = Find(socket);
    if (receiving == nullptr)
        return SocketError::Failed;
    const ssize_t got = recv(socket, buffer.data(), std::min<std::size_t>(buffer.size(), INT_MAX), 0);
    if (got < 0 && EndsConnection(errno))
        receiving->Error = errno;
    receiving->Received = true;
    if (receiving->State != Phase::Connected || !std::exchange(receiving->ReadTold, false))
        return static_cast<std::int32_t>(got);
    // What came while the READ was open is reported now. Less than asked for is all that there was.
    const bool isAll = got >= 0 && static_cast<std::size_t>(got) < buffer.size();
    if (!isAll || (receiving->Seen & (EPOLLERR | EPOLLHUP)) != 0)
        TellArrival(socket, *receiving);
    else if ((receiving->Seen & EPOLLRDHUP) != 0)
        TellClose(socket, *receiving, 0);
    return static_cast<std::int32_t>(got);
}

std::int32_t PosixSockets::Close(SocketNumber socket) {
    const auto found = sockets_.find(socket);
    if (found == sockets_.end())
        return SocketError::Failed;
    close(socket);
    sockets_.erase(found);
    loop_.Purge(socket);
    return 0;
}

std::uint16_t PosixSockets::HostToNetwork(std::uint16_t port) { return htons(port); }

std::uint32_t PosixSockets::AddressFromText(const std::string& text) {
    in_addr address = {};
    if (text == " ")
        return 0; // as Windows reads it
    if (text.find('\0') != std::string::npos || inet_aton(text.c_str(), &address) == 0)
        return NoAddress;
    return address.s_addr;
}

std::shared_ptr<HostLookup> PosixSockets::LookUp(const std::string& name) { return PosixLookup::Start(name); }

std::string PosixSockets::NameOfHost(std::uint32_t address) {
    sockaddr_in own = {};
    own.sin_family = AF_INET;
    own.sin_addr.s_addr = address;
    std::array<char, NI_MAXHOST> name = {};
    const int result = getnameinfo(reinterpret_cast<const sockaddr*>(&own), sizeof own, name.data(),
                                   static_cast<socklen_t>(name.size()), nullptr, 0, NI_NAMEREQD);
    return result == 0 ? name.data() : "";
}

std::int32_t PosixSockets::LocalName(std::string& name) {
    std::array<char, 256> buffer = {};
    if (gethostname(buffer.data(), buffer.size() - 1) != 0)
        return SocketError::Failed;
    name = buffer.data();
    return 0;
}

} // namespace tarnwick

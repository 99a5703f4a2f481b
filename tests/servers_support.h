#pragma once

// Servers of the tests' own on loopback, good and bad, and programs of Debian that serve.

#include <arpa/inet.h>
#include <array>
#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <netinet/in.h>
#include <poll.h>
#include <stdexcept>
#include <string>
#include <string_view>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>
#include <utility>
#include <vector>

namespace tarnwick::test {

inline sockaddr_in LoopbackAddress(std::uint16_t port) {
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return address;
}

class Descriptor {
public:
    explicit Descriptor(int number) : number_(number) {
        if (number < 0)
            throw std::runtime_error("no descriptor");
    }
    Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    ~Descriptor() {
        if (number_ >= 0)
            close(number_);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    operator int() const { return number_; } // NOLINT(google-explicit-constructor)

private:
    int number_;
};

inline Descriptor TcpSocket(int flags = 0) {
    return Descriptor(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC | flags, 0));
}

// Bound to a free port of loopback, not listening: a connection is refused.
class BoundPort {
public:
    BoundPort() {
        sockaddr_in address = LoopbackAddress(0);
        socklen_t length = sizeof address;
        if (bind(Socket, reinterpret_cast<sockaddr*>(&address), length) != 0 ||
            getsockname(Socket, reinterpret_cast<sockaddr*>(&address), &length) != 0)
            throw std::runtime_error("no free port on loopback");
        Port = ntohs(address.sin_port);
    }
    Descriptor Socket = TcpSocket();
    std::uint16_t Port = 0;
};

inline bool ConnectTo(int socket, std::uint16_t port) {
    const sockaddr_in address = LoopbackAddress(port);
    return connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
}

// Its close drops the connection without a word.
inline void DropAtClose(int socket) {
    const linger drop = {1, 0};
    setsockopt(socket, SOL_SOCKET, SO_LINGER, &drop, sizeof drop);
}

// One accepted connection; each call ends early when the server is given up.
class Connection {
public:
    Connection(Descriptor socket, int stop) : socket_(std::move(socket)), stop_(stop) {}

    // Up to the empty line, or to the peer's end.
    std::string ReadRequest() {
        std::string request;
        std::array<char, 4096> buffer = {};
        while (request.find("\r\n\r\n") == std::string::npos && WaitFor(POLLIN, -1)) {
            const ssize_t got = recv(socket_, buffer.data(), buffer.size(), MSG_DONTWAIT);
            if (got <= 0)
                break;
            request.append(buffer.data(), static_cast<std::size_t>(got));
        }
        return request;
    }
    // False when the peer has gone.
    bool Send(std::string_view bytes) {
        while (!bytes.empty()) {
            const ssize_t sent = send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
            if (sent < 0 && (errno != EAGAIN || !WaitFor(POLLOUT, -1)))
                return false;
            if (sent > 0)
                bytes.remove_prefix(static_cast<std::size_t>(sent));
        }
        return true;
    }
    // True when the peer goes within this time; without a bound below 0.
    bool WaitForHangup(int ms) { return WaitFor(POLLRDHUP, ms); }
    void Reset() { DropAtClose(socket_); }

private:
    bool WaitFor(short events, int ms) {
        std::array<pollfd, 2> watched = {pollfd{socket_, events, 0}, pollfd{stop_, POLLIN, 0}};
        return poll(watched.data(), watched.size(), ms) > 0 && watched[1].revents == 0;
    }

    Descriptor socket_;
    int stop_;
};

// Takes one connection after the other in a thread of its own and hands each to `serve`, until the object goes.
class TestServer {
public:
    using Serve = std::function<void(Connection&)>;

    explicit TestServer(Serve serve) : serve_(std::move(serve)) {
        if (listen(bound_.Socket, SOMAXCONN) != 0)
            throw std::runtime_error("can't listen");
        thread_ = std::thread([this] { Run(); });
    }
    ~TestServer() {
        eventfd_write(stop_, 1);
        thread_.join();
    }
    TestServer(const TestServer&) = delete;
    TestServer& operator=(const TestServer&) = delete;

    std::uint16_t Port() const { return bound_.Port; }
    std::string Address() const { return "127.0.0.1:" + std::to_string(Port()); }

private:
    void Run() {
        for (;;) {
            std::array<pollfd, 2> watched = {pollfd{bound_.Socket, POLLIN, 0}, pollfd{stop_, POLLIN, 0}};
            poll(watched.data(), watched.size(), -1);
            if (watched[1].revents != 0)
                return;
            const int socket = accept4(bound_.Socket, nullptr, nullptr, SOCK_CLOEXEC);
            if (socket < 0)
                continue;
            Connection connection(Descriptor(socket), stop_);
            serve_(connection);
        }
    }

    Serve serve_;
    BoundPort bound_;
    Descriptor stop_{eventfd(0, EFD_CLOEXEC)};
    std::thread thread_;
};

// How many sockets this process has.
inline int OpenSockets() {
    int count = 0;
    std::error_code gone;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd"))
        count += std::filesystem::read_symlink(entry.path(), gone).string().starts_with("socket:") ? 1 : 0;
    return count;
}

} // namespace tarnwick::test

#pragma once

// Sockets of a section's own on loopback.

#include <cstdint>
#include <netinet/in.h>
#include <stdexcept>
#include <sys/socket.h>
#include <unistd.h>

namespace tarnwick::bench {

class Descriptor {
public:
    explicit Descriptor(int number) : number_(number) {
        if (number < 0)
            throw std::runtime_error("no descriptor");
    }
    ~Descriptor() { close(number_); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    operator int() const { return number_; } // NOLINT(google-explicit-constructor)

private:
    const int number_;
};

inline Descriptor TcpSocket() { return Descriptor(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)); }

inline sockaddr_in LoopbackAddress(std::uint16_t port) {
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return address;
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

} // namespace tarnwick::bench

#pragma once

// A peer on loopback, driven by the test itself: the same calls on Linux and Windows.

#include "platform/Services.h"

#include <gtest/gtest.h>

#ifdef _WIN32
#include <winsock2.h>

#include <ws2tcpip.h>
#else
#include <arpa/inet.h>
#include <sys/socket.h>
#include <unistd.h>
inline int closesocket(int socket) { return close(socket); }
#endif

#include <string>
#include <utility>

namespace tarnwick::test {

class LoopbackPeer {
public:
    LoopbackPeer() : listener_(Bound(address_)), refuser_(Bound(refusing_)) { EXPECT_EQ(listen(listener_, 16), 0); }
    ~LoopbackPeer() {
        Hang();
        closesocket(listener_);
        closesocket(refuser_);
    }
    LoopbackPeer(const LoopbackPeer&) = delete;
    LoopbackPeer& operator=(const LoopbackPeer&) = delete;

    AddressRecord Address() const { return address_; }
    AddressRecord Refusing() const { return refusing_; } // bound, and nobody listens
    std::string KnownHost() const { return "127.0.0.1"; }

    void Accept() {
        Hang();
        connection_ = accept(listener_, nullptr, nullptr);
    }
    void Say(const std::string& text) const {
        const auto size = static_cast<socklen_t>(text.size());
        EXPECT_EQ(send(connection_, text.data(), size, 0), static_cast<int>(text.size()));
    }
    // What arrives next.
    std::string Hear() const {
        char buffer[100];
        const auto got = recv(connection_, buffer, sizeof buffer, 0);
        return got < 0 ? "dropped" : std::string(buffer, static_cast<std::size_t>(got));
    }
    void Hang() {
        if (connection_ != None)
            closesocket(std::exchange(connection_, None));
    }
    void Reset() {
        const linger drop = {1, 0};
        setsockopt(connection_, SOL_SOCKET, SO_LINGER, reinterpret_cast<const char*>(&drop), sizeof drop);
        Hang();
    }

private:
    using NativeSocket = decltype(socket(0, 0, 0));
    static constexpr NativeSocket None = static_cast<NativeSocket>(-1);

    static NativeSocket Bound(AddressRecord& bound) {
#ifdef _WIN32
        WSADATA data;
        WSAStartup(0x0202, &data); // the machine's own start may come later
#endif
        const NativeSocket number = socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
        sockaddr_in address = {};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t length = sizeof address;
        EXPECT_EQ(bind(number, reinterpret_cast<sockaddr*>(&address), length), 0);
        EXPECT_EQ(getsockname(number, reinterpret_cast<sockaddr*>(&address), &length), 0);
        bound = {AF_INET, address.sin_port, static_cast<std::uint32_t>(address.sin_addr.s_addr), {}};
        return number;
    }

    AddressRecord address_, refusing_;
    NativeSocket listener_, refuser_, connection_ = None;
};

} // namespace tarnwick::test

#pragma once

// A peer on loopback, driven by the test itself: the same calls on Linux and Windows.

#include "platform/Services.h"

#include <gtest/gtest.h>

#ifdef _WIN32
#include <winsock2.h>
#else
#include <arpa/inet.h>
#include <cerrno>
#include <sys/socket.h>
#include <unistd.h>
#endif

#include <algorithm>
#include <chrono>
#include <string>
#include <utility>

namespace tarnwick::test {

#ifdef _WIN32
using NativeSocket = SOCKET;
using NativeLength = int;
inline void CloseNative(NativeSocket socket) { closesocket(socket); }
#else
using NativeSocket = int;
using NativeLength = socklen_t;
inline void CloseNative(NativeSocket socket) { close(socket); }
#endif

class LoopbackPeer {
public:
    LoopbackPeer() : listener_(Bound(address_)), refuser_(Bound(refusing_)) { EXPECT_EQ(listen(listener_, 16), 0); }
    ~LoopbackPeer() {
        Hang();
        CloseNative(listener_);
        CloseNative(refuser_);
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
        const auto size = static_cast<NativeLength>(text.size());
        EXPECT_EQ(send(connection_, text.data(), size, 0), static_cast<int>(text.size()));
    }
    // What arrives next; "dropped" when the connection has been.
    std::string Hear() const {
        char buffer[100];
        const auto got = recv(connection_, buffer, sizeof buffer, 0);
        return got < 0 ? "dropped" : std::string(buffer, static_cast<std::size_t>(got));
    }
    void Hang() {
        if (connection_ != None)
            CloseNative(std::exchange(connection_, None));
    }
    void Reset() {
        const linger drop = {1, 0};
        setsockopt(connection_, SOL_SOCKET, SO_LINGER, reinterpret_cast<const char*>(&drop), sizeof drop);
        Hang();
    }

private:
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
        NativeLength length = sizeof address;
        EXPECT_EQ(bind(number, reinterpret_cast<sockaddr*>(&address), length), 0);
        EXPECT_EQ(getsockname(number, reinterpret_cast<sockaddr*>(&address), &length), 0);
        bound = {AF_INET, address.sin_port, static_cast<std::uint32_t>(address.sin_addr.s_addr), {}};
        return number;
    }

    AddressRecord address_;
    AddressRecord refusing_;
    NativeSocket listener_;
    NativeSocket refuser_;
    NativeSocket connection_ = None;
};

} // namespace tarnwick::test

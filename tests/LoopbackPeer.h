#pragma once

// A peer on loopback, driven by the test itself: the same calls on Linux and Windows.

#include "system_support.h"

#include <gtest/gtest.h>

#include <utility>

namespace tarnwick::test {

class LoopbackPeer {
public:
    LoopbackPeer() {
        services().Sockets.Startup(WinsockVersion); // on Windows the peer's own sockets need it, too
        listener_ = socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
        sockaddr_in own = {};
        own.sin_family = AF_INET;
        own.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        auto* const address = reinterpret_cast<sockaddr*>(&own);
        socklen_t length = sizeof own;
        EXPECT_EQ(bind(listener_, address, length), 0);
        EXPECT_EQ(listen(listener_, 16), 0);
        EXPECT_EQ(getsockname(listener_, address, &length), 0);
        address_ = {AF_INET, own.sin_port, htonl(INADDR_LOOPBACK), {}};
    }
    ~LoopbackPeer() {
        HangUp();
        closesocket(listener_);
    }
    LoopbackPeer(const LoopbackPeer&) = delete;
    LoopbackPeer& operator=(const LoopbackPeer&) = delete;

    AddressRecord Address() const { return address_; }
    AddressRecord Refusing() const { return {AF_INET, address_.Port, htonl(INADDR_LOOPBACK + 1), {}}; }

    void Accept() {
        HangUp();
        connection_ = accept(listener_, nullptr, nullptr);
    }
    void Send(const std::string& text) const {
        EXPECT_GT(send(connection_, text.data(), static_cast<socklen_t>(text.size()), 0), 0);
    }
    // What arrives next.
    std::string Receive() const {
        char bytes[100] = {};
        EXPECT_GT(recv(connection_, bytes, sizeof bytes - 1, 0), 0);
        return bytes;
    }
    void HangUp() { closesocket(std::exchange(connection_, None)); }
    void Reset() {
        const linger drop = {1, 0};
        setsockopt(connection_, SOL_SOCKET, SO_LINGER, reinterpret_cast<const char*>(&drop), sizeof drop);
        HangUp();
    }

private:
    using NativeSocket = decltype(socket(0, 0, 0));
    static constexpr NativeSocket None = static_cast<NativeSocket>(-1);

    AddressRecord address_;
    NativeSocket listener_ = None, connection_ = None;
};

} // namespace tarnwick::test

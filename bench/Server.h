#pragma once

// The far side of the probe's measurements, a process of its own.

#include "servers_support.h"

#include <memory>

namespace tarnwick::bench {

// The request that both the probe and the floor send, but for the host.
inline const std::string Request =
    "GET / HTTP/1.0\r\nHost: 127.0.0.1\r\nUser-Agent: Tarnwick v.3.00\r\nAccept: *.*, */*\r\n\r\n";

class ServerProcess {
public:
    // Answers each request with a small page; every `big`-th (0: none) with 50 MB, or as much as the peer takes.
    explicit ServerProcess(int big = 0) {
        if (listen(bound_.Socket, SOMAXCONN) != 0)
            throw std::runtime_error("can't listen");
        child_ = fork();
        if (child_ == 0) {
            prctl(PR_SET_PDEATHSIG, SIGKILL);
            Serve(big);
        }
    }
    ~ServerProcess() {
        kill(child_, SIGKILL);
        waitpid(child_, nullptr, 0);
    }
    ServerProcess(const ServerProcess&) = delete;
    ServerProcess& operator=(const ServerProcess&) = delete;

    std::uint16_t Port() const { return bound_.Port; }
    std::string Url() const { return "http://127.0.0.1:" + std::to_string(Port()) + "/"; }

private:
    [[noreturn]] void Serve(int big) const {
        constexpr std::size_t bigBytes = 50'000'000;
        const std::string page = "HTTP/1.0 200 OK\r\nContent-Type: text/html\r\n\r\n<html><p>Good</p></html>\r\n";
        const std::string block(1 << 16, 'x');
        std::array<char, 4096> request; // NOLINT: filled by recv()
        for (int number = 1;; ++number) {
            const test::Descriptor peer(accept4(bound_.Socket, nullptr, nullptr, SOCK_CLOEXEC));
            if (recv(peer, request.data(), request.size(), 0) <= 0)
                continue;
            bool takes = send(peer, page.data(), page.size(), MSG_NOSIGNAL) > 0;
            for (std::size_t sent = 0; big > 0 && number % big == 0 && takes && sent < bigBytes; sent += block.size())
                takes = send(peer, block.data(), block.size(), MSG_NOSIGNAL) > 0;
        }
    }

    test::BoundPort bound_;
    pid_t child_ = 0;
};

// The least that a probe of one link can do: connect, ask, read once, drop.
inline void BareProbe(std::uint16_t port) {
    const test::Descriptor socket = test::TcpSocket();
    const linger drop = {1, 0};
    setsockopt(socket, SOL_SOCKET, SO_LINGER, &drop, sizeof drop);
    std::array<char, 16364> reply; // NOLINT: filled by recv()
    if (!test::ConnectTo(socket, port) || send(socket, Request.data(), Request.size(), MSG_NOSIGNAL) <= 0 ||
        recv(socket, reply.data(), reply.size(), 0) <= 0)
        throw std::runtime_error("the bare loop gets no reply");
}

} // namespace tarnwick::bench

#include "platform/posix/PosixLookup.h"

#include <algorithm>
#include <chrono>
#include <cstring>
#include <netdb.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <system_error>
#include <thread>

namespace tarnwick {

namespace {

std::string FirstAddress(const std::string& name) {
    addrinfo hints = {};
    hints.ai_family = AF_INET;
    hints.ai_socktype = SOCK_STREAM;
    addrinfo* found = nullptr;
    if (getaddrinfo(name.c_str(), nullptr, &hints, &found) != 0 || found == nullptr)
        return {};
    sockaddr_in first = {};
    std::memcpy(&first, found->ai_addr, std::min<std::size_t>(sizeof first, found->ai_addrlen));
    freeaddrinfo(found);
    return {reinterpret_cast<const char*>(&first.sin_addr), sizeof first.sin_addr};
}

} // namespace

std::shared_ptr<HostLookup> PosixLookup::Start(const std::string& name) {
    auto lookUp = std::make_shared<PosixLookup>();
    try {
        std::thread([lookUp, name] { lookUp->Run(name); }).detach();
    } catch (const std::system_error&) {
        return nullptr;
    }
    return lookUp;
}

void PosixLookup::Run(const std::string& name) {
    std::string address = FirstAddress(name);
    const std::lock_guard lock(mutex_);
    address_ = std::move(address);
    ended_ = true;
    change_.notify_all();
}

bool PosixLookup::Wait(std::int64_t ms) {
    std::unique_lock lock(mutex_);
    return change_.wait_for(lock, std::chrono::milliseconds(ms), [this] { return ended_; });
}

} // namespace tarnwick

#pragma once

#include "services/Services.h"

#include <unordered_map>

namespace tarnwick {

// Windows Sockets 1.1. The system posts a socket's events to its window by itself.
class Win32Sockets final : public SocketService {
public:
    std::int32_t Startup(std::uint16_t version) override;
    std::int32_t Cleanup() override;

    SocketNumber Open(std::int32_t family, std::int32_t type, std::int32_t protocol) override;
    std::int32_t SetOption(SocketNumber socket, std::int32_t level, std::int32_t option,
                           const LingerRecord& value) override;
    std::int32_t GetOption(SocketNumber socket, std::int32_t level, std::int32_t option, LingerRecord& value,
                           std::int32_t& length) override;
    std::int32_t AsyncSelect(SocketNumber socket, WindowHandle window, std::uint32_t message,
                             std::int32_t mask) override;
    std::int32_t Connect(SocketNumber socket, const AddressRecord& address) override;
    std::int32_t Send(SocketNumber socket, const std::string& bytes) override;
    std::int32_t Receive(SocketNumber socket, std::string& buffer) override;
    std::int32_t Close(SocketNumber socket) override;

    std::uint16_t HostToNetwork(std::uint16_t port) override;
    std::uint32_t AddressFromText(const std::string& text) override;
    std::shared_ptr<HostLookup> LookUp(const std::string& name) override;
    std::string NameOfHost(std::uint32_t address) override;
    std::int32_t LocalName(std::string& name) override;

private:
    // Who gets a socket's events, and by which message; 0: nobody.
    struct Selection {
        WindowHandle Window = 0;
        std::uint32_t Message = 0;
    };
    std::unordered_map<SocketNumber, Selection> open_;
};

} // namespace tarnwick

#pragma once

#include "services/Services.h"
#include "window/MessageLoop.h"

#include <cstdint>
#include <optional>
#include <unordered_map>

namespace tarnwick {

// Windows Sockets 1.1 with WSAAsyncSelect on sockets that never block and one epoll descriptor. epoll reports a change
// once: with a READ that nobody has answered by Receive(), and after its CLOSE, a socket costs nothing.
class PosixSockets final : public SocketService, public EventSource {
public:
    explicit PosixSockets(MessageLoop& loop);
    ~PosixSockets() override;
    PosixSockets(const PosixSockets&) = delete;
    PosixSockets& operator=(const PosixSockets&) = delete;

    // Becomes readable when Collect() has something to do.
    int Descriptor() const { return epoll_; }
    void Collect() override;
    void Wait(std::optional<std::int64_t> ms) override;

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
    enum class Phase { Unconnected, Connecting, Connected, Finished };

    struct Socket {
        WindowHandle Window = 0; // who gets the events, and by which message; 0: nobody
        std::uint32_t Message = 0;
        std::int32_t Mask = 0;
        Phase State = Phase::Unconnected;
        int Error = 0;            // errno that a call has met and that is still to be reported
        bool Watched = false;     // epoll knows the socket
        bool ReadTold = false;    // a READ that Receive() hasn't answered yet
        bool Received = false;    // something has been read, or has been tried to
        std::uint32_t Seen = 0;   // what epoll has reported of it
        std::uint32_t Serial = 0; // sets it apart from an earlier one of the same number
    };

    Socket* Find(SocketNumber number);
    void Watch(SocketNumber number, Socket& socket);
    void Post(SocketNumber number, const Socket& socket, std::int32_t event, int error) const;
    void Fetch(int ms);
    void Handle(std::uint64_t key, std::uint32_t events);
    void FinishConnect(SocketNumber number, Socket& socket);
    void TellArrival(SocketNumber number, Socket& socket);
    void TellClose(SocketNumber number, Socket& socket, int error);

    MessageLoop& loop_;
    const int epoll_;
    std::unordered_map<SocketNumber, Socket> sockets_;
    std::uint32_t lastSerial_ = 0;
    bool fetched_ = false; // by Wait(), for the next Collect()
};

} // namespace tarnwick

#include "win32_support.h"

namespace tarnwick::test {
namespace {

using namespace std::string_literals;

constexpr std::uint32_t SocketMessage = 1025;
constexpr std::int32_t Mask = 51;

struct Event {
    SocketNumber Socket;
    std::int32_t Kind;
    std::int32_t Error;
    bool operator==(const Event&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Event& event) {
    return out << "socket " << event.Socket << " event " << event.Kind << " error " << event.Error;
}

using Events = std::vector<Event>;
Events events;

std::int32_t Record(WindowHandle, std::uint32_t message, std::int32_t first, std::int32_t second) {
    if (message == SocketMessage)
        events.push_back({first, second & 0xFFFF, second >> 16});
    return 0;
}

// A server on loopback, driven by the test itself.
class Server {
public:
    Server() : listener_(socket(AF_INET, SOCK_STREAM, IPPROTO_TCP)) {
        sockaddr_in address = {};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        int length = sizeof address;
        EXPECT_EQ(bind(listener_, reinterpret_cast<sockaddr*>(&address), length), 0);
        EXPECT_EQ(listen(listener_, 16), 0);
        EXPECT_EQ(getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &length), 0);
        Address = {AF_INET, address.sin_port, static_cast<std::uint32_t>(address.sin_addr.s_addr), {}};
    }
    ~Server() {
        Hang();
        closesocket(listener_);
    }
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    void Accept() { connection_ = accept(listener_, nullptr, nullptr); }
    void Say(const std::string& text) const { send(connection_, text.data(), static_cast<int>(text.size()), 0); }
    std::string Hear() const {
        char buffer[100];
        const int got = recv(connection_, buffer, sizeof buffer, 0);
        return std::string(buffer, static_cast<std::size_t>(std::max(0, got)));
    }
    void Hang() {
        if (connection_ != INVALID_SOCKET)
            closesocket(connection_);
        connection_ = INVALID_SOCKET;
    }

    AddressRecord Address;

private:
    SOCKET listener_;
    SOCKET connection_ = INVALID_SOCKET;
};

class Owner : public Window {};

class Win32SocketsTest : public testing::Test {
protected:
    Win32SocketsTest() {
        events.clear();
        own_ = machine_.Windows.InstallProcedure(owner_->Handle(), Record);
        EXPECT_EQ(sockets_.Startup(257), 0);
    }
    ~Win32SocketsTest() override {
        machine_.Windows.RestoreProcedure(owner_->Handle(), own_);
        sockets_.Cleanup();
    }

    SocketNumber Start(const AddressRecord& address) {
        const SocketNumber number = sockets_.Open(2, 1, 6);
        EXPECT_GT(number, 0);
        EXPECT_LE(number, 32767);
        const LingerRecord linger{1, 0};
        EXPECT_EQ(sockets_.SetOption(number, 65535, 128, linger), 0);
        LingerRecord got;
        std::int32_t length = sizeof got;
        EXPECT_EQ(sockets_.GetOption(number, 65535, 128, got, length), 0);
        EXPECT_EQ(got.OnOff, 1);
        EXPECT_EQ(sockets_.AsyncSelect(number, owner_->Handle(), SocketMessage, Mask), 0);
        EXPECT_EQ(sockets_.Connect(number, address), -1);
        EXPECT_EQ(events, Events{}) << "told from within a call";
        return number;
    }

    SocketNumber StartConnected(Server& server) {
        const SocketNumber number = Start(server.Address);
        server.Accept();
        EXPECT_EQ(Pump(2), (Events{{number, FD_CONNECT, 0}, {number, FD_WRITE, 0}}));
        return number;
    }

    Events Pump(std::size_t count) {
        machine_.PumpUntil([&] { return events.size() >= count; });
        return std::exchange(events, {});
    }

    std::string Receive(SocketNumber number, std::size_t size = 100) {
        std::string buffer(size, '\0');
        const std::int32_t got = sockets_.Receive(number, buffer);
        return got < 0 ? "failed" : buffer.substr(0, static_cast<std::size_t>(got));
    }

    WindowObject<Owner> owner_; // outlives the machine, which gives its window up
    Win32Machine machine_;
    Win32Sockets& sockets_ = machine_.Sockets;
    PreviousProcedure own_ = 0;
};

TEST_F(Win32SocketsTest, PlainReply) {
    Server server;
    const SocketNumber number = StartConnected(server);
    EXPECT_EQ(sockets_.Send(number, "GET"), 3);
    EXPECT_EQ(server.Hear(), "GET");
    server.Say("reply");
    EXPECT_EQ(Pump(1), (Events{{number, FD_READ, 0}}));
    EXPECT_EQ(Receive(number, 3), "rep");
    EXPECT_EQ(Pump(1), (Events{{number, FD_READ, 0}}));
    server.Hang();
    EXPECT_EQ(Receive(number), "ly");
    EXPECT_EQ(Pump(1), (Events{{number, FD_CLOSE, 0}}));
    EXPECT_EQ(sockets_.Close(number), 0);
}

TEST_F(Win32SocketsTest, PeerThatOnlyClosesAndAPortThatRefuses) {
    {
        Server server;
        const SocketNumber number = StartConnected(server);
        server.Hang();
        EXPECT_EQ(Pump(1), (Events{{number, FD_CLOSE, 0}}));
        sockets_.Close(number);
    }
    AddressRecord closed;
    { closed = Server().Address; }
    const SocketNumber number = Start(closed);
    EXPECT_EQ(Pump(1), (Events{{number, FD_CONNECT, WSAECONNREFUSED}}));
    sockets_.Close(number);
}

// The message is in the queue before the close; only then is it looked for.
TEST_F(Win32SocketsTest, NothingOfAClosedSocketArrives) {
    Server server;
    const SocketNumber number = StartConnected(server);
    server.Say("late");
    const HWND window = WindowOf(owner_->Handle());
    MSG queued;
    machine_.PumpUntil([&] {
        return PeekMessageW(&queued, window, SocketMessage, SocketMessage, PM_NOREMOVE) != 0 || !events.empty();
    });
    events.clear();
    PostMessageW(window, SocketMessage, static_cast<WPARAM>(number), FD_READ);
    PostMessageW(window, SocketMessage, static_cast<WPARAM>(number + 4), FD_WRITE);
    PostMessageW(window, SocketMessage, static_cast<WPARAM>(number + 4), FD_READ);
    EXPECT_EQ(sockets_.Close(number), 0);
    const Events others = {{number + 4, FD_WRITE, 0}, {number + 4, FD_READ, 0}};
    EXPECT_EQ(Pump(2), others) << "what is queued for others stays, in order";
    EXPECT_EQ(sockets_.Close(number), -1);
    EXPECT_EQ(sockets_.Close(0), -1);
    EXPECT_EQ(sockets_.Close(-1), -1);
}

TEST_F(Win32SocketsTest, NamesAndNumbers) {
    EXPECT_EQ(sockets_.HostToNetwork(80), 0x5000);
    EXPECT_EQ(sockets_.HostToNetwork(-1), 0xFFFF);
    EXPECT_EQ(sockets_.AddressFromText("127.0.0.1"), 0x0100007FU);
    EXPECT_EQ(sockets_.AddressFromText("host"), 0xFFFFFFFFU);
    const auto lookUp = sockets_.LookUp("127.0.0.1");
    EXPECT_TRUE(lookUp->Wait(20000));
    EXPECT_EQ(lookUp->Address(), "\x7F\0\0\x01"s);
    std::string name;
    EXPECT_EQ(sockets_.LocalName(name), 0);
    EXPECT_EQ(name.find('\0'), std::string::npos);
}

} // namespace
} // namespace tarnwick::test

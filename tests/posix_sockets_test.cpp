#include "platform/posix/PosixClock.h"
#include "platform/posix/PosixSockets.h"
#include "window/Window.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include <arpa/inet.h>
#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace tarnwick::test {
namespace {

constexpr std::uint32_t SocketMessage = 1025;
constexpr std::int32_t Mask = 51;
constexpr std::int32_t Read = 1;
constexpr std::int32_t Write = 2;
constexpr std::int32_t Connect = 16;
constexpr std::int32_t Close = 32;

struct Event {
    SocketNumber Socket;
    std::int32_t Kind;
    std::int32_t Error;
    bool operator==(const Event&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Event& event) {
    return out << "socket " << event.Socket << " event " << event.Kind << " error " << event.Error;
}

std::vector<Event> events;

std::int32_t Record(WindowHandle, std::uint32_t message, std::int32_t first, std::int32_t second) {
    if (message == SocketMessage)
        events.push_back({first, second & 0xFFFF, second >> 16});
    return 0;
}

// A server on loopback, driven by the test itself.
class Server {
public:
    explicit Server(int backlog = 16) {
        sockaddr_in address = {};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t length = sizeof address;
        EXPECT_EQ(bind(listener_, reinterpret_cast<sockaddr*>(&address), length), 0);
        EXPECT_EQ(listen(listener_, backlog), 0);
        EXPECT_EQ(getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &length), 0);
        Address = {2, address.sin_port, address.sin_addr.s_addr, {}};
    }
    ~Server() {
        Hang();
        close(listener_);
    }
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    void Accept() { connection_ = accept(listener_, nullptr, nullptr); }
    void Say(const std::string& text) const {
        EXPECT_EQ(send(connection_, text.data(), text.size(), 0), static_cast<ssize_t>(text.size()));
    }
    // What arrives next; the error's number behind "error " when the connection was dropped.
    std::string Hear() const {
        char buffer[100];
        const ssize_t got = recv(connection_, buffer, sizeof buffer, 0);
        return got < 0 ? "error " + std::to_string(errno) : std::string(buffer, static_cast<std::size_t>(got));
    }
    void Hang() {
        if (connection_ >= 0)
            close(connection_);
        connection_ = -1;
    }
    void Reset() {
        const linger drop = {1, 0};
        setsockopt(connection_, SOL_SOCKET, SO_LINGER, &drop, sizeof drop);
        Hang();
    }

    AddressRecord Address;

private:
    const int listener_ = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    int connection_ = -1;
};

class PosixSocketsTest : public testing::Test {
protected:
    PosixSocketsTest() {
        events.clear();
        window_ = loop_.Add(*object_);
        loop_.Install(window_, Record);
        EXPECT_EQ(sockets_.Startup(257), 0);
    }

    SocketNumber Start(const AddressRecord& address) {
        const SocketNumber number = sockets_.Open(2, 1, 6);
        EXPECT_GT(number, 0);
        EXPECT_EQ(sockets_.SetOption(number, 65535, 128, {1, 0}), 0);
        EXPECT_EQ(sockets_.AsyncSelect(number, window_, SocketMessage, Mask), 0);
        EXPECT_EQ(sockets_.Connect(number, address), -1);
        EXPECT_FALSE(loop_.HasMessages()) << "told from within a call";
        return number;
    }

    // Starts a link and takes the two events of a connection that stands.
    SocketNumber StartConnected(Server& server) {
        const SocketNumber number = Start(server.Address);
        server.Accept();
        EXPECT_EQ(Pump(2), (std::vector<Event>{{number, Connect, 0}, {number, Write, 0}}));
        return number;
    }

    // Pumps until `count` more events have come, and gives what came.
    std::vector<Event> Pump(std::size_t count) {
        events.clear();
        const std::int64_t end = clock_.Now() + 10000;
        while (events.size() < count && clock_.Now() < end) {
            sockets_.Wait(end - clock_.Now());
            sockets_.Collect();
            loop_.DispatchMessages();
        }
        return events;
    }

    // True when nothing is to be collected: a front end would sleep now.
    bool IsQuiet() {
        pollfd watched = {sockets_.Descriptor(), POLLIN, 0};
        return !loop_.HasMessages() && poll(&watched, 1, 30) == 0;
    }

    std::string Receive(SocketNumber number, std::size_t size = 100) {
        std::string buffer(size, '\0');
        const std::int32_t got = sockets_.Receive(number, buffer);
        EXPECT_EQ(buffer.size(), size);
        return got < 0 ? "failed" : buffer.substr(0, static_cast<std::size_t>(got));
    }

    PosixClock clock_;
    MessageLoop loop_{clock_};
    PosixSockets sockets_{loop_};
    std::shared_ptr<Window> object_ = std::make_shared<Window>();
    WindowHandle window_ = 0;
};

TEST_F(PosixSocketsTest, PlainReply) {
    Server server;
    const SocketNumber number = StartConnected(server);
    EXPECT_EQ(sockets_.Send(number, "GET"), 3);
    EXPECT_EQ(sockets_.Send(number, ""), 0);
    EXPECT_EQ(server.Hear(), "GET");
    server.Say("reply");
    server.Hang();
    EXPECT_EQ(Pump(1), (std::vector<Event>{{number, Read, 0}}));
    EXPECT_EQ(Receive(number), "reply");
    EXPECT_EQ(Pump(1), (std::vector<Event>{{number, Close, 0}}));
    EXPECT_TRUE(IsQuiet()) << "a finished socket costs time";
    EXPECT_EQ(sockets_.Close(number), 0);
}

TEST_F(PosixSocketsTest, PeerThatOnlyCloses) {
    Server server;
    const SocketNumber number = Start(server.Address);
    server.Accept();
    server.Hang();
    EXPECT_EQ(Pump(3), (std::vector<Event>{{number, Connect, 0}, {number, Write, 0}, {number, Close, 0}}));
    EXPECT_EQ(Receive(number), "");
    EXPECT_TRUE(IsQuiet());
}

TEST_F(PosixSocketsTest, OneReadUntilReceiveAndNoCloseWhileDataIsUnread) {
    Server server;
    const SocketNumber number = StartConnected(server);
    server.Say("abcd");
    EXPECT_EQ(Pump(1), (std::vector<Event>{{number, Read, 0}}));
    server.Say("efgh");
    server.Hang();
    EXPECT_TRUE(IsQuiet());
    EXPECT_EQ(Receive(number, 3), "abc");
    EXPECT_EQ(Pump(1), (std::vector<Event>{{number, Read, 0}}));
    EXPECT_TRUE(IsQuiet());
    EXPECT_EQ(Receive(number, 5), "defgh");
    EXPECT_EQ(Pump(1), (std::vector<Event>{{number, Close, 0}}));
}

TEST_F(PosixSocketsTest, RefusedPortIsAFailedConnectAndNothingElse) {
    AddressRecord address;
    { address = Server().Address; }
    const SocketNumber number = Start(address);
    EXPECT_EQ(Pump(1), (std::vector<Event>{{number, Connect, 10061}}));
    EXPECT_TRUE(IsQuiet());
    EXPECT_EQ(sockets_.Send(number, "x"), -1);
}

TEST_F(PosixSocketsTest, ConnectThatFailsAtOnceIsToldFromThePump) {
    Server server;
    AddressRecord address = server.Address;
    address.Family = 99;
    const SocketNumber number = Start(address);
    EXPECT_EQ(Pump(1), (std::vector<Event>{{number, Connect, 10047}}));
    EXPECT_TRUE(IsQuiet());
}

TEST_F(PosixSocketsTest, ResetIsNeverAFailedConnect) {
    for (const bool late : {true, false}) {
        Server server;
        SocketNumber number = 0;
        std::vector<Event> seen;
        if (late) {
            number = Start(server.Address);
            server.Accept();
            server.Reset();
            seen = Pump(3);
        } else {
            number = StartConnected(server);
            server.Reset();
            seen = {{number, Connect, 0}, {number, Write, 0}, Pump(1).at(0)};
        }
        EXPECT_EQ(seen, (std::vector<Event>{{number, Connect, 0}, {number, Write, 0}, {number, Close, 10054}})) << late;
        EXPECT_TRUE(IsQuiet());
        sockets_.Close(number);
    }
}

TEST_F(PosixSocketsTest, ResetThatACallMeetsFirstIsStillToldByTheClose) {
    Server server;
    SocketNumber number = StartConnected(server);
    server.Reset();
    EXPECT_EQ(sockets_.Send(number, "x"), -1);
    EXPECT_EQ(sockets_.Send(number, "x"), -1); // by now the system would send a signal
    EXPECT_EQ(Pump(1), (std::vector<Event>{{number, Close, 10054}}));
    sockets_.Close(number);

    number = StartConnected(server);
    server.Reset();
    EXPECT_EQ(Receive(number), "failed");
    EXPECT_EQ(Pump(1), (std::vector<Event>{{number, Close, 10054}}));
    sockets_.Close(number);

    number = Start(server.Address);
    server.Accept();
    server.Reset();
    EXPECT_EQ(sockets_.Send(number, "x"), -1);
    EXPECT_EQ(Pump(3), (std::vector<Event>{{number, Connect, 0}, {number, Write, 0}, {number, Close, 10054}}));
}

TEST_F(PosixSocketsTest, DataInFrontOfAResetIsToldFirst) {
    Server server;
    const SocketNumber number = StartConnected(server);
    server.Say("abc");
    server.Reset();
    EXPECT_EQ(Pump(1), (std::vector<Event>{{number, Read, 0}}));
    EXPECT_EQ(Receive(number), "abc");
    EXPECT_EQ(Pump(1), (std::vector<Event>{{number, Close, 10054}}));
}

TEST_F(PosixSocketsTest, SilentPeerAndConnectionThatNeverStandsCostNothing) {
    Server server;
    StartConnected(server);
    EXPECT_TRUE(IsQuiet());

    Server full(0);
    const SocketNumber filler = Start(full.Address);
    EXPECT_EQ(Pump(2).size(), 2U);
    const SocketNumber waiting = Start(full.Address);
    EXPECT_TRUE(IsQuiet());
    EXPECT_EQ(sockets_.Close(waiting), 0);
    EXPECT_EQ(sockets_.Close(filler), 0);
}

TEST_F(PosixSocketsTest, NothingOfAClosedSocketIsDelivered) {
    Server server;
    const SocketNumber first = Start(server.Address);
    server.Accept();
    server.Say("x");
    sockets_.Wait(10000);
    sockets_.Collect();
    ASSERT_TRUE(loop_.HasMessages());
    EXPECT_EQ(sockets_.Close(first), 0);
    EXPECT_FALSE(loop_.HasMessages());
    EXPECT_TRUE(IsQuiet());
    EXPECT_EQ(server.Hear(), "error " + std::to_string(ECONNRESET)) << "linger of 0 seconds drops the connection";

    // The next socket has the same number; all that comes is its own.
    server.Hang();
    const SocketNumber second = Start(server.Address);
    EXPECT_EQ(second, first);
    EXPECT_EQ(Pump(2), (std::vector<Event>{{second, Connect, 0}, {second, Write, 0}}));
    EXPECT_TRUE(IsQuiet());
    EXPECT_EQ(sockets_.Close(second), 0);
    EXPECT_EQ(sockets_.Close(second), -1);
}

TEST_F(PosixSocketsTest, CopyOfASocketInAChildTellsNothingBehindTheClose) {
    Server server;
    const SocketNumber number = StartConnected(server);
    const int copy = fcntl(number, F_DUPFD_CLOEXEC, 0);
    EXPECT_EQ(sockets_.Close(number), 0);
    server.Say("x");
    EXPECT_TRUE(IsQuiet());
    close(copy);
}

TEST_F(PosixSocketsTest, ForeignDescriptorsAreNeverTouched) {
    int pipes[2];
    ASSERT_EQ(pipe(pipes), 0);
    for (const SocketNumber foreign : {pipes[0], pipes[1], 0, -1, 32000}) {
        EXPECT_EQ(sockets_.Close(foreign), -1);
        EXPECT_EQ(sockets_.Send(foreign, "x"), -1);
        EXPECT_EQ(Receive(foreign), "failed");
        EXPECT_EQ(sockets_.AsyncSelect(foreign, window_, SocketMessage, Mask), -1);
        EXPECT_EQ(sockets_.Connect(foreign, {}), -1);
    }
    EXPECT_EQ(write(pipes[1], "x", 1), 1);
    close(pipes[0]);
    close(pipes[1]);
    EXPECT_TRUE(IsQuiet());
}

TEST_F(PosixSocketsTest, NumbersOfWindowsAreTranslatedAndOthersFail) {
    EXPECT_EQ(sockets_.Open(10, 1, 6), -1);
    EXPECT_EQ(sockets_.Open(2, 2, 6), -1);
    EXPECT_EQ(sockets_.Open(2, 1, 17), -1);
    const SocketNumber number = sockets_.Open(2, 1, 6);
    ASSERT_GT(number, 2);
    EXPECT_NE(fcntl(number, F_GETFD) & FD_CLOEXEC, 0);
    LingerRecord record = {9, 9};
    std::int32_t length = 0;
    EXPECT_EQ(sockets_.SetOption(number, 65535, 128, {1, 7}), 0);
    EXPECT_EQ(sockets_.GetOption(number, 65535, 128, record, length), 0);
    EXPECT_EQ(record.OnOff, 1);
    EXPECT_EQ(record.Seconds, 7);
    EXPECT_EQ(length, 4);
    EXPECT_EQ(sockets_.SetOption(number, SOL_SOCKET, 128, {1, 0}), -1);
    EXPECT_EQ(sockets_.GetOption(number, 65535, SO_LINGER, record, length), -1);
    EXPECT_EQ(sockets_.Startup(0), 10092);
    EXPECT_EQ(sockets_.Cleanup(), 0);
    EXPECT_EQ(fcntl(number, F_GETFD), -1) << "the end of the network section closes what is open";
}

TEST_F(PosixSocketsTest, AddressesAndNames) {
    const struct {
        std::string Text;
        std::uint32_t Address; // host order
    } rows[] = {
        {"127.0.0.1", 0x7F000001},
        {"1", 1},
        {"127.1", 0x7F000001},
        {"0x7f.1", 0x7F000001},
        {"1.2.3.4 x", 0x01020304},
        {" ", 0},
        {"", 0xFFFFFFFF},
        {"256.1.1.1", 0xFFFFFFFF},
        {"1.2.3.4x", 0xFFFFFFFF},
        {"localhost", 0xFFFFFFFF},
        {"1.2.3.4.5", 0xFFFFFFFF},
        {std::string("1\0", 2), 0xFFFFFFFF},
        {"255.255.255.255", 0xFFFFFFFF},
    };
    for (const auto& row : rows)
        EXPECT_EQ(sockets_.AddressFromText(row.Text), htonl(row.Address)) << row.Text;

    // Names that are refused before anybody is asked.
    for (const std::string& name : {std::string(), std::string("."), std::string("bad..name"), std::string(".name"),
                                    std::string("name.."), std::string(64, 'a') + ".example", std::string(127, 'a'),
                                    std::string("local\0host", 10), std::string("local host")})
        EXPECT_EQ(sockets_.AddressOfHost(name), "") << name;
    EXPECT_EQ(sockets_.AddressOfHost("localhost"), std::string("\x7F\0\0\x01", 4));

    EXPECT_EQ(sockets_.HostToNetwork(80), htons(80));
    EXPECT_EQ(sockets_.HostToNetwork(-1), 0xFFFF);
    EXPECT_EQ(sockets_.HostToNetwork(65536 + 80), htons(80));
}

} // namespace
} // namespace tarnwick::test

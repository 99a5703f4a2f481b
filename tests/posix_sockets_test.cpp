#include "platform/SteadyClock.h"
#include "platform/posix/PosixSockets.h"
#include "servers_support.h"
#include "window/Window.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <memory>
#include <optional>

namespace tarnwick::test {
namespace {

using namespace std::string_literals;

constexpr std::uint32_t SocketMessage = 1025;
constexpr std::int32_t Mask = 51;
constexpr std::int32_t Read = 1;
constexpr std::int32_t Write = 2;
constexpr std::int32_t Connect = 16;
constexpr std::int32_t Close = 32;

using Event = std::array<std::int32_t, 3>; // socket, kind, error
using Events = std::vector<Event>;

Events events;

std::int32_t NoteEvent(WindowHandle, std::uint32_t message, std::int32_t first, std::int32_t second) {
    if (message == SocketMessage)
        events.push_back({first, second & 0xFFFF, second >> 16});
    return 0;
}

// A server on loopback, driven by the test itself.
class Server {
public:
    Server() { EXPECT_EQ(listen(bound_.Socket, 16), 0); }

    AddressRecord Address() const { return {2, htons(bound_.Port), htonl(INADDR_LOOPBACK), {}}; }
    void Accept() { connection_.emplace(accept(bound_.Socket, nullptr, nullptr)); }
    void Say(const std::string& text) const {
        EXPECT_EQ(send(*connection_, text.data(), text.size(), 0), static_cast<ssize_t>(text.size()));
    }
    // What arrives next; the error's number behind "error " when the connection was dropped.
    std::string Hear() const {
        char buffer[100];
        const ssize_t got = recv(*connection_, buffer, sizeof buffer, 0);
        return got < 0 ? "error " + std::to_string(errno) : std::string(buffer, static_cast<std::size_t>(got));
    }
    void Hang() { connection_.reset(); }
    void Reset() {
        DropAtClose(*connection_);
        Hang();
    }

private:
    BoundPort bound_;
    std::optional<Descriptor> connection_;
};

class PosixSocketsTest : public testing::Test {
protected:
    PosixSocketsTest() {
        events.clear();
        window_ = loop_.Add(*object_);
        loop_.Install(window_, NoteEvent);
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

    SocketNumber StartAccepted(Server& server) {
        const SocketNumber number = Start(server.Address());
        server.Accept();
        return number;
    }

    // Takes the two events of a connection that stands, too.
    SocketNumber StartConnected(Server& server) {
        const SocketNumber number = StartAccepted(server);
        EXPECT_EQ(Pump(2), (Events{{number, Connect, 0}, {number, Write, 0}}));
        return number;
    }

    // That these events come, and then nothing is left to collect: a front end would sleep.
    void ExpectLast(const Events& last) {
        EXPECT_EQ(Pump(last.size()), last);
        ExpectQuiet();
    }

    // Pumps until `count` more events have come, and gives what came.
    Events Pump(std::size_t count) {
        events.clear();
        const std::int64_t end = clock_.Now() + 10000;
        while (events.size() < count && clock_.Now() < end) {
            sockets_.Wait(end - clock_.Now());
            sockets_.Collect();
            loop_.DispatchMessages();
        }
        return events;
    }

    void ExpectQuiet() {
        pollfd watched = {sockets_.Descriptor(), POLLIN, 0};
        EXPECT_TRUE(!loop_.HasMessages() && poll(&watched, 1, 30) == 0);
    }

    std::string Receive(SocketNumber number, std::size_t size = 100) {
        std::string buffer(size, '\0');
        const std::int32_t got = sockets_.Receive(number, buffer);
        EXPECT_EQ(buffer.size(), size);
        return got < 0 ? "failed" : buffer.substr(0, static_cast<std::size_t>(got));
    }

    SteadyClock clock_;
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
    EXPECT_EQ(Pump(1), (Events{{number, Read, 0}}));
    EXPECT_EQ(Receive(number), "reply");
    ExpectLast({{number, Close, 0}});
    EXPECT_EQ(sockets_.Close(number), 0);
}

TEST_F(PosixSocketsTest, OneReadUntilReceiveAndNoCloseWhileDataIsUnread) {
    Server server;
    const SocketNumber number = StartConnected(server);
    server.Say("abcd");
    EXPECT_EQ(Pump(1), (Events{{number, Read, 0}}));
    server.Say("efgh");
    server.Hang();
    ExpectQuiet();
    EXPECT_EQ(Receive(number, 3), "abc");
    ExpectLast({{number, Read, 0}});
    EXPECT_EQ(Receive(number, 5), "defgh");
    EXPECT_EQ(Pump(1), (Events{{number, Close, 0}}));
}

TEST_F(PosixSocketsTest, FailedConnectIsToldFromThePumpAndNothingElse) {
    AddressRecord refused = Server().Address();
    AddressRecord foreign = refused;
    foreign.Family = 99;
    for (const auto& [address, error] : {std::pair{refused, 10061}, {foreign, 10047}}) {
        const SocketNumber number = Start(address);
        ExpectLast({{number, Connect, error}});
        EXPECT_EQ(sockets_.Send(number, "x"), -1);
    }
}

TEST_F(PosixSocketsTest, PeerThatOnlyClosesOrResetsIsNeverAFailedConnect) {
    Server server;
    SocketNumber number = StartAccepted(server);
    server.Hang();
    ExpectLast({{number, Connect, 0}, {number, Write, 0}, {number, Close, 0}});
    EXPECT_EQ(Receive(number), "");
    number = StartAccepted(server);
    server.Reset();
    ExpectLast({{number, Connect, 0}, {number, Write, 0}, {number, Close, 10054}});
    number = StartConnected(server);
    server.Reset();
    ExpectLast({{number, Close, 10054}});
}

TEST_F(PosixSocketsTest, ResetThatACallMeetsFirstIsStillToldByTheClose) {
    Server server;
    for (const bool sends : {true, false}) {
        const SocketNumber number = StartConnected(server);
        server.Reset();
        for (int again = 0; sends && again < 2; ++again) // the second time the system would send a signal
            EXPECT_EQ(sockets_.Send(number, "x"), -1);
        EXPECT_EQ(sends ? "failed" : Receive(number), "failed");
        ExpectLast({{number, Close, 10054}});
    }
    const SocketNumber number = StartAccepted(server);
    server.Reset();
    EXPECT_EQ(sockets_.Send(number, "x"), -1);
    ExpectLast({{number, Connect, 0}, {number, Write, 0}, {number, Close, 10054}});
}

TEST_F(PosixSocketsTest, DataInFrontOfAResetIsToldFirst) {
    Server server;
    const SocketNumber number = StartConnected(server);
    server.Say("abc");
    server.Reset();
    EXPECT_EQ(Pump(1), (Events{{number, Read, 0}}));
    EXPECT_EQ(Receive(number), "abc");
    EXPECT_EQ(Pump(1), (Events{{number, Close, 10054}}));
}

TEST_F(PosixSocketsTest, SilentPeerAndConnectionThatNeverStandsCostNothing) {
    Server server;
    StartConnected(server);
    ExpectQuiet();

    const FullListener full;
    AddressRecord address = server.Address();
    address.Port = htons(full.Port());
    const SocketNumber waiting = Start(address);
    ExpectQuiet();
    EXPECT_EQ(sockets_.Close(waiting), 0);
}

TEST_F(PosixSocketsTest, NothingOfAClosedSocketIsDelivered) {
    Server server;
    const SocketNumber first = StartAccepted(server);
    server.Say("x");
    sockets_.Wait(10000);
    sockets_.Collect();
    ASSERT_TRUE(loop_.HasMessages());
    EXPECT_EQ(sockets_.Close(first), 0);
    EXPECT_FALSE(loop_.HasMessages());
    ExpectQuiet();
    EXPECT_EQ(server.Hear(), "error " + std::to_string(ECONNRESET)) << "linger of 0 seconds drops the connection";

    // The next socket has the same number; all that comes is its own.
    server.Hang();
    const SocketNumber second = Start(server.Address());
    EXPECT_EQ(second, first);
    ExpectLast({{second, Connect, 0}, {second, Write, 0}});
    EXPECT_EQ(sockets_.Close(second), 0);
    EXPECT_EQ(sockets_.Close(second), -1);
}

TEST_F(PosixSocketsTest, CopyOfASocketInAChildTellsNothingBehindTheClose) {
    Server server;
    const SocketNumber number = StartConnected(server);
    const int copy = fcntl(number, F_DUPFD_CLOEXEC, 0);
    EXPECT_EQ(sockets_.Close(number), 0);
    server.Say("x");
    ExpectQuiet();
    close(copy);
}

TEST_F(PosixSocketsTest, ForeignDescriptorsAreNeverTouched) {
    const BoundPort other; // a socket, but not one of these
    for (const SocketNumber foreign : {static_cast<SocketNumber>(other.Socket), 0, -1, 32000}) {
        EXPECT_EQ(sockets_.Close(foreign), -1);
        EXPECT_EQ(sockets_.Send(foreign, "x"), -1);
        EXPECT_EQ(Receive(foreign), "failed");
        EXPECT_EQ(sockets_.AsyncSelect(foreign, window_, SocketMessage, Mask), -1);
        EXPECT_EQ(sockets_.Connect(foreign, {}), -1);
    }
    EXPECT_NE(fcntl(other.Socket, F_GETFD), -1);
    ExpectQuiet();
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
    EXPECT_TRUE(record.OnOff == 1 && record.Seconds == 7 && length == 4);
    EXPECT_EQ(sockets_.SetOption(number, SOL_SOCKET, 128, {1, 0}), -1);
    EXPECT_EQ(sockets_.GetOption(number, 65535, SO_LINGER, record, length), -1);
    EXPECT_EQ(sockets_.Startup(0), 10092);
    EXPECT_EQ(sockets_.Cleanup(), 0);
    EXPECT_EQ(fcntl(number, F_GETFD), -1) << "the end of the network section closes what is open";
}

TEST_F(PosixSocketsTest, AddressesAndNames) {
    const std::pair<std::string, std::uint32_t> rows[] = {{"127.0.0.1", 0x7F000001}, {"1", 1},
                                                          {"127.1", 0x7F000001},     {"0x7f.1", 0x7F000001},
                                                          {"1.2.3.4 x", 0x01020304}, {" ", 0}};
    for (const auto& [text, address] : rows)
        EXPECT_EQ(sockets_.AddressFromText(text), htonl(address)) << text;
    for (const std::string& text :
         {""s, "256.1.1.1"s, "1.2.3.4x"s, "localhost"s, "1.2.3.4.5"s, "1\0"s, "255.255.255.255"s})
        EXPECT_EQ(sockets_.AddressFromText(text), 0xFFFFFFFF) << text;

    EXPECT_EQ(sockets_.HostToNetwork(80), htons(80));
    EXPECT_EQ(sockets_.HostToNetwork(-1), 0xFFFF);
    EXPECT_EQ(sockets_.HostToNetwork(65536 + 80), htons(80));
}

} // namespace
} // namespace tarnwick::test

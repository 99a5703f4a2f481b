#include "Driver.h"

#include "probe/HostLookups.h"
#include "probe/Request.h"
#include "probe/SocketModule.h"
#include "probe/Verdict.h"
#include "probe/WinsockAPI.h"

namespace tarnwick {
namespace {

using namespace std::string_literals;

class ProbeTest : public Program {
protected:
    void SetUp() override {
        machine.Sockets.Hosts["good.example"] = {.Reply = "HTTP/1.0 200 OK\r\n\r\n"};
        machine.Sockets.Hosts["silent.example"] = {};
        Form2.Load();
    }

    Winsock& Socket() { return *Form2->SOCKET; }

    HostLookups lookUps;
};

TEST_F(ProbeTest, BuildsTheRequest) {
    LinkRecord link;
    link.Host = "a";
    link.RequestTarget = "/a b#top";
    const auto expect = [&link](bool keepAlive, bool withCredentials, const std::string& lines) {
        EXPECT_EQ(BuildRequest(link, keepAlive, withCredentials),
                  "GET /a b#top HTTP/1.0\r\nHost: a\r\nUser-Agent: Tarnwick v.3.00\r\nAccept: *.*, */*\r\n" + lines);
    };
    link.User = "u";
    expect(true, true, "Proxy-Connection: Keep-Alive\r\n\r\n");
    for (const auto& [password, encoded] :
         {std::pair{"p", "dTpw"}, {"\xFB\xFF\xBF", "dTr7/78="}, {"\xFE>", "dTr+Pg=="}}) {
        link.Password = password;
        expect(false, true, std::string("Authorization: Basic ") + encoded + "\r\n\r\n");
    }
    expect(false, false, "\r\n");
    link.User = "";
    expect(false, true, "\r\n");
}

TEST_F(ProbeTest, ReadsTheStatus) {
    EXPECT_EQ(ReplyStatus(" 403"), 403);
    // The word ends at the next blank; 4294967700 is 404 beyond 32 bits.
    for (const std::string& none : {"HTTP/1.0 404\r\nServer: x y"s, "HTTP/1.0  404 x"s, "HTTP/1.0"s, ""s,
                                    "HTTP/1.0 4294967700 x"s, "HTTP/1.0 404x "s, "a 404\0 "s})
        EXPECT_EQ(ReplyStatus(none), std::nullopt) << none;
    for (const std::int32_t passing : {0, 201, 301, 302, 400, 402, 405, 500, -404})
        EXPECT_EQ(VerdictOf(passing), nullptr) << passing;
}

TEST_F(ProbeTest, ALookUpEndsInTimeAndIsNotStartedAgainWhileItLasts) {
    machine.Sockets.LookUpMs["good.example"] = 5000;
    const std::int64_t start = machine.Clock.Now();
    for (const std::int64_t ms : {3000, 1000, -1})
        EXPECT_EQ(lookUps.AddressOf("good.example", ms), "");
    EXPECT_EQ(machine.Clock.Now() - start, 4000);
    EXPECT_EQ(lookUps.AddressOf("good.example", 3000).size(), 4U);
    EXPECT_EQ(machine.Clock.Now() - start, 5000);
    EXPECT_EQ(machine.Sockets.LookedUp.size(), 1U);
    EXPECT_EQ(lookUps.AddressOf("good.example", 1000), "");
    EXPECT_EQ(machine.Sockets.LookedUp.size(), 2U);
}

TEST_F(ProbeTest, AnAnswerThatHasComeBetweenTwoLinksIsUsed) {
    machine.Sockets.LookUpMs["good.example"] = 5000;
    EXPECT_EQ(lookUps.AddressOf("good.example", 3000), "");
    machine.Clock.Advance(9000);
    EXPECT_EQ(lookUps.AddressOf("good.example", 0).size(), 4U);
    EXPECT_EQ(machine.Sockets.LookedUp.size(), 1U);
}

TEST_F(ProbeTest, ANameWaitsForAFreePlaceAfterManyLookUpsThatNeverEnd) {
    for (int number = 0; number < 128; ++number) {
        const std::string host = "dead" + std::to_string(number);
        machine.Sockets.LookUpMs[host] = 60000;
        EXPECT_EQ(lookUps.AddressOf(host, 10), "");
    }
    EXPECT_EQ(machine.Sockets.LookedUp.size(), 64U);
    const std::int64_t start = machine.Clock.Now();
    EXPECT_EQ(lookUps.AddressOf("good.example", 50), "");
    EXPECT_EQ(machine.Clock.Now() - start, 50) << "its own time-out";
    EXPECT_EQ(lookUps.AddressOf("good.example", 70000).size(), 4U);
}

TEST_F(ProbeTest, OnlyWhatCanBeAHostNameIsLookedUp) {
    const std::string label(63, 'a'), most = label + "." + label + "." + label + ".";
    const Strings names = {"name.", label + ".example", most + std::string(61, 'a'), most + std::string(61, 'a') + "."};
    for (const std::string& name : names)
        lookUps.AddressOf(name, 1000);
    for (const std::string& name : {""s, "."s, "bad..name"s, ".name"s, "name.."s, "a" + label + ".b", "b.a" + label,
                                    most + std::string(62, 'a'), "local\0host"s, "local host"s, "local\x7Fhost"s})
        lookUps.AddressOf(name, 1000);
    EXPECT_EQ(WinsockAPI::OpenClientSocket("good.example", std::nullopt, Form2->Handle(), lookUps, 0), -1);
    EXPECT_EQ(machine.Sockets.LookedUp, names);
}

TEST_F(ProbeTest, NamesItsOwnHostAndOthers) {
    EXPECT_EQ(Socket().SOCKET_GET_LOCALHOST(), "machine");
    EXPECT_EQ(Socket().SOCKET_GET_REMOTEHOST("good.example"), "good.example");
    EXPECT_EQ(Socket().SOCKET_GET_REMOTEHOST("nowhere.example"), "Unknown");
}

TEST_F(ProbeTest, ASocketBeyondSixteenBitsIsClosed) {
    machine.Sockets.NextNumber = 32766;
    for (const int number : {32766, 32767}) {
        Socket().SOCKET_CONNECT(Form2->Handle(), "good.example", 80, 0);
        EXPECT_EQ(Socket().SocketHandle(), number);
        EXPECT_EQ(machine.Sockets.OpenNumbers.size(), 1U) << "the one before";
    }
    Socket().SOCKET_DISCONNECT(Form2->Handle());
    Socket().SOCKET_CONNECT(Form2->Handle(), "good.example", 80, 0);
    EXPECT_EQ(Socket().SocketHandle(), -1);
    EXPECT_TRUE(machine.Sockets.OpenNumbers.empty());
}

TEST_F(ProbeTest, RaisesTheEventsOfItsSocketAlone) {
    Strings events;
    Socket().Connect = [&] { events.emplace_back("connect"); };
    Socket().Receive = [&](const std::string& data) { events.push_back("receive " + data); };
    Socket().Disconnect = [&] { events.emplace_back("disconnect"); };
    Socket().Accept = [&](std::int32_t request) { events.push_back("accept " + std::to_string(request)); };
    Socket().Error = [&](std::int32_t error) { events.push_back("error " + std::to_string(error)); };
    machine.Sockets.Hosts["shut.example"] = {.Refuses = true};
    const auto connect = [&](const char* host) { Socket().SOCKET_CONNECT(Form2->Handle(), host, 80, 0); };

    for (const int event : {3, 4})
        Socket().SOCKET_RAISEEVENT(event, event, "x");
    connect("silent.example");
    machine.Windows.PumpEvents();
    machine.Sockets.Deliver("abc");
    machine.Sockets.Notify(SocketEvent::Close);
    machine.Windows.PumpEvents();
    EXPECT_EQ(events, (Strings{"accept 3", "connect", "receive abc", "disconnect"}));
    EXPECT_EQ(Socket().SocketHandle(), 0);
    EXPECT_TRUE(machine.Sockets.OpenNumbers.empty());
    connect("shut.example");
    machine.Windows.PumpEvents();
    EXPECT_EQ(std::exchange(events, {}).back(), "error 10061");
    Socket().SOCKET_DISCONNECT(Form2->Handle());

    connect("silent.example");
    const SocketNumber first = machine.Sockets.LastNumber();
    Socket().SOCKET_DISCONNECT(Form2->Handle());
    Socket().SOCKET_DISCONNECT(Form2->Handle());
    machine.Windows.PumpEvents();
    connect("silent.example");
    machine.Loop.Post({Form2->Handle(), WinsockAPI::SocketMessage, first, SocketEvent::Connect}); // of the old one
    machine.Windows.PumpEvents();
    EXPECT_EQ(events, Strings{"connect"});
}

TEST_F(ProbeTest, OtherMessagesReachTheWindowsOwnProcedure) {
    static std::vector<std::uint32_t> seen;
    seen.clear();
    Socket().SOCKET_DISCONNECT(Form2->Handle()); // before any connection: nothing to restore
    machine.Loop.Install(Form2->Handle(), [](WindowHandle, std::uint32_t message, std::int32_t, std::int32_t) {
        seen.push_back(message);
        return 0;
    });
    for (int again = 0; again < 2; ++again) { // the second time over an established connection
        Socket().SOCKET_CONNECT(Form2->Handle(), "silent.example", 80, 0);
        machine.Windows.PumpEvents();
    }
    machine.Loop.Post({Form2->Handle(), 1024, 0, 0});
    machine.Windows.PumpEvents();
    // Posted while the engine's procedure was installed, taken out after it was restored.
    machine.Loop.Post({Form2->Handle(), WinsockAPI::SocketMessage, 1, SocketEvent::Connect});
    Socket().SOCKET_DISCONNECT(Form2->Handle());
    machine.Windows.PumpEvents();
    EXPECT_EQ(seen, (std::vector<std::uint32_t>{1024, WinsockAPI::SocketMessage}));
}

TEST_F(ProbeTest, TheNetworkSectionStartsAndEndsOnceAndAFailedStartIsReported) {
    EXPECT_EQ(machine.Sockets.Startups, 1);
    Socket().SOCKET_CONNECT(Form2->Handle(), "silent.example", 80, 0);
    Form2.Unload();
    EXPECT_TRUE(machine.Sockets.Cleanups == 1 && machine.Sockets.OpenNumbers.empty());
    machine.Faults.Call = "Startup";
    StartProgram();
    ExpectMessage("Unable to start network section", MessageIcon::Critical, "Dunmarrow");
}

} // namespace
} // namespace tarnwick

// Whole checks against servers that fail in every way that a link can meet.

#include "servers_fixture.h"

#include <algorithm>
#include <list>
#include <random>

namespace tarnwick::test {

namespace {

constexpr std::size_t ManyBytes = 50'000'000;

// What is left once the text that got through first has been judged: a reader that asks for more gets it.
void SendInTwo(Connection& peer, std::string_view first, std::string_view second) {
    peer.ReadRequest();
    peer.Send(first);
    if (!peer.WaitForHangup(500))
        peer.Send(second);
}

void SendOneByteASecond(Connection& peer) {
    peer.ReadRequest();
    for (const char byte : std::string("HTTP/1.0 404 Not Found\r\n\r\n"))
        if (!peer.Send({&byte, 1}) || peer.WaitForHangup(1000))
            return;
}

TestServer::Serve Replies(const std::string& reply) {
    return [reply](Connection& peer) {
        peer.ReadRequest();
        peer.Send(reply);
        peer.WaitForHangup(-1);
    };
}

std::string RandomBytes(std::size_t count) {
    std::mt19937 random(1); // NOLINT: the same bytes each time
    std::string bytes(count, '\0');
    for (char& byte : bytes)
        byte = static_cast<char>(random());
    return bytes;
}

struct BadServer {
    std::string Name;
    TestServer::Serve Serve;
    std::string Status;
    std::string Problem; // empty: no row
};

const std::string Checking = "Checking document...";

const BadServer BadServers[] = {
    {"closes at once", [](Connection&) {}, Checking, ""},
    {"closes after the request", [](Connection& peer) { peer.ReadRequest(); }, Checking, ""},
    {"resets at once", [](Connection& peer) { peer.Reset(); }, Checking, ""},
    {"resets after the request", [](Connection& peer) { peer.ReadRequest(), peer.Reset(); }, Checking, ""},
    {"one byte a second", SendOneByteASecond, Checking, ""},
    {"status cut in two", [](Connection& peer) { SendInTwo(peer, "HTTP/1.0 40", "4 Not Found\r\n\r\n"); }, Checking,
     ""},
    {"line cut behind the status", [](Connection& peer) { SendInTwo(peer, "HTTP/1.0 404 Not", " Found\r\n\r\n"); },
     "Document not found", "Not found (404)"},
    {"NULs", Replies(std::string(70000, '\0')), Checking, ""},
    {"NULs in front of the status", Replies(std::string("\0\0\0 404 Not Found", 17)), "Document not found",
     "Not found (404)"},
    {"random bytes", Replies(RandomBytes(200000)), Checking, ""},
    {"a long line behind the status", Replies("HTTP/1.0 403 " + std::string(100000, 'x') + "\r\n\r\n"),
     "Document forbidden", "Forbidden (403)"},
    {"a long line without a status", Replies(std::string(100000, 'x') + " 404 Not Found\r\n\r\n"), Checking, ""},
};

} // namespace

TEST_F(ServersTest, EachBadServerEndsItsOwnLinkAlone) {
    const int before = OpenSockets();
    std::list<TestServer> servers;
    std::vector<Strings> rows;
    for (const BadServer& bad : BadServers) {
        const std::string url = "http://" + servers.emplace_back(bad.Serve).Address() + "/";
        AddFavorite(bad.Name, url);
        if (!bad.Problem.empty())
            rows.push_back(RowOf(bad.Name, url, bad.Problem));
    }
    CheckRoot();

    for (const BadServer& bad : BadServers) {
        EXPECT_EQ(shown[bad.Name].Status, bad.Status) << bad.Name;
        EXPECT_LT(shown[bad.Name].LastMs - shown[bad.Name].FirstMs, 15000) << bad.Name;
    }
    EXPECT_TRUE(std::ranges::all_of(servers, [](const TestServer& server) { return server.Accepted() == 1; }));
    std::vector<Strings> report = Report();
    std::ranges::sort(report);
    std::ranges::sort(rows);
    EXPECT_EQ(report, rows);
    EXPECT_EQ(Form4->Command1.Caption, "&Report");
    servers.clear();
    EXPECT_EQ(OpenSockets(), before);
}

TEST_F(ServersTest, LinksThatCannotStandEndAtOnce) {
    const BoundPort nobody;
    const std::string refused = "http://127.0.0.1:" + std::to_string(nobody.Port) + "/";
    const std::string noName = "http://empty..label.invalid/";
    AddFavorite("a refused", refused);
    AddFavorite("b no name", noName);
    AddFavorite("c no HTTP", "ftp://127.0.0.1/");
    CheckRoot();
    EXPECT_EQ(shown["a refused"].Status, "Connection error");
    EXPECT_EQ(shown["b no name"].Status, "Unable to connect");
    EXPECT_EQ(Report(), (std::vector<Strings>{RowOf("a refused", refused, "Connection error"),
                                              RowOf("b no name", noName, "Unable to connect")}));
}

TEST_F(ServersTest, SilenceEndsByTheTimeOut) {
    machine.Settings.Values["Timeout"] = "1";
    const int before = OpenSockets();
    {
        const TestServer silent([](Connection& peer) { peer.WaitForHangup(-1); });
        const FullListener full;
        const std::string silentUrl = "http://" + silent.Address() + "/";
        const std::string fullUrl = "http://127.0.0.1:" + std::to_string(full.Port()) + "/";
        AddFavorite("never answers", silentUrl);
        AddFavorite("never stands", fullUrl);
        Strings statuses; // all that was shown
        machine.Events.EachPass = [look = machine.Events.EachPass, &statuses] {
            look();
            if (statuses.empty() || statuses.back() != Form4->Label8.Caption)
                statuses.push_back(Form4->Label8.Caption);
        };
        CheckRoot();
        EXPECT_EQ(statuses, (Strings{"Waiting...", "Connecting...", "Checking document...", "Timed out",
                                     "Connecting...", "Timed out"}));
        EXPECT_EQ(Report(), (std::vector<Strings>{RowOf("never answers", silentUrl, "Timed out"),
                                                  RowOf("never stands", fullUrl, "Timed out")}));
        for (const char* name : {"never answers", "never stands"}) {
            EXPECT_GE(shown[name].LastMs - shown[name].FirstMs, 995) << name;
            EXPECT_LT(shown[name].LastMs - shown[name].FirstMs, 5000) << name;
        }
    }
    EXPECT_EQ(OpenSockets(), before);
}

TEST_F(ServersTest, AReplyWithoutEndIsDroppedBehindItsFirstChunk) {
    std::atomic<std::size_t> sent = 0;
    const TestServer endless([&sent](Connection& peer) {
        peer.ReadRequest();
        const std::string block(1 << 16, ' ');
        for (bool more = peer.Send("HTTP/1.0 200 OK\r\n\r\n"); more && peer.Sent < ManyBytes;)
            more = peer.Send(block);
        sent = peer.Sent;
    });
    AddFavorite("endless", "http://" + endless.Address() + "/");
    CheckRoot();
    EXPECT_EQ(shown["endless"].Status, "Document OK");
    EXPECT_TRUE(Report().empty());
    EXPECT_EQ(Form4->Command1.Caption, "&Finish");
    while (sent == 0) // the server's thread sees the drop a moment later
        std::this_thread::yield();
    EXPECT_LT(sent, ManyBytes / 10); // what the system's buffers hold
}

TEST_F(ServersTest, StopAndCloseBoxDropTheConnection) {
    std::atomic<int> dropped = 0;
    for (const bool stands : {false, true}) {
        for (const bool closeBox : {false, true}) {
            SCOPED_TRACE(std::string(stands ? "connected," : "connecting,") + (closeBox ? " close box" : " Stop"));
            const int before = OpenSockets();
            {
                const FullListener full;
                TestServer silent([&dropped](Connection& peer) { dropped += peer.WaitForHangup(-1) ? 1 : 0; });
                dropped = 0;
                AddFavorite("a", "http://127.0.0.1:" + std::to_string(stands ? silent.Port() : full.Port()));
                AddFavorite("b", "http://" + silent.Address() + "/never-reached");
                machine.Events.When([&] { return Form4->Label8.Caption == (stands ? Checking : "Connecting..."); },
                                    [&] { closeBox ? Form4->Unload() : Click(Form4->Command1); });
                CheckRoot();
                while (stands && dropped == 0)
                    std::this_thread::yield();
                EXPECT_EQ(silent.Accepted(), stands ? 1 : 0);
                EXPECT_TRUE(Report().empty());
                if (!closeBox) {
                    EXPECT_EQ(Form4->Command1.Caption, "&Finish");
                    Click(Form4->Command1);
                }
                EXPECT_TRUE(Form3.IsLoaded() && Form3->IsVisible());
            }
            EXPECT_EQ(OpenSockets(), before);
        }
    }
}

} // namespace tarnwick::test

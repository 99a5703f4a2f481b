// The check of links on loopback beside a bare loop that does the same with the sockets alone, and its waits.

#include "Figures.h"
#include "Loopback.h"
#include "Program.h"
#include "Sections.h"
#include "availability/Form4.h"
#include "shell/Form3.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <thread>

namespace tarnwick::bench {

namespace {

// The far side, a process of its own: answers each request with a small page.
class Server {
public:
    Server() {
        if (listen(bound_.Socket, SOMAXCONN) != 0 || (child_ = fork()) < 0)
            throw std::runtime_error("no server");
        if (child_ == 0) {
            prctl(PR_SET_PDEATHSIG, SIGKILL);
            Serve();
        }
    }
    ~Server() {
        kill(child_, SIGKILL);
        waitpid(child_, nullptr, 0);
    }
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    std::uint16_t Port() const { return bound_.Port; }

private:
    [[noreturn]] void Serve() const {
        const std::string page = "HTTP/1.0 200 OK\r\nContent-Type: text/html\r\n\r\n<html><p>Good</p></html>\r\n";
        std::array<char, 4096> request; // NOLINT: filled by recv()
        for (;;) {
            const Descriptor peer(accept4(bound_.Socket, nullptr, nullptr, SOCK_CLOEXEC));
            if (recv(peer, request.data(), request.size(), 0) > 0)
                send(peer, page.data(), page.size(), MSG_NOSIGNAL);
        }
    }

    BoundPort bound_;
    pid_t child_ = 0;
};

std::string UrlOf(std::uint16_t port) { return "http://127.0.0.1:" + std::to_string(port) + "/"; }

// The least that a check of one link can do: connect, ask, read once, drop.
void BareCheck(std::uint16_t port) {
    constexpr std::string_view request =
        "GET / HTTP/1.0\r\nHost: 127.0.0.1\r\nUser-Agent: Tarnwick v.3.00\r\nAccept: *.*, */*\r\n\r\n";
    const Descriptor socket = TcpSocket();
    DropAtClose(socket);
    std::array<char, 16364> reply; // NOLINT: filled by recv()
    if (!ConnectTo(socket, port) || send(socket, request.data(), request.size(), MSG_NOSIGNAL) <= 0 ||
        recv(socket, reply.data(), reply.size(), 0) <= 0)
        throw std::runtime_error("the bare loop gets no reply");
}

// From the main window through a whole check of the root and its folders: returns when it has ended.
void Check(Program& program) {
    constexpr int rootNode = 2;
    if (!Form3.IsLoaded())
        Form3.Show();
    program.Press(*Form3, Form3->Command1);
    program.Press(*Form4, Form4->Command1);
    if (Form4->Tree1.NodeCheck(rootNode) == 0) {
        Form4->Tree1.SetNodeCheck(rootNode, 1);
        Form4->Raise(Form4->Tree1.Check, rootNode, 1);
    }
    program.Press(*Form4, Form4->Command1);
}

// The same and back to the main window.
void CheckGood(Program& program) {
    Check(program);
    if (Form4->Command1.Caption != "&Finish")
        throw std::runtime_error("a check ended with findings");
    program.Press(*Form4, Form4->Command1);
}

void MeasureLinks(Program& program, double wallLimit, double processorLimit) {
    constexpr int links = 2000;
    const Server server;
    const FavoritesFolder favorites(links, false, [&](int) { return UrlOf(server.Port()); });
    CheckGood(program); // loads the windows
    const auto [own, floor] = MeasureInTurn(
        11, [&] { CheckGood(program); },
        [&] {
            for (int link = 0; link < links; ++link)
                BareCheck(server.Port());
        });
    Title("Links, " + program.Name + ": 2,000 on loopback beside socket, linger, connect, send, read, close");
    Show("floor, wall time a link", floor.Wall / links * 1e6, "us");
    AtMost("wall time beside the floor", own.Wall / floor.Wall, wallLimit, "times");
    AtMost("processor time beside the floor", own.Processor / floor.Processor, processorLimit, "times");
}

// A check whose every link leads to `url`, with this time-out in seconds.
Cost MeasureCheck(Program& program, int links, const std::string& url, int timeout) {
    const FavoritesFolder favorites(links, false, [&](int) { return url; });
    program.Machine.Settings.Values["Timeout"] = std::to_string(timeout);
    const Cost cost = Measure([&] { Check(program); });
    Form4->Unload(); // the next load takes the next time-out
    return cost;
}

void MeasureWaiting(Program& program) {
    constexpr int links = 10;
    std::vector<double> accepted;
    const BoundPort silent;
    listen(silent.Socket, 16);
    std::thread peer([&] {
        for (int socket = 0; (socket = accept(silent.Socket, nullptr, nullptr)) >= 0; close(socket)) {
            accepted.push_back(WallSeconds());
            char byte = 0;
            while (recv(socket, &byte, 1, 0) > 0) // until the program hangs up
                continue;
        }
    });
    const BoundPort nobody;
    const std::string refusing = UrlOf(nobody.Port);
    const std::string waiting = UrlOf(silent.Port);
    Title("Silence, " + program.Name);
    MeasureCheck(program, 1, refusing, 1); // the first one loads fonts and the like
    const Cost refused = MeasureCheck(program, 1, refusing, 1);
    const Cost waited = MeasureCheck(program, 1, waiting, 10);
    AtMost("processor time of 10 s of silence beyond a refused link",
           std::max(0.0, waited.Processor - refused.Processor) * 1e3, 3, "ms");
    // The clock on the window each second, the time-out, and the drawing of the link under check.
    AtMost("wake-ups in 10 s of silence beyond a refused link", waited.Sleeps - refused.Sleeps, 12, "");

    accepted.clear();
    MeasureCheck(program, links, waiting, 1);
    shutdown(silent.Socket, SHUT_RDWR); // ends the peer's accept()
    peer.join();
    accepted.push_back(WallSeconds());
    double most = 0;
    for (std::size_t link = 1; link < accepted.size(); ++link)
        most = std::max(most, accepted[link] - accepted[link - 1] - 1);
    AtMost("time-out of 1 s overshot, the most of 10", most * 1e3, 20, "ms");
}

} // namespace

void Links() {
    Program program;
    MeasureLinks(program, 1.15, 1.3);
}
void LinksOnQt() { MeasureLinks(*OnQt(), 1.25, 1.5); }
void Silence() {
    Program program;
    MeasureWaiting(program);
}
void SilenceOnQt() { MeasureWaiting(*OnQt()); }

} // namespace tarnwick::bench

// The check of links on loopback beside a bare loop that does the same with the sockets alone.

#include "Figures.h"
#include "FrontEnd.h"
#include "Sections.h"
#include "Server.h"
#include "availability/Form4.h"

#include <algorithm>

namespace tarnwick::bench {

namespace {

struct Limits {
    double Wall;
    double Processor;
};

void MeasureLinks(FrontEnd& program, const Limits& limits) {
    constexpr int links = 2000;
    constexpr int rounds = 7;
    const ServerProcess server;
    const FavoritesFolder favorites;
    favorites.Fill(links, false, [&](int) { return server.Url(); });
    CheckAvailability(program); // loads the windows
    Finish(program);
    const Pair cost = MeasureInTurn(
        rounds,
        [&] {
            CheckAvailability(program);
            Finish(program);
        },
        [&] {
            for (int link = 0; link < links; ++link)
                BareProbe(server.Port());
        });
    Title("Probe, " + program.Name() + ": 2,000 links on loopback beside socket, linger, connect, send, read, close");
    Show("floor, wall time a link", cost.Floor.Wall / links * 1e6, "us");
    Show("wall time a link", cost.Own.Wall / links * 1e6, "us");
    AtMost("wall time beside the floor", cost.Own.Wall / cost.Floor.Wall, limits.Wall, "times");
    AtMost("processor time beside the floor", cost.Own.Processor / cost.Floor.Processor, limits.Processor, "times");
}

// The time-out in seconds, and the links that run into it.
Cost MeasureSilence(FrontEnd& program, int seconds, int links, std::vector<double>& accepted) {
    test::TestServer silent([&accepted](test::Connection& peer) {
        accepted.push_back(WallSeconds());
        peer.WaitForHangup(-1);
    });
    const FavoritesFolder favorites;
    favorites.Fill(links, false, [&](int) { return "http://" + silent.Address() + "/"; });
    program.Settings().Values["Timeout"] = std::to_string(seconds);
    const Cost cost = Measure([&] { CheckAvailability(program); });
    accepted.push_back(WallSeconds());
    Form4->Unload(); // the next load takes the next time-out
    return cost;
}

Cost MeasureRefusal(FrontEnd& program) {
    const test::BoundPort nobody;
    const FavoritesFolder favorites;
    favorites.Fill(1, false, [&](int) { return "http://127.0.0.1:" + std::to_string(nobody.Port) + "/"; });
    const Cost cost = Measure([&] { CheckAvailability(program); });
    Form4->Unload();
    return cost;
}

void MeasureWaiting(FrontEnd& program) {
    constexpr int longTimeout = 10; // seconds
    constexpr int links = 10;
    std::vector<double> accepted;
    Title("Silence, " + program.Name());
    MeasureRefusal(program); // the first one loads fonts and the like
    const Cost refused = MeasureRefusal(program);
    const Cost waited = MeasureSilence(program, longTimeout, 1, accepted);
    AtMost("processor time of 10 s of silence beyond a refused link",
           std::max(0.0, waited.Processor - refused.Processor) * 1e3, 10, "ms");

    accepted.clear();
    MeasureSilence(program, 1, links, accepted);
    double most = 0;
    for (std::size_t link = 1; link < accepted.size(); ++link)
        most = std::max(most, accepted[link] - accepted[link - 1] - 1);
    AtMost("time-out of 1 s overshot, the most of 10", most * 1e3, 20, "ms");
}

} // namespace

void Probe() {
    const auto program = Headless();
    MeasureLinks(*program, {1.4, 1.7});
}

void ProbeOnQt() {
    const auto program = OnQt();
    MeasureLinks(*program, {3, 4});
}

void Silence() { MeasureWaiting(*Headless()); }

void SilenceOnQt() { MeasureWaiting(*OnQt()); }

void ProbeMemory() {
    constexpr int links = 1000;
    constexpr int runs = 30;
    constexpr int big = 100;
    const auto program = Headless();
    const ServerProcess server(big);
    const FavoritesFolder favorites;
    favorites.Fill(links, false, [&](int) { return server.Url(); });
    const auto run = [&] {
        CheckAvailability(*program);
        Finish(*program);
    };
    run();
    const std::size_t first = ResidentBytes();
    for (int number = 1; number < runs; ++number)
        run();
    Title("Memory: 30,000 links, a reply of 50 MB every 100 links");
    Show("resident after 1,000 links", static_cast<double>(first) / 1024, "KiB");
    AtMost("more after 30,000", (static_cast<double>(ResidentBytes()) - static_cast<double>(first)) / 1024, 1024,
           "KiB");
}

} // namespace tarnwick::bench

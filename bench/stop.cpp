// From the click on Stop to no open socket and the end text on the screen.

#include "Figures.h"
#include "FrontEnd.h"
#include "Sections.h"
#include "Server.h"
#include "availability/Form4.h"

namespace tarnwick::bench {

namespace {

// One stop of a run that waits for a silent server: seconds.
double StopOnce(FrontEnd& program, int socketsAtRest) {
    double clicked = 0;
    program.Watch([&] {
        if (clicked != 0 || Form4->Label8.Caption != "Checking document...")
            return;
        clicked = WallSeconds();
        program.Press(*Form4, Form4->Command1);
    });
    CheckAvailability(program);
    program.Draw(*Form4);
    const double stopped = WallSeconds();
    program.Watch(nullptr);
    if (Form4->Label11.Caption.find("interrupted") == std::string::npos || !Form4->Frame2.Visible)
        throw std::runtime_error("the end text doesn't show");
    if (test::OpenSockets() > socketsAtRest)
        throw std::runtime_error("a socket is open behind a stop");
    Finish(program);
    return stopped - clicked;
}

} // namespace

void Stop() {
    constexpr int stops = 200;
    const auto program = OnQt();
    program->Settings().Values["Timeout"] = "60";
    // The listener alone: its queue takes the connections, and nobody ever answers.
    const test::BoundPort silent;
    listen(silent.Socket, stops * 2);
    const FavoritesFolder favorites;
    favorites.Fill(1, false, [&](int) { return "http://127.0.0.1:" + std::to_string(silent.Port) + "/"; });
    const int socketsAtRest = test::OpenSockets();
    std::vector<double> seconds;
    seconds.reserve(stops);
    for (int stop = 0; stop < stops; ++stop)
        seconds.push_back(StopOnce(*program, socketsAtRest));
    Title("Stop, Qt: from the click to no open socket and the end text on the screen, 200 times");
    Show("median", Median(seconds) * 1e3, "ms");
    AtMost("99th percentile", Percentile(seconds, 99) * 1e3, 50, "ms");
}

} // namespace tarnwick::bench

// From the start of the process to the splash on the screen, and the load of the availability window.

#include "Figures.h"
#include "FrontEnd.h"
#include "Sections.h"
#include "availability/Form4.h"
#include "shell/Form9.h"

#include <QApplication>
#include <QWidget>

#include <filesystem>
#include <sys/wait.h>
#include <unistd.h>

namespace tarnwick::bench {

namespace {

double SecondsOfProcess(const char* section) {
    return Measure([section] {
               const pid_t child = fork();
               if (child == 0) {
                   execl("/proc/self/exe", "tarnwick_bench", section, nullptr);
                   _exit(127);
               }
               int status = 0;
               if (waitpid(child, &status, 0) != child || status != 0)
                   throw std::runtime_error("a start failed");
           })
        .Wall;
}

double LoadSeconds(FrontEnd& program) {
    if (Form4.IsLoaded())
        Form4.Unload();
    return Measure([&] {
               Form4.Show();
               program.Draw(*Form4);
           })
        .Wall;
}

} // namespace

// Both end the process on the spot: the way out is not part of the figure.
void StartBare() {
    int count = 1;
    char name[] = "bare";
    char* arguments[] = {name, nullptr};
    const QApplication application(count, arguments);
    QWidget window;
    window.show();
    window.repaint();
    QApplication::processEvents();
    _exit(0);
}

void StartSplash() {
    const auto program = OnQt();
    Form9.Show();
    program->Draw(*Form9);
    _exit(0);
}

void Start() {
    constexpr int rounds = 11;
    const Pair start = MeasureInTurn(
        rounds, [] { SecondsOfProcess("start-splash"); }, [] { SecondsOfProcess("start-bare"); });
    Title("Start, Qt");
    Show("a bare Qt window on the screen", start.Floor.Wall * 1e3, "ms");
    Show("the splash on the screen", start.Own.Wall * 1e3, "ms");
    Show("beside the bare window", start.Own.Wall / start.Floor.Wall, "times");

    constexpr int folders = 1000;
    const auto program = OnQt();
    const FavoritesFolder favorites;
    for (int folder = 0; folder < folders; ++folder)
        std::filesystem::create_directory(favorites.Root() + "/Folder " + std::to_string(folder));
    std::vector<double> loads;
    loads.reserve(rounds);
    for (int round = 0; round < rounds; ++round)
        loads.push_back(LoadSeconds(*program));
    const Cost listing = Measure([&] {
        for (const auto& entry : std::filesystem::directory_iterator(favorites.Root()))
            if (entry.path().empty())
                return;
    });
    Show("the bare listing of 1,000 folders", listing.Wall * 1e3, "ms");
    Show("Form4 with 1,000 first-level folders loaded and on the screen", Median(loads) * 1e3, "ms");
}

} // namespace tarnwick::bench

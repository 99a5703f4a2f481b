// From the start of the process to the main window on the screen.

#include "Figures.h"
#include "Program.h"
#include "Sections.h"
#include "shell/Form3.h"
#include "shell/Form9.h"

#include <QApplication>
#include <QWidget>

#include <unistd.h>

namespace tarnwick::bench {

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

void StartMain() {
    const auto program = OnQt();
    Form9.Show();
    while (!Form3.IsLoaded() || !Form3->IsVisible())
        services().Windows.WaitForEvents();
    program->Draw(*Form3);
    _exit(0);
}

void Start() {
    constexpr double splash = 2; // seconds that the first window stays
    const FavoritesFolder favorites(0, false, nullptr);
    const auto [main, bare] = MeasureInTurn(
        9, [] { RunSection("start-main"); }, [] { RunSection("start-bare"); });
    const double own = main.Wall - splash;
    Title("Start, Qt: from the start of the process");
    Show("a bare Qt window on the screen", bare.Wall * 1e3, "ms");
    Show("the main window on the screen, beyond 2 s of splash", own * 1e3, "ms");
    AtMost("beside the bare window", own / bare.Wall, 1.3, "times");
}

} // namespace tarnwick::bench

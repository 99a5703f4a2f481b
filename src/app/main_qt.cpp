#include "platform/posix/PosixFiles.h"
#include "platform/posix/PosixSettings.h"
#include "platform/posix/PosixShell.h"
#include "platform/posix/PosixSockets.h"
#include "platform/posix/PosixText.h"
#include "platform/qt/QtLook.h"
#include "platform/qt/QtWindows.h"
#include "services/SteadyClock.h"
#include "shell/Form9.h"

#include <QApplication>

#include <clocale>

using namespace tarnwick;

namespace {

void SetUp(QApplication& application) {
    std::setlocale(LC_NUMERIC, "C"); // the settings' numbers are the same in every language
    QLocale::setDefault(QLocale::c());
    QApplication::setApplicationName(QStringLiteral("Tarnwick"));
    QGuiApplication::setDesktopFileName(QStringLiteral("tarnwick"));
    QApplication::setQuitOnLastWindowClosed(false); // the program is between two windows now and then
    UseClassicLook(application);
}

} // namespace

int main() {
    // Tarnwick takes no command line, so Qt gets none either.
    int count = 1;
    char name[] = "tarnwick";
    char* arguments[] = {name, nullptr};
    QApplication::setDesktopSettingsAware(false);
    QApplication application(count, arguments);
    SetUp(application);

    PosixFiles files;
    PosixSettings settings;
    PosixText text;
    SteadyClock clock;
    PosixShell shell;
    MessageLoop loop(clock);
    PosixSockets sockets(loop);
    QtWindows windows(loop, clock, sockets);
    const ServicesInUse inUse({files, settings, sockets, windows, clock, shell, text});

    Form9.Show();
    windows.Run();
    return 0;
}

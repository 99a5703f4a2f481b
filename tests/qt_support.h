#pragma once

// The real windows on Qt's offscreen platform, above a machine whose files and settings live in memory.

#include "SampleWindow.h"
#include "platform/headless/Fakes.h"
#include "platform/posix/PosixClock.h"
#include "platform/posix/PosixSockets.h"
#include "platform/qt/QtWindows.h"

#include <QApplication>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace tarnwick {

struct QtMachine {
    PosixClock Clock;
    MessageLoop Loop{Clock};
    MemoryFavorites Favorites;
    MemorySettings Settings;
    PosixSockets Sockets{Loop};
    QtWindows Windows{Loop, Sockets};
    RecordingShell Shell;
    PlainText Text;
    ServicesInUse InUse{{Favorites, Favorites, Settings, Sockets, Windows, Clock, Shell, Text}};
};

// The real window of a model's window; nullptr when none shows.
inline QWidget* RealWindow(const std::string& name) {
    for (QWidget* widget : QApplication::topLevelWidgets())
        if (widget->isVisible() && widget->objectName().toStdString() == name)
            return widget;
    return nullptr;
}

template <class T> T& Real(const Window& window, const Control& control) {
    QWidget* real = RealWindow(window.Name);
    T* widget = real == nullptr ? nullptr : real->findChild<T*>(QString::fromStdString(control.Name));
    if (widget == nullptr)
        throw std::runtime_error("no real " + control.Name + " in " + window.Name);
    return *widget;
}

// Runs `act` as soon as a loop of Qt's runs, also one of a menu or a message box that is yet to open.
inline void Soon(std::function<void()> act) { QTimer::singleShot(0, qApp, std::move(act)); }

class QtWindowsTest : public ::testing::Test {
protected:
    void ShowSample() {
        Sample.Show();
        RealWindow("Sample")->activateWindow();
        QCoreApplication::processEvents();
    }
    template <class T> T& RealOf(const Control& control) { return Real<T>(*Sample, control); }
    // Clicks into the middle unless told where.
    void ClickOn(const Control& control, QPoint place = {}) {
        QTest::mouseClick(&RealOf<QWidget>(control), Qt::LeftButton, {}, place);
    }
    static void Start(Timer& timer, int ms, std::function<void()> tick) {
        timer.Tick = std::move(tick);
        timer.SetInterval(ms);
        timer.Enable();
    }
    void ShowBox() { Machine.Windows.ShowMessage("box", "box", MessageIcon::Information, MessageButtons::Ok); }

    WindowObject<SampleWindow> Sample; // outlives the machine, which gives its window up
    WindowObject<SampleWindow> Other;
    QtMachine Machine;
    SampleWindow& window = *Sample; // while it is loaded
};

} // namespace tarnwick

#pragma once

// The real windows on Qt's offscreen platform, above a machine whose files and settings live in memory.

#include "platform/headless/Fakes.h"
#include "platform/posix/PosixClock.h"
#include "platform/posix/PosixSockets.h"
#include "platform/qt/QtWindows.h"
#include "window/Layout.h"

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
    QtMachine() { UseServices(&All); }
    ~QtMachine() {
        WindowSlot::DropAll();
        UseServices(nullptr);
    }
    QtMachine(const QtMachine&) = delete;
    QtMachine& operator=(const QtMachine&) = delete;

    PosixClock Clock;
    MessageLoop Loop{Clock};
    MemoryFavorites Favorites;
    MemorySettings Settings;
    PosixSockets Sockets{Loop};
    QtWindows Windows{Loop, Sockets};
    RecordingShell Shell;
    PlainText Text;
    Services All{Favorites, Favorites, Settings, Sockets, Windows, Clock, Shell, Text};
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

// A window with a control of every kind, whose handlers write down what was raised.
class SampleWindow : public Window {
public:
    SampleWindow() {
        Name = "Sample";
        Title = "Sample";
        ClientWidth = 6000;
        ClientHeight = 6000;
        Layout();
        for (Control* control : Controls)
            control->Click = [this, control] { Log.push_back(control->Name); };
        Tree1.AddGroupNode("Heading");
        Tree1.AddCheckNode(1, "First", 0);
        Tree1.AddCheckNode(1, "Second", 1);
        Tree1.FinishNodes();
        Tree1.Check = [this](int index, std::int32_t value) {
            Log.push_back("Check " + std::to_string(index) + " " + std::to_string(value) + " " +
                          std::to_string(Tree1.NodeCheck(index)));
        };
        Grid1.AddColumn("Name", 100);
        Grid1.AddColumn("Hidden", 100, false);
        Grid1.AddColumn("Folder", 100);
        for (const char* name : {"c", "b", "a"}) {
            Grid1.AddRow();
            Grid1.SetCellText(Grid1.RowCount(), 1, name);
        }
        Grid1.HeaderClick = [this](int column) { Log.push_back("Header " + std::to_string(column)); };
        Grid1.MouseButton = [this](int button, int, int, int) { Log.push_back("Button " + std::to_string(button)); };
        Timers = {&Timer1, &Timer2};
    }

    Label Label1, Label2;
    Frame Frame1;
    CommandButton Command1, Command2;
    CheckBox Check1;
    OptionButton Option1, Option2;
    TextBox Text1;
    PictureBox Picture1;
    Line Line1;
    Shape Shape1;
    GridControl Grid1;
    TreeControl Tree1;
    Timer Timer1, Timer2;

    std::vector<std::string> Log;
    std::function<void()> Unloading;

private:
    void OnUnload() override {
        if (Unloading)
            Unloading();
    }

    void Layout() {
        ApplyLayout(*this, {
                               {Label1, "Label1", nullptr, {0, 0, 1500, 210}},
                               {Frame1, "Frame1", nullptr, {0, 300, 3000, 900}},
                               {Label2, "Label2", &Frame1, {150, 300, 1500, 210}},
                               {Text1, "Text1", &Frame1, {1650, 300, 600, 285}, "", 0},
                               {Option1, "Option1", &Frame1, {0, 0, 900, 225}, "", 6},
                               {Option2, "Option2", nullptr, {3000, 0, 900, 225}, "", 7},
                               {Check1, "Check1", nullptr, {3000, 300, 900, 225}, "", 5},
                               {Picture1, "Picture1", nullptr, {4500, 0, 1500, 1500}},
                               {Line1, "Line1", nullptr, {0, 1305, 3000, 0}},
                               {Shape1, "Shape1", nullptr, {0, 0, 6000, 6000}},
                               {Grid1, "Grid1", nullptr, {0, 1500, 6000, 1500}, "", 3},
                               {Tree1, "Tree1", nullptr, {0, 3000, 6000, 1500}, "", 4},
                               {Command2, "Command2", nullptr, {0, 4800, 900, 375}, "&Two", 2},
                               {Command1, "Command1", nullptr, {1500, 4800, 900, 375}, "&One", 1},
                           });
        Command1.Default = true;
        Text1.MaxLength = 2;
        Text1.AccessibleName = "Seconds";
        Grid1.AccessibleName = "Rows";
        Tree1.AccessibleName = "Folders";
        Label2.AccessibleDescription = "Status";
    }
};

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

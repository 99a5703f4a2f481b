#pragma once

// The contract's person in front of the real windows, on Qt's offscreen platform, above a machine whose files and
// settings live in memory.

#include "Person.h"
#include "platform/SteadyClock.h"
#include "platform/headless/Fakes.h"
#include "platform/posix/PosixSockets.h"
#include "platform/qt/QtLook.h"
#include "platform/qt/QtWindows.h"
#include "window/Pace.h"
#include "window/Reach.h"

#include <QSignalSpy>
#include <QTest>
#include <QtWidgets>

namespace tarnwick::test {

struct QtMachine {
    SteadyClock Clock;
    MessageLoop Loop{Clock};
    MemoryFavorites Favorites;
    MemorySettings Settings;
    PosixSockets Sockets{Loop};
    QtWindows Windows{Loop, Sockets};
    RecordingShell Shell;
    PlainText Text;
    ServicesInUse InUse{{Favorites, Settings, Sockets, Windows, Clock, Shell, Text}};
};

// The real window, shown or hidden; nullptr when there is none.
inline QWidget* RealOf(const Window& window) {
    for (QWidget* widget : QApplication::topLevelWidgets())
        if (const auto* real = qobject_cast<QtWindow*>(widget); real != nullptr && real->Shows(window))
            return widget;
    return nullptr;
}

class QtPerson : public Person {
public:
    using Person::Person;
    // After the program's end Qt would run no loop any more.
    ~QtPerson() override {
        Soon([] { QCoreApplication::quit(); });
        QCoreApplication::exec();
    }

    void PressOn(Control& control) override { Mouse(QEvent::MouseButtonPress, PlaceOf(control)); }
    void LetGo(Control& control) override { Mouse(QEvent::MouseButtonRelease, PlaceOf(control)); }
    void ClickRow(int row, int button) override {
        const auto& view = Real<QTableView>(w.Grid1);
        const int above = row == 0 ? w.Grid1.RowCount() : row - 1;
        ClickIn(view, QPoint(5, above * view.rowHeight(0) + 5), button == 1 ? Qt::LeftButton : Qt::RightButton);
    }
    void ClickNode(int node) override {
        const auto& view = Real<QTreeWidget>(w.Tree1);
        const QRect place = view.visualItemRect(view.topLevelItem(0)->child(node - 2)); // below the heading
        ClickIn(view, QPoint(place.left() + 8, place.center().y()));
    }
    void MoveMouse(int x, int y) override { Mouse(QEvent::MouseMove, {PixelsOf(x), PixelsOf(y)}, Qt::NoButton); }
    void Type(const KeyPress& key) override {
        constexpr int codes[] = {Qt::Key_Tab,   Qt::Key_Return, Qt::Key_Space, Qt::Key_Left,
                                 Qt::Key_Right, Qt::Key_Up,     Qt::Key_Down,  Qt::Key_Menu};
        const QString text = QString::fromStdString(key.Letter);
        const int code =
            key.Which == Key::Letter ? text.toUpper().front().unicode() : codes[static_cast<int>(key.Which)];
        const Qt::KeyboardModifiers held =
            (key.Shift ? Qt::ShiftModifier : Qt::NoModifier) | (key.Alt ? Qt::AltModifier : Qt::NoModifier);
        QWidget* real = RealOf(w);
        QWidget* focused = real->focusWidget() == nullptr ? real : real->focusWidget();
        QTest::simulateEvent(focused, true, code, held, text, key.Repeated);
        if (!key.Repeated)
            QTest::simulateEvent(focused, false, code, held, text, false);
    }
    void Close() override {
        QCloseEvent close;
        QCoreApplication::sendEvent(RealOf(w), &close);
    }
    void ActOn(Control& control) override {
        QAccessibleActionInterface* reader = Reader(control)->actionInterface();
        reader->doAction(reader->actionNames().first());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::MetaCall); // a reader does not wait for the handler
    }
    void Settle() override {
        QTest::qWait(static_cast<int>(Pace::Longest));
        Machine.Windows.PumpEvents();
    }
    void Soon(std::function<void()> act) override { QTimer::singleShot(0, qApp, std::move(act)); }

    bool Shows(const Window& window) override { return RealOf(window) != nullptr && RealOf(window)->isVisible(); }
    std::string Text(const Control& control) override {
        return Real(control).property("text").toString().toStdString();
    }
    bool IsMarked(const Control& control) override { return Real<QAbstractButton>(control).isChecked(); }
    int SelectedRow() override { return Real<QTableView>(w.Grid1).selectionModel()->selectedRows().value(0).row() + 1; }
    bool HasFocus(const Control& control) override { return RealOf(w)->focusWidget() == &Real(control); }
    bool Reads(const Control& control) override { return !Reader(control)->state().invisible; }

    template <class T = QWidget> T& Real(const Control& control) const {
        return *RealOf(w)->findChild<T*>(QString::fromStdString(control.Name));
    }
    QAccessibleInterface* Reader(const Control& control) const {
        return QAccessible::queryAccessibleInterface(&Real(control));
    }

    QtMachine Machine;
    std::int64_t Age = 0; // ms, for which the next events of the mouse have waited

private:
    // To the widget in front, as the display does it; what is pressed keeps the mouse until it is let go.
    void Mouse(QEvent::Type type, QPoint place, Qt::MouseButton button = Qt::LeftButton) {
        QWidget* real = RealOf(w);
        QWidget* front = real->childAt(place) == nullptr ? real : real->childAt(place);
        QWidget* target = type == QEvent::MouseButtonPress || pressed_ == nullptr ? front : pressed_.data();
        pressed_ = type == QEvent::MouseButtonPress ? target : nullptr;
        const QPoint global = real->mapToGlobal(place);
        QMouseEvent event(type, target->mapFromGlobal(global), global, button,
                          pressed_ == nullptr ? Qt::NoButton : button, {});
        event.setTimestamp(static_cast<quint64>(Machine.Clock.Now() - Age));
        QSpontaneKeyEvent::setSpontaneous(&event); // no other press gives the focus
        QApplication::instance()->notify(target, &event);
    }
    void ClickIn(const QAbstractItemView& view, QPoint inside, Qt::MouseButton button = Qt::LeftButton) {
        const QPoint place = view.viewport()->mapTo(view.window(), inside);
        Mouse(QEvent::MouseButtonPress, place, button);
        Mouse(QEvent::MouseButtonRelease, place, button);
    }
    static QPoint PlaceOf(const Control& control) { return PixelsOf(PlaceInWindow(control)).center(); }
    QPointer<QWidget> pressed_;
};

} // namespace tarnwick::test

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

class QtPerson : public Person {
public:
    QtPerson() = default;
    // After the program's end Qt would run no loop any more.
    ~QtPerson() override {
        Soon([] { QCoreApplication::quit(); });
        QCoreApplication::exec();
    }

    void PressOn(const Window& window, const Control& control) override {
        Mouse(QEvent::MouseButtonPress, window, PlaceOf(control));
    }
    void LetGo(const Window& window, const Control& control) override {
        Mouse(QEvent::MouseButtonRelease, window, PlaceOf(control));
    }
    void ClickRow(const Window& window, const GridControl& grid, int row, int button) override {
        ClickAt(window, RowPlace(window, grid, row), button == 1 ? Qt::LeftButton : Qt::RightButton);
    }
    void ClickHeader(const Window& window, const GridControl& grid, int column) override {
        const QHeaderView& header = *Real<QTableView>(window, grid).horizontalHeader();
        const QString text = QString::fromStdString(grid.Columns()[static_cast<std::size_t>(column - 1)].Header);
        int section = 0;
        while (header.model()->headerData(section, Qt::Horizontal).toString() != text)
            ++section;
        ClickAt(window, header.mapTo(header.window(), QPoint(header.sectionViewportPosition(section) + 20, 5)));
    }
    void ClickNode(const Window& window, const TreeControl& tree, int node) override {
        const auto& view = Real<QTreeWidget>(window, tree);
        const QRect place = view.visualItemRect(ItemOf(view, node));
        ClickAt(window, view.viewport()->mapTo(view.window(), QPoint(place.left() + 8, place.center().y())));
    }
    void MoveMouse(const Window& window, int x, int y) override {
        Mouse(QEvent::MouseMove, window, QPoint(PixelsOf(x), PixelsOf(y)), Qt::NoButton);
    }
    void Type(const Window& window, const KeyPress& key) override {
        QWidget* real = RealOf(window);
        QWidget* focused = real->focusWidget() == nullptr ? real : real->focusWidget();
        for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent event(type, CodeOf(key), Held(key), QString::fromStdString(key.Letter), key.Repeated);
            if (type == QEvent::KeyPress || !key.Repeated)
                QCoreApplication::sendEvent(focused, &event);
        }
    }
    void Close(const Window& window) override {
        QCloseEvent close;
        if (QWidget* real = RealOf(window); real != nullptr)
            QCoreApplication::sendEvent(real, &close);
    }
    void ActOn(const Window& window, const Control& control) override {
        QAccessibleActionInterface* reader = Reader(window, control)->actionInterface();
        reader->doAction(reader->actionNames().first());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::MetaCall); // a reader does not wait for the handler
    }
    void Settle() override {
        QTest::qWait(static_cast<int>(Pace::Longest));
        Machine.Windows.PumpEvents();
    }
    void Soon(std::function<void()> act) override { QTimer::singleShot(0, qApp, std::move(act)); }
    void Answer(MessageAnswer answer) override {
        Soon([answer] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            box->button(answer == MessageAnswer::Yes ? QMessageBox::Yes : QMessageBox::No)->click();
        });
    }
    void Choose(int entry) override {
        Soon([entry] {
            auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            if (entry > 0)
                QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(menu->actions()[entry - 1]).center());
            menu->close();
        });
    }

    bool Shows(const Window& window) override { return RealOf(window) != nullptr && RealOf(window)->isVisible(); }
    std::string Title(const Window& window) override { return RealOf(window)->windowTitle().toStdString(); }
    std::string Text(const Window& window, const Control& control) override {
        return Real<QWidget>(window, control).property("text").toString().toStdString();
    }
    bool IsMarked(const Window& window, const Control& control) override {
        return Real<QAbstractButton>(window, control).isChecked();
    }
    bool IsTicked(const Window& window, const TreeControl& tree, int node) override {
        return ItemOf(Real<QTreeWidget>(window, tree), node)->checkState(0) == Qt::Checked;
    }
    int SelectedRow(const Window& window, const GridControl& grid) override {
        const QModelIndexList rows = Real<QTableView>(window, grid).selectionModel()->selectedRows();
        return rows.isEmpty() ? 0 : rows.first().row() + 1;
    }
    bool HasFocus(const Window& window, const Control& control) override {
        return RealOf(window)->focusWidget() == &Real<QWidget>(window, control);
    }
    bool Reads(const Window& window, const Control& control) override {
        return !Reader(window, control)->state().invisible;
    }

    // Its real window, shown or hidden; nullptr when there is none.
    static QWidget* RealOf(const Window& window) {
        for (QWidget* widget : QApplication::topLevelWidgets())
            if (const auto* real = qobject_cast<QtWindow*>(widget); real != nullptr && real->Shows(window))
                return widget;
        return nullptr;
    }
    template <class T> static T& Real(const Window& window, const Control& control) {
        return *RealOf(window)->findChild<T*>(QString::fromStdString(control.Name));
    }
    static QAccessibleInterface* Reader(const Window& window, const Control& control) {
        return QAccessible::queryAccessibleInterface(&Real<QWidget>(window, control));
    }

    QtMachine Machine;
    std::int64_t Age = 0; // ms, for which the next events of the mouse have waited

private:
    // To the widget in front, as the display does it; what is pressed keeps the mouse until it is let go.
    void Mouse(QEvent::Type type, const Window& window, QPoint place, Qt::MouseButton button = Qt::LeftButton) {
        QWidget* real = RealOf(window);
        if (real == nullptr)
            return;
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
    void ClickAt(const Window& window, QPoint place, Qt::MouseButton button = Qt::LeftButton) {
        Mouse(QEvent::MouseButtonPress, window, place, button);
        Mouse(QEvent::MouseButtonRelease, window, place, button);
    }
    static QPoint PlaceOf(const Control& control) { return PixelsOf(PlaceInWindow(control)).center(); }
    static QPoint RowPlace(const Window& window, const GridControl& grid, int row) {
        const auto& view = Real<QTableView>(window, grid);
        const QRect place = view.visualRect(view.model()->index(row == 0 ? view.model()->rowCount() - 1 : row - 1, 0));
        return view.viewport()->mapTo(view.window(), place.center() + QPoint(0, row == 0 ? place.height() : 0));
    }
    static QTreeWidgetItem* ItemOf(const QTreeWidget& view, int node) {
        return node == 1 ? view.topLevelItem(0) : view.topLevelItem(0)->child(node - 2);
    }
    static int CodeOf(const KeyPress& key) {
        constexpr int codes[] = {Qt::Key_Tab,   Qt::Key_Return, Qt::Key_Space, Qt::Key_Left,
                                 Qt::Key_Right, Qt::Key_Up,     Qt::Key_Down,  Qt::Key_Menu};
        return key.Which == Key::Letter ? QString::fromStdString(key.Letter).toUpper().front().unicode()
                                        : codes[static_cast<int>(key.Which)];
    }
    static Qt::KeyboardModifiers Held(const KeyPress& key) {
        return (key.Shift ? Qt::ShiftModifier : Qt::NoModifier) | (key.Alt ? Qt::AltModifier : Qt::NoModifier);
    }

    QPointer<QWidget> pressed_;
};

} // namespace tarnwick::test

#pragma once

// The contract's person in front of the real windows, on Qt's offscreen platform.

#include "contract_windows.h"
#include "qt_support.h"
#include "window/Reach.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QCloseEvent>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPointer>
#include <QTableView>
#include <QTreeWidget>

namespace tarnwick::test {

class QtPerson : public Person {
public:
    QtPerson() = default;
    // After the program's end Qt would run no loop any more.
    ~QtPerson() override {
        Soon([] { QCoreApplication::quit(); });
        QCoreApplication::exec();
    }

    void PressOn(const Window& window, const Control& control) override {
        Mouse(QEvent::MouseButtonPress, window, Place(control));
    }
    void LetGo(const Window& window, const Control& control) override {
        Mouse(QEvent::MouseButtonRelease, window, Place(control));
    }
    void ClickRow(const Window& window, const GridControl& grid, int row) override {
        const auto& view = Real<QTableView>(window, grid);
        MouseClick(window, view.viewport()->mapTo(view.window(), RowPlace(view, row)));
    }
    void RightClickRow(const Window& window, const GridControl& grid, int row) override {
        const auto& view = Real<QTableView>(window, grid);
        MouseClick(window, view.viewport()->mapTo(view.window(), RowPlace(view, row)), Qt::RightButton);
    }
    void ClickHeader(const Window& window, const GridControl& grid, int column) override {
        const QHeaderView& header = *Real<QTableView>(window, grid).horizontalHeader();
        int section = 0;
        for (int number = 1; number < column; ++number)
            section += grid.Columns()[static_cast<std::size_t>(number - 1)].Visible ? 1 : 0;
        const QPoint place(header.sectionViewportPosition(section) + header.sectionSize(section) / 2, 5);
        MouseClick(window, header.viewport()->mapTo(header.window(), place));
    }
    void ClickNode(const Window& window, const TreeControl& tree, int node) override {
        auto& view = Real<QTreeWidget>(window, tree);
        const QRect place = view.visualItemRect(ItemOf(view, node));
        MouseClick(window, view.viewport()->mapTo(view.window(), QPoint(place.left() + 8, place.center().y())));
    }
    void MoveMouse(const Window& window, int x, int y) override {
        Mouse(QEvent::MouseMove, window, QPoint(x / 15, y / 15), Qt::NoButton);
    }
    void Type(const Window& window, const KeyPress& key) override {
        QWidget* real = RealOf(window);
        QWidget* focused = real->focusWidget() == nullptr ? real : real->focusWidget();
        const QString text = QString::fromStdString(key.Letter);
        for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent event(type, KeyCode(key), Held(key), text, key.Repeated);
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
    }
    void Settle() override {
        QTest::qWait(static_cast<int>(Pace::Longest));
        Machine.Windows.PumpEvents();
    }
    void Soon(std::function<void()> act) override { tarnwick::Soon(std::move(act)); }
    void Answer(MessageAnswer answer) override {
        Soon([answer] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            EXPECT_EQ(box->textFormat(), Qt::PlainText);
            box->button(answer == MessageAnswer::Yes ? QMessageBox::Yes : QMessageBox::No)->click();
        });
    }
    void Choose(int entry) override {
        Soon([entry] {
            auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            const QPoint place =
                entry == 0 ? QPoint(-5, -5) : menu->actionGeometry(menu->actions()[entry - 1]).center();
            QTest::mouseClick(menu, Qt::LeftButton, {}, place);
            menu->close();
        });
    }

    bool Shows(const Window& window) override { return RealOf(window) != nullptr && RealOf(window)->isVisible(); }
    std::string Title(const Window& window) override { return RealOf(window)->windowTitle().toStdString(); }
    std::string Text(const Window& window, const Control& control) override {
        QWidget& widget = Real<QWidget>(window, control);
        return (control.Kind == ControlKind::Label     ? static_cast<QLabel&>(widget).text()
                : control.Kind == ControlKind::TextBox ? static_cast<QLineEdit&>(widget).text()
                                                       : static_cast<QAbstractButton&>(widget).text())
            .toStdString();
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
        auto* widget = RealOf(window)->findChild<T*>(QString::fromStdString(control.Name));
        if (widget == nullptr)
            throw std::runtime_error("no real " + control.Name);
        return *widget;
    }
    static QAccessibleInterface* Reader(const Window& window, const Control& control) {
        return QAccessible::queryAccessibleInterface(&Real<QWidget>(window, control));
    }

    QtMachine Machine;

private:
    // To the widget in front, as the display does it; what is pressed keeps the mouse until it is let go.
    void Mouse(QEvent::Type type, const Window& window, QPoint place, Qt::MouseButton button = Qt::LeftButton) {
        QWidget* real = RealOf(window);
        if (real == nullptr)
            return;
        if (pressed_ == nullptr || type == QEvent::MouseButtonPress)
            pressed_ = real->childAt(place) == nullptr ? real : real->childAt(place);
        QWidget* target = pressed_;
        if (type != QEvent::MouseButtonPress)
            pressed_ = nullptr;
        const QPoint global = real->mapToGlobal(place);
        QMouseEvent event(type, target->mapFromGlobal(global), global, button,
                          type == QEvent::MouseButtonPress ? button : Qt::NoButton, {});
        event.setTimestamp(static_cast<quint64>(Machine.Clock.Now()));
        QSpontaneKeyEvent::setSpontaneous(&event); // only such a press gives the focus
        QApplication::instance()->notify(target, &event);
    }
    void MouseClick(const Window& window, QPoint place, Qt::MouseButton button = Qt::LeftButton) {
        Mouse(QEvent::MouseButtonPress, window, place, button);
        Mouse(QEvent::MouseButtonRelease, window, place, button);
    }
    static QPoint Place(const Control& control) {
        const Rect place = PlaceInWindow(control);
        return {(place.Left + place.Width / 2) / 15, (place.Top + place.Height / 2) / 15};
    }
    static QPoint RowPlace(const QTableView& view, int row) {
        const QRect place = view.visualRect(view.model()->index(row == 0 ? view.model()->rowCount() - 1 : row - 1, 0));
        return place.center() + QPoint(0, row == 0 ? place.height() : 0);
    }
    static QTreeWidgetItem* ItemOf(QTreeWidget& view, int node) {
        return node == 1 ? view.topLevelItem(0) : view.topLevelItem(0)->child(node - 2);
    }
    static int KeyCode(const KeyPress& key) {
        switch (key.Which) {
        case Key::Tab:
            return key.Shift ? Qt::Key_Backtab : Qt::Key_Tab;
        case Key::Enter:
            return Qt::Key_Return;
        case Key::Space:
            return Qt::Key_Space;
        case Key::Left:
            return Qt::Key_Left;
        case Key::Right:
            return Qt::Key_Right;
        case Key::Up:
            return Qt::Key_Up;
        case Key::Down:
            return Qt::Key_Down;
        case Key::Menu:
            return Qt::Key_Menu;
        case Key::Letter:
            break;
        }
        return QString::fromStdString(key.Letter).toUpper().front().unicode();
    }
    static Qt::KeyboardModifiers Held(const KeyPress& key) {
        return (key.Shift ? Qt::ShiftModifier : Qt::NoModifier) | (key.Alt ? Qt::AltModifier : Qt::NoModifier);
    }

    QPointer<QWidget> pressed_;
};

} // namespace tarnwick::test

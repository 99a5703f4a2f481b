// What Qt's windows must do beside the contract of every desktop.

#include "Driver.h"
#include "contract_windows.h"
#include "platform/qt/QtLabel.h"
#include "platform/qt/QtLook.h"
#include "platform/qt/QtWindows.h"
#include "report/Form6.h"
#include "services/SteadyClock.h"

#include <QSignalSpy>
#include <QTest>
#include <QtWidgets>

int main(int count, char** arguments) {
    ::testing::InitGoogleTest(&count, arguments);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(count, arguments);
    QApplication::setQuitOnLastWindowClosed(false);
    tarnwick::UseClassicLook(application);
    return RUN_ALL_TESTS();
}

namespace tarnwick::test {
namespace {

// Its files and settings live in memory.
struct QtMachine {
    SteadyClock Clock;
    MessageLoop Loop{Clock};
    MemoryFavorites Favorites;
    MemorySettings Settings;
    PosixSockets Sockets{Loop};
    QtWindows Windows{Loop, Clock, Sockets};
    RecordingShell Shell;
    PlainText Text;
    ServicesInUse InUse{{Favorites, Settings, Sockets, Windows, Clock, Shell, Text}};
};

// The real window, shown or hidden; nullptr when there is none.
QWidget* RealOf(const Window& window) {
    for (QWidget* widget : QApplication::topLevelWidgets())
        if (const auto* real = qobject_cast<QtWindow*>(widget); real != nullptr && real->Shows(window))
            return widget;
    return nullptr;
}

// The contract's person in front of the real windows, on Qt's offscreen platform.
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
    void ClickEarly(Control& control, const std::function<void()>& change) override {
        change();
        Settle();
        age_ = Pace::Longest + 50; // it has waited in the display's queue
        Click(control);
        age_ = 0;
    }
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
        const QString text = QString::fromStdString(key.Letter);
        const int code = CodeOf(key);
        const Qt::KeyboardModifiers held =
            (key.Shift ? Qt::ShiftModifier : Qt::NoModifier) | (key.Alt ? Qt::AltModifier : Qt::NoModifier);
        QWidget* real = RealOf(w);
        QWidget* focused = real->focusWidget() == nullptr ? real : real->focusWidget();
        QTest::simulateEvent(focused, true, code, held, text, key.Repeated);
        if (!key.Repeated)
            QTest::simulateEvent(focused, false, code, held, text, false);
    }
    // As a copy of the display's key, which the reader's bus has taken: without its time.
    void TypeByReader(const KeyPress& key) override {
        QWindow* real = RealOf(w)->windowHandle();
        for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease})
            QCoreApplication::postEvent(real, new QKeyEvent(type, CodeOf(key), {}));
        QCoreApplication::sendPostedEvents(real);
    }
    void Paste(const std::string& text) override {
        QGuiApplication::clipboard()->setText(QString::fromStdString(text));
        Real<QLineEdit>(w.Text1).paste();
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
    Log Spoken() override {
        for (const PlainLabel* label : RealOf(w)->findChildren<PlainLabel*>()) {
            label->disconnect(&listener_);
            QObject::connect(label, &PlainLabel::Announced, &listener_, [this, label] {
                EXPECT_EQ(QAccessible::queryAccessibleInterface(const_cast<PlainLabel*>(label))->role(),
                          QAccessible::Notification);
                spoken_.push_back(label->text().toStdString());
            });
        }
        return std::exchange(spoken_, {});
    }
    std::size_t Picture(const Control* control) override {
        QWidget& widget = control == nullptr ? *RealOf(w) : Real(*control);
        const QImage image = widget.isVisible() ? widget.grab().toImage() : QImage();
        return qHashBits(image.constBits(), static_cast<std::size_t>(image.sizeInBytes()));
    }
    std::string Title() override { return RealOf(w)->windowTitle().toStdString(); }
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
        event.setTimestamp(static_cast<quint64>(Machine.Clock.Now() - age_));
        QSpontaneKeyEvent::setSpontaneous(&event); // no other press gives the focus
        QApplication::instance()->notify(target, &event);
    }
    void ClickIn(const QAbstractItemView& view, QPoint inside, Qt::MouseButton button = Qt::LeftButton) {
        const QPoint place = view.viewport()->mapTo(view.window(), inside);
        Mouse(QEvent::MouseButtonPress, place, button);
        Mouse(QEvent::MouseButtonRelease, place, button);
    }
    static QPoint PlaceOf(const Control& control) { return PixelsOf(PlaceInWindow(control)).center(); }
    static int CodeOf(const KeyPress& key) {
        const int codes[] = {key.Shift ? Qt::Key_Backtab : Qt::Key_Tab,
                             Qt::Key_Return,
                             Qt::Key_Space,
                             Qt::Key_Left,
                             Qt::Key_Right,
                             Qt::Key_Up,
                             Qt::Key_Down,
                             Qt::Key_Menu};
        return key.Which == Key::Letter ? QString::fromStdString(key.Letter).toUpper()[0].unicode()
                                        : codes[static_cast<int>(key.Which)];
    }

    QObject listener_;
    Log spoken_;
    QPointer<QWidget> pressed_;
    std::int64_t age_ = 0; // ms, of the mouse's events
};

} // namespace

std::unique_ptr<Person> MakePerson(SampleWindow& sample) { return std::make_unique<QtPerson>(sample); }

namespace {

class QtWindowsTest : public WindowFixture {
protected:
    std::string Read(const Control& control, QAccessible::Text what = QAccessible::Name) const {
        return person.Reader(control)->text(what).toStdString();
    }
    static void LeaveBox() { QApplication::activeModalWidget()->close(); }
    static void ShowBox() { ShowMessage("box", "box", MessageIcon::Information, MessageButtons::Ok); }

    QtPerson& person = static_cast<QtPerson&>(p);
};

const std::string Markup = "<b>R&D</b>\t[*]\xFF";
const std::string MarkupShown = "<b>R&D</b> [*]\xEF\xBF\xBD";

TEST_F(QtWindowsTest, ShowsDataAsPlainTextEverywhere) {
    Show();
    w.Frame1.Caption = w.Title = Markup;
    w.Label2.Caption = "a\r\nb";
    w.Grid1.ClearRows();
    for (const std::string& text : {Markup, "<i>" + std::string(100, 'x'), std::string("a")})
        w.Grid1.AddRow(w.Grid1.AddRecord({text}));
    w.Tree1.AddCheckNode(1, Markup);
    p.Settle();
    w.Tree1.SetNodeCheck(2, 1);
    p.Settle();
    EXPECT_EQ(RealOf(w)->windowTitle(), "<b>R&D</b> [*][*]\xEF\xBF\xBD");
    EXPECT_EQ(Read(w.Frame1) + p.Text(w.Label2), MarkupShown + "a\nb");
    EXPECT_EQ(Read(w.Label1, QAccessible::Description), "<b>tip</b>");
    const QTreeWidgetItem& heading = *person.Real<QTreeWidget>(w.Tree1).topLevelItem(0);
    EXPECT_TRUE(heading.treeWidget()->isHeaderHidden() && heading.child(0)->checkState(0) == Qt::Checked);
    EXPECT_EQ(heading.child(2)->text(0), MarkupShown.c_str());
    EXPECT_EQ(person.Real(w.Label1).toolTip(), "<p style='white-space:pre'>&lt;b&gt;tip&lt;/b&gt;</p>");
    const auto& grid = person.Real<QTableView>(w.Grid1);
    EXPECT_EQ(grid.model()->index(0, 0).data(), MarkupShown.c_str());
    EXPECT_EQ(grid.columnWidth(0) + grid.columnWidth(1), 90 + 90);
    const QHeaderView& header = *grid.horizontalHeader();
    QTest::mouseClick(header.viewport(), Qt::LeftButton, {}, QPoint(header.sectionViewportPosition(1) + 20, 5));
    EXPECT_EQ(Raised(), Log{"Header 3"});
    for (const int row : {2, 1}) {
        const QPoint place = grid.visualRect(grid.model()->index(row, 0)).center();
        QHelpEvent help(QEvent::ToolTip, place, grid.viewport()->mapToGlobal(place));
        QCoreApplication::sendEvent(grid.viewport(), &help);
        const std::string whole = "<p style='white-space:pre'>&lt;i&gt;" + std::string(97, 'x') + "\nxxx</p>";
        EXPECT_EQ(QToolTip::text().toStdString(), row == 1 ? whole : ""); // where the cell cuts it
    }

    MenuEntry grey{"", "Grey", false, false, {}}, line{"", "", true, true, {}};
    MenuEntry entry{"", Markup, false, true, [&] { w.Log.push_back("entry"); }};
    Menu menu{"menu", "Menu", {&grey, &line, &entry}};
    for (const Qt::Key answer : {Qt::Key_Return, Qt::Key_Escape}) {
        p.Soon([answer] {
            auto* open = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            QTest::keyClick(open, Qt::Key_Down); // never to a grey one
            EXPECT_EQ(open->activeAction()->text(), "<b>R&&D</b> [*]\xEF\xBF\xBD");
            QTest::keyClick(open, answer);
        });
        PopUp(menu, w);
        EXPECT_EQ(Raised(), answer == Qt::Key_Return ? Log{"entry"} : Log{});
    }
}

TEST_F(QtWindowsTest, ShowsWhatALabelCutsAsItsToolTip) {
    Show();
    for (const std::string& text : {std::string("short"), std::string(80, '<')}) {
        w.Value1.Caption = text;
        p.Settle();
        QHelpEvent help(QEvent::ToolTip, {5, 5}, person.Real(w.Value1).mapToGlobal(QPoint(5, 5)));
        QCoreApplication::sendEvent(&person.Real(w.Value1), &help);
        EXPECT_EQ(QToolTip::text().count("&lt;"), text == "short" ? 0 : 80);
    }
}

TEST_F(QtWindowsTest, AGridTakesButtonsAndKeysAndFollowsItsRows) {
    Show();
    auto& grid = person.Real<QTableView>(w.Grid1);
    w.Grid1.MouseButton = [this](int button, int shift, int, int y) {
        w.Log.push_back(std::to_string(button) + " " + std::to_string(shift) + (y > 20 ? " below the header" : ""));
    };
    for (const auto& [button, key] : {std::pair{Qt::LeftButton, Qt::ShiftModifier},
                                      {Qt::RightButton, Qt::ControlModifier},
                                      {Qt::MiddleButton, Qt::AltModifier}})
        QTest::mouseDClick(grid.viewport(), button, key, grid.visualRect(grid.model()->index(1, 0)).center());
    EXPECT_EQ(Raised(), (Log{"1 1 below the header", "2 2 below the header", "4 4 below the header"}));
    for (const Key key : {Key::Down, Key::Up}) {
        w.Grid1.SelectedRow = 0;
        w.SetFocus(w.Grid1);
        p.Settle();
        p.Type({.Which = key});
        EXPECT_EQ(w.Grid1.SelectedRow, 2) << "the row that the keyboard is at";
    }
    QSignalSpy redrawn(grid.model(), &QAbstractItemModel::dataChanged);
    w.Grid1.Sort(1);
    p.Settle();
    ASSERT_EQ(redrawn.count(), 1);
    EXPECT_EQ(redrawn[0][1].toModelIndex(), grid.model()->index(2, 1));
    QTest::keyClick(&grid, Qt::Key_F10, Qt::ShiftModifier);
    EXPECT_EQ(Raised().back(), "2 0 below the header");
    w.Grid1.ClearRows();
    p.Settle();
    EXPECT_EQ(grid.model()->rowCount(), 0);
}

TEST_F(QtWindowsTest, AsksWhateverAFavoriteHoldsOnTheSmallestScreen) {
    Show();
    for (const auto& [name, key, answer] : {std::tuple{"W ", Qt::Key_Return, MessageAnswer::No},
                                            {"\xEF\xB7\xBD", Qt::Key_Escape, MessageAnswer::No},
                                            {"a\xCC\x81\xCC\x81\xCC\x81", Qt::Key_Y, MessageAnswer::Yes}}) {
        std::string text = Markup;
        for (int count = 0; count < 3000; ++count)
            text += count % 1000 == 0 ? "\r\n" : name;
        p.Soon([key = key] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            EXPECT_TRUE(box->textFormat() == Qt::PlainText && box->windowTitle() == "T");
            EXPECT_TRUE(box->text().startsWith(MarkupShown.c_str()));
            EXPECT_EQ(box->size().boundedTo(QSize(1000, 560)), box->size());
            const auto* label = box->findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
            EXPECT_LE(label->heightForWidth(label->width()), label->height());
            EXPECT_TRUE(QTest::qWaitForWindowActive(box)); // access keys are the active window's
            QTest::keyClick(box, key, key == Qt::Key_Y ? Qt::AltModifier : Qt::NoModifier);
        });
        EXPECT_EQ(ShowMessage(text, "T", MessageIcon::Question, MessageButtons::YesNo), answer) << name;
    }
}

TEST_F(QtWindowsTest, ReadsWellToAScreenReader) {
    w.Frame1.Caption = "Frame";
    w.Check1.Value = 1;
    w.Frame2.Visible = true; // over the tree
    Show();
    EXPECT_EQ(Read(w.Label2), ""); // an empty value; not its frame's title
    EXPECT_EQ(Read(w.Label2, QAccessible::Description) + Read(w.Text1), "StatusSeconds");
    EXPECT_EQ(Read(w.Command1) + Read(w.Command1, QAccessible::Accelerator), "OneAlt+O");
    EXPECT_TRUE(person.Reader(w.Check1)->state().checked && person.Reader(w.Command1)->state().defaultButton);
    EXPECT_EQ(person.Reader(w.Label1)->role(), QAccessible::PushButton) << "a label that is clicked";
    w.Label1.Click = nullptr;
    EXPECT_EQ(person.Reader(w.Label1)->role(), QAccessible::StaticText);
    EXPECT_EQ(person.Reader(w.Check1)->role(), QAccessible::CheckBox);
    EXPECT_EQ(person.Reader(w.Option1)->role(), QAccessible::RadioButton);
    EXPECT_EQ(person.Reader(w.Command2)->role(), QAccessible::PushButton);
    const QString press = QAccessibleActionInterface::pressAction();
    EXPECT_EQ(person.Reader(w.Command1)->actionInterface()->keyBindingsForAction(press), QStringList("Alt+O"));
    person.Reader(w.Text1)->setText(QAccessible::Value, QStringLiteral("77"));
    EXPECT_EQ(w.Text1.Text, "77");
    auto& edit = person.Real<QLineEdit>(w.Text1);
    w.Text1.SelectAll();
    p.Settle();
    EXPECT_EQ(edit.selectedText(), "77");
    edit.setCursorPosition(1);
    p.Type({.Letter = "8"}); // longer than the field takes
    EXPECT_EQ(edit.cursorPosition(), 1);

    QAccessibleTableInterface* grid = person.Reader(w.Grid1)->tableInterface();
    EXPECT_EQ(grid->columnCount(), 2); // without the hidden one
    EXPECT_EQ(grid->columnDescription(1), "Folder");
    EXPECT_EQ(grid->cellAt(1, 0)->text(QAccessible::Name), "b");
    QAccessibleInterface* all = QAccessible::queryAccessibleInterface(RealOf(w));
    QStringList order; // Label1, empty, and the covered tree are nothing to read
    for (int child = 0; child < all->childCount(); ++child)
        order += all->child(child)->object()->objectName();
    EXPECT_EQ(order.join(' ').toStdString(), "Frame1 Command1 Command2 Grid1 Picture1 Check1 Frame2 Option2");
    EXPECT_EQ(all->role(), QAccessible::Window);
    QAccessibleInterface* tree = person.Reader(w.Tree1);
    EXPECT_EQ(all->indexOfChild(tree), -1);
    w.Frame2.Visible = false;
    p.Settle();
    EXPECT_EQ(all->child(all->indexOfChild(tree)), tree);
    EXPECT_TRUE(tree->tableInterface()->cellAt(2, 0)->state().checked);
}

TEST_F(QtWindowsTest, LaysAModalWindowOverTheOneThatCallsIt) {
    Show();
    p.Soon([&] {
        EXPECT_EQ(RealOf(*Other.Object)->windowHandle()->transientParent(), RealOf(w)->windowHandle());
        Other.Unload();
    });
    Other.ShowModal();
}

TEST_F(QtWindowsTest, OpensCentredAndFollowsItsFrameLater) {
    w.Shape1.ForeColor = w.Line1.ForeColor = Color::Rgb(4, 5, 6);
    Show();
    QWidget& real = *RealOf(w);
    const QPoint off = real.frameGeometry().center() - real.screen()->availableGeometry().center();
    EXPECT_TRUE(off.manhattanLength() <= 1 && real.frameGeometry().height() > real.height());
    for (const bool topMost : {true, false}) {
        w.TopMost = topMost;
        p.Settle();
        EXPECT_EQ(real.windowHandle()->flags().testFlag(Qt::WindowStaysOnTopHint), topMost);
    }
    w.Icon = "tarnwick.png";
    w.BackColor = Color::Rgb(1, 2, 3);
    const auto seenAt = [&](int x, int y) { return real.grab().toImage().pixelColor(x, y); };
    EXPECT_TRUE(seenAt(0, 350) == QColor(4, 5, 6) && seenAt(200, 360) == QColor(4, 5, 6));
    w.Shape1.Visible = false; // over the edge
    for (const auto& [edge, colors] :
         {std::pair{5, "#d4d0c8#ffffff own own#808080#404040"}, {10, "#808080#404040 own own#d4d0c8#ffffff"}}) {
        w.Edge = edge;
        p.Settle();
        for (const bool across : {true, false}) {
            std::string seen;
            for (const int at : {0, 1, 2, 397, 398, 399}) {
                const QColor color = across ? seenAt(at, 350) : seenAt(280, at);
                seen += color == QColor(1, 2, 3) ? " own" : color.name().toStdString();
            }
            EXPECT_EQ(seen, colors);
        }
    }
    EXPECT_EQ(seenAt(0, 60).lightness() + seenAt(300, 50).lightness(), 128 + 0) << "the frame's and the picture's";
    EXPECT_TRUE(real.windowIcon().availableSizes().contains(QSize(32, 32)));
}

// The display repeats a held key as a release and a press of one moment, which Qt takes for two keystrokes; while no
// window has the focus, the release is lost.
TEST_F(QtWindowsTest, KnowsAHeldKeyByItsTimes) {
    Show();
    const auto send = [](QWidget& target, QEvent::Type type, quint64 time) {
        QKeyEvent event(type, Qt::Key_Return, {});
        event.setTimestamp(1'000'000'000 + time); // far from the other tests' times
        QCoreApplication::sendEvent(&target, &event);
    };
    auto& field = person.Real(w.Text1);
    send(field, QEvent::KeyPress, 100);
    for (const quint64 time : {140, 220}) { // the second one by another stroke
        send(field, QEvent::KeyRelease, 140);
        send(field, QEvent::KeyPress, time);
    }
    for (const quint64 time : {900, 2000}) // the second one after a release that was lost
        send(field, QEvent::KeyPress, time);
    EXPECT_EQ(Raised(), (Log{"Command1", "Command1", "Command1"}));
    p.Soon([&] {
        QWidget& box = *QApplication::activeModalWidget();
        send(box, QEvent::KeyRelease, 2300);
        send(*box.findChild<QPushButton*>(), QEvent::KeyPress, 2300);
        EXPECT_TRUE(box.isVisible() && box.findChild<QLabel*>(QStringLiteral("qt_msgbox_label"))->text() == "box");
        LeaveBox();
    });
    ShowBox();
}

// Takes the display's keys, as the reader's bus does; the copies have no time.
struct KeyTaker : QObject {
    bool eventFilter(QObject*, QEvent* event) override {
        return event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->timestamp() != 0;
    }
};

TEST_F(QtWindowsTest, AHeldKeyPressesOnceByAReadersBusToo) {
    Show();
    KeyTaker bus;
    QWindow* display = RealOf(w)->windowHandle();
    display->installEventFilter(&bus);
    for (const quint64 time : {100, 600, 640, 3000}) { // held, and pressed again
        QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, {});
        press.setTimestamp(2'000'000'000 + time);
        QCoreApplication::sendEvent(display, &press);
        p.TypeByReader({.Which = Key::Enter});
    }
    EXPECT_EQ(Raised(), (Log{"Command1", "Command1"}));
}

// Qt is in the middle of the button's click when the window's real one could be deleted. Nor must a pump, which handles
// the ticks itself, keep those of a box that a click in it opens.
TEST_F(QtWindowsTest, RealWindowStaysWhileItsHandlerIsOnTheStack) {
    w.Command1.Click = [this] {
        ShowBox();
        Other.Unload();
        p.Settle();
    };
    Show();
    Other.Load();
    Start(Other.Object->Timer1, 50, [this] { Sample.IsLoaded() ? w.Unload() : LeaveBox(); });
    const QPointer<QWidget> real = RealOf(w);
    p.Soon([&] {
        p.Click(w.Command1);
        ASSERT_NE(real, nullptr);
        EXPECT_EQ(real->findChild<QTableView*>()->model()->index(0, 0).data(), QVariant()) << "of a grid that has gone";
    });
    person.Machine.Windows.WaitForEvents();
}

TEST_F(QtWindowsTest, WaitShowsWhatHasChangedAndReturnsForATick) {
    Show();
    Start(w.Timer1, 100, [&] { w.Log.push_back(p.Text(w.Label1)); });
    w.Label1.Caption = "new";
    person.Machine.Windows.WaitForEvents(); // painting the label is no event
    EXPECT_EQ(Raised(), Log{"new"});
    const std::int64_t begin = services().Clock.Now();
    p.Soon([&] { w.Log.push_back("input"); });
    while (w.Log.size() < 2 && services().Clock.Now() - begin < 5000)
        services().Windows.PumpEvents();
    EXPECT_TRUE(std::set(w.Log.begin(), w.Log.end()) == (std::set<std::string>{"input", "new"})) << "not in a pass";
    w.Timer1.Disable();
    person.Machine.Loop.Install(w.Handle(), [](WindowHandle, std::uint32_t, std::int32_t, std::int32_t event) {
        services().Windows.End();
        return event;
    });
    p.Soon([&] { // a socket's events come in Qt's own loop, also after a look-up
        const std::int64_t start = services().Clock.Now();
        services().Windows.PaintUntil([](std::int64_t) { return false; }, 50);
        EXPECT_GE(services().Clock.Now() - start, 49);
        PosixSockets& sockets = person.Machine.Sockets;
        const SocketNumber socket = sockets.Open(FamilyInternet, TypeStream, ProtocolTcp);
        sockets.AsyncSelect(socket, w.Handle(), 1025, SocketEvent::All);
        sockets.Connect(socket, {2, sockets.HostToNetwork(1), 0x0100007F, {}}); // refused
    });
    QTimer::singleShot(20000, RealOf(w), &QCoreApplication::quit);
    person.Machine.Windows.Run();
    EXPECT_LT(services().Clock.Now() - begin, 10000);
}

// What edges, corners and marks take from the room for a text.
std::map<ControlKind, QMargins> EdgesOf = {{ControlKind::CommandButton, {2, 2, 2, 2}},
                                           {ControlKind::CheckBox, {19, 0, 0, 0}},
                                           {ControlKind::OptionButton, {18, 0, 0, 0}},
                                           {ControlKind::Frame, {10, 0, 10, 0}},
                                           {ControlKind::TextBox, {4, 0, 4, 0}}};

QSizeF NeededBy(const QWidget& widget) {
    const QString title = widget.property("title").toString();
    const QString text = title.isEmpty() ? widget.property("text").toString() : title;
    const QFontMetricsF metrics(widget.font(), &widget);
    if (widget.property("wordWrap").toBool() && qobject_cast<const QLabel*>(&widget) != nullptr)
        return metrics.boundingRect(QRectF(0, 0, widget.width(), 10000), Qt::TextWordWrap, text).size();
    // Letters reach no higher and lower than this.
    const qreal height = text.isEmpty() ? 0 : metrics.capHeight() + metrics.descent();
    return {metrics.size(Qt::TextShowMnemonic, text).width(), height};
}

void Look(WindowSlot& slot) {
    slot.Show();
    const Window& window = slot.Load();
    for (const Control* control : window.Controls) {
        const auto& widget = *RealOf(window)->findChild<QWidget*>(QString::fromStdString(control->Name));
        const QSizeF needed = NeededBy(widget);
        const QSizeF room = widget.rect().marginsRemoved(EdgesOf[control->Kind]).size();
        EXPECT_EQ(needed.boundedTo(room), needed) << *window.Name << " " << *control->Name;
    }
    const Qt::WindowFlags flags = RealOf(window)->windowFlags();
    const bool isTool = window.Border == FrameStyle::FixedTool, hasFrame = window.Border != FrameStyle::None;
    EXPECT_EQ(flags.testFlag(Qt::WindowCloseButtonHint) && flags.testFlag(Qt::WindowTitleHint), hasFrame);
    EXPECT_EQ(flags.testFlag(Qt::WindowMinimizeButtonHint), hasFrame && !isTool);
    EXPECT_EQ(flags.testFlag(Qt::WindowStaysOnTopHint), window.TopMost);
    EXPECT_EQ((flags & Qt::WindowType_Mask) == Qt::Window, window.InTaskBar);
    for (const QHeaderView* header : RealOf(window)->findChildren<QHeaderView*>())
        for (int section = 0; header->isVisible() && section < header->count(); ++section)
            EXPECT_LE(header->sectionSizeHint(section), header->sectionSize(section)) << *window.Name << section;
}

// Rows of the display's pixels, in colours.
std::set<QRgb> ColorsIn(const QImage& image, const QRectF& area) {
    std::set<QRgb> colors;
    const QRect part =
        QRectF(area.topLeft() * image.devicePixelRatio(), area.size() * image.devicePixelRatio()).toRect();
    for (int y = part.top(); y <= part.bottom(); ++y)
        for (int x = part.left(); x <= part.right(); ++x)
            colors.insert(image.pixel(x, y));
    return colors;
}

// The scale may put a line between two pixels of the display.
TEST(QtLook, RulesAndPicturesAreWhole) {
    Favorites::SplashDone = true;
    const QtMachine machine;
    Form5.Show();
    const QImage report = RealOf(*Form5)->grab().toImage();
    const std::set<QRgb> rule = ColorsIn(report, QRectF(300, PixelsOf(Form5->Line4.Place->Top) - 1, 0.5, 4));
    EXPECT_TRUE(rule.contains(qRgb(128, 128, 128))) << "the line of shadow";
    EXPECT_TRUE(rule.contains(qRgb(255, 255, 255))) << "the line of light";
    Form9.Show();
    const QImage about = RealOf(*Form9)->grab().toImage();
    const QRectF picture = PixelsOf(*Form9->Picture1.Place);
    for (const QRectF& side : {QRectF(picture.topLeft(), QSizeF(picture.width(), 2)),
                               QRectF(picture.bottomLeft() - QPointF(0, 2), QSizeF(picture.width(), 2)),
                               QRectF(picture.topLeft(), QSizeF(2, picture.height())),
                               QRectF(picture.topRight() - QPointF(2, 0), QSizeF(2, picture.height()))})
        EXPECT_FALSE(ColorsIn(about, side).contains(qRgb(128, 128, 128))) << "the ground beside the picture";
}

// Of any window, in any of its states. It is run at several scales of the display.
TEST(QtLook, NoTextIsCutOff) {
    Favorites::SplashDone = true; // no splash: its tick would go on to start the program
    const QtMachine machine;
    for (WindowSlot* slot : std::initializer_list<WindowSlot*>{&Form9, &Form3, &Form1, &Form5, &Form6, &Form4, &Form7})
        Look(*slot);
    Form4->Label11.Caption = "The scan process was interrupted by the user.\r\n\r\n12345 bad Favorite(s) found before "
                             "the interruption.\r\n\r\n\r\nClick Report button to see and correct these problems.";
    Form4->Label10.Caption = "10:00:00";
    Form4->Label8.Caption = "Unauthorized (401)"; // the widest of its texts
    Form7->Label2.Caption = "Operation canceled by user";
    for (const char* caption : {"&Start", "&Stop", "&Report", "&Finish", "&Cancel"}) {
        Form4->Command1.Caption = Form7->Command1.Caption = caption;
        Look(Form4);
        Look(Form7);
    }
    EXPECT_EQ(PictureOf("side.jpg").size(), QSize(108, 189));
    EXPECT_EQ(QApplication::font(), FontOf({}));
}

} // namespace
} // namespace tarnwick::test

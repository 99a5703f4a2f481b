// What Qt's windows must do beside the contract of every desktop.

#include "contract_windows.h"
#include "qt_person.h"

int main(int count, char** arguments) {
    ::testing::InitGoogleTest(&count, arguments);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(count, arguments);
    QApplication::setQuitOnLastWindowClosed(false);
    tarnwick::UseClassicLook(application);
    return RUN_ALL_TESTS();
}

namespace tarnwick::test {

INSTANTIATE_TEST_SUITE_P(Qt, WindowContract, ::testing::Values(&Make<QtPerson>));

namespace {

class QtWindowsTest : public WindowFixture {
protected:
    QtWindowsTest() : WindowFixture(Make<QtPerson>()) {}

    template <class T = QWidget> T& RealOf(const Control& control) { return QtPerson::Real<T>(window, control); }
    std::string Read(const Control& control, QAccessible::Text what = QAccessible::Name) const {
        return QtPerson::Reader(window, control)->text(what).toStdString();
    }
    static void ShowBox() { ShowMessage("box", "box", MessageIcon::Information, MessageButtons::Ok); }
    static void LeaveBox() { QApplication::activeModalWidget()->close(); }

    QtPerson& person = static_cast<QtPerson&>(p);
    SampleWindow& window = w;
    QtWindows& Windows = person.Machine.Windows;
};

const std::string Markup = "<b>R&D</b>\t[*]\xFF";
const std::string MarkupShown = "<b>R&D</b> [*]\xEF\xBF\xBD";

TEST_F(QtWindowsTest, ShowsDataAsPlainTextEverywhere) {
    window.Frame1.Caption = window.Title = Markup;
    window.Label1.ToolTip = "<b>bold</b>";
    window.Grid1.SetCellText(1, 1, Markup);
    window.Tree1.AddCheckNode(1, Markup);
    Show();
    EXPECT_EQ(RealOf<QLabel>(window.Label1).textFormat(), Qt::PlainText);
    EXPECT_EQ(Read(window.Frame1), MarkupShown);
    EXPECT_EQ(RealOf<QTableView>(window.Grid1).model()->index(0, 0).data(), MarkupShown.c_str());
    EXPECT_EQ(RealOf<QTreeWidget>(window.Tree1).topLevelItem(0)->child(2)->text(0), MarkupShown.c_str());
    EXPECT_EQ(RealOf(window.Label1).toolTip(), "<p style='white-space:pre'>&lt;b&gt;bold&lt;/b&gt;</p>");
    EXPECT_EQ(person.Title(window), "<b>R&D</b> [*][*]\xEF\xBF\xBD");

    MenuEntry grey, entry, line;
    grey.Enabled = false;
    line.Separator = true;
    entry.Caption = Markup;
    Menu menu{"menu", "Menu", {&grey, &line, &entry}};
    QString shown;
    person.Soon([&] {
        auto* open = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        QTest::keyClick(open, Qt::Key_Down); // never to a grey one
        shown = open->activeAction()->text();
        open->close();
    });
    PopUp(menu, window);
    EXPECT_EQ(shown, "<b>R&&D</b> [*]\xEF\xBF\xBD");
}

TEST_F(QtWindowsTest, AsksWhateverAFavoriteHoldsOnTheSmallestScreen) {
    Show();
    for (const auto& [name, key, answer] : {std::tuple{"W ", Qt::Key_Return, MessageAnswer::No},
                                            {"\xEF\xB7\xBD", Qt::Key_Escape, MessageAnswer::No},
                                            {"a\xCC\x81\xCC\x81\xCC\x81", Qt::Key_Y, MessageAnswer::Yes}}) {
        std::string text = Markup;
        for (int count = 0; count < 3000; ++count)
            text += count % 1000 == 0 ? "\r\n" : name;
        person.Soon([key = key] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            EXPECT_EQ(box->textFormat(), Qt::PlainText);
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
    window.Frame1.Caption = "Frame";
    window.Frame2.Visible = true; // over the tree
    Show();
    EXPECT_EQ(Read(window.Label2), ""); // an empty value; not its frame's title
    EXPECT_EQ(Read(window.Label2, QAccessible::Description), "Status");
    EXPECT_EQ(Read(window.Text1), "Seconds");
    EXPECT_EQ(Read(window.Command1) + Read(window.Command1, QAccessible::Accelerator), "OneAlt+O");
    EXPECT_TRUE(QtPerson::Reader(window, window.Check1)->state().checkable);
    QtPerson::Reader(window, window.Text1)->setText(QAccessible::Value, QStringLiteral("7"));
    EXPECT_EQ(window.Text1.Text, "7");

    QAccessibleTableInterface* grid = QtPerson::Reader(window, window.Grid1)->tableInterface();
    EXPECT_EQ(grid->columnCount(), 2); // without the hidden one
    EXPECT_EQ(grid->columnDescription(1), "Folder");
    EXPECT_EQ(grid->cellAt(1, 0)->text(QAccessible::Name), "b");
    QAccessibleInterface* all = QAccessible::queryAccessibleInterface(QtPerson::RealOf(window));
    QAccessibleInterface* tree = QtPerson::Reader(window, window.Tree1);
    EXPECT_EQ(all->indexOfChild(tree), -1);
    window.Frame2.Visible = false;
    person.Settle();
    EXPECT_EQ(all->child(all->indexOfChild(tree)), tree);
    EXPECT_TRUE(tree->tableInterface()->cellAt(2, 0)->state().checked);
}

TEST_F(QtWindowsTest, OpensCentredAndFollowsItsFrameLater) {
    Show();
    QWidget& real = *QtPerson::RealOf(window);
    const QPoint off = real.frameGeometry().center() - real.screen()->availableGeometry().center();
    EXPECT_LE(off.manhattanLength(), 1);
    EXPECT_GT(real.frameGeometry().height(), real.height());
    window.Icon = "tarnwick.png";
    window.BackColor = Color::Rgb(1, 2, 3);
    window.Edge = 5;
    person.Settle();
    EXPECT_TRUE(real.windowIcon().availableSizes().contains(QSize(32, 32)));
    const QImage seen = real.grab().toImage();
    EXPECT_EQ(seen.pixelColor(1, 1), QColor(255, 255, 255));
    EXPECT_EQ(seen.pixelColor(350, 350), QColor(1, 2, 3));
}

TEST_F(QtWindowsTest, ShowsTheWholeTextOfACellThatIsCut) {
    window.Grid1.SetCellText(1, 1, "<i>" + std::string(100, 'x'));
    Show();
    const auto& view = RealOf<QTableView>(window.Grid1);
    const auto tip = [&view](int row) {
        const QPoint place = view.visualRect(view.model()->index(row, 0)).center();
        QHelpEvent help(QEvent::ToolTip, place, view.viewport()->mapToGlobal(place));
        QCoreApplication::sendEvent(view.viewport(), &help);
        return QToolTip::text().toStdString();
    };
    EXPECT_EQ(tip(1), "");
    EXPECT_EQ(tip(0), "<p style='white-space:pre'>&lt;i&gt;" + std::string(97, 'x') + "\nxxx</p>");
}

TEST_F(QtWindowsTest, TakesAClickForWhatTheUserSawThen) {
    Show();
    person.Click(window, window.Command1);
    window.Command1.Caption = "&Stop";
    person.Settle();
    person.Age = Pace::Longest + 50; // it has waited in the display's queue
    person.Click(window, window.Command1);
    EXPECT_EQ(Raised(), Log{"Command1"});
    person.Age = 0;
    person.Click(window, window.Command1);
    EXPECT_EQ(Raised(), Log{"Command1"});
}

// The display repeats a held key as a release and a press of one moment, which Qt takes for two keystrokes; while no
// window has the focus, the release is lost.
TEST_F(QtWindowsTest, KnowsAHeldKeyByItsTimes) {
    Show();
    const auto send = [](QWidget& target, QEvent::Type type, quint64 time) {
        QKeyEvent event(type, Qt::Key_Return, {});
        event.setTimestamp(time);
        QCoreApplication::sendEvent(&target, &event);
    };
    auto& field = RealOf(window.Text1);
    send(field, QEvent::KeyPress, 100);
    for (const quint64 time : {140, 220}) { // the second one by another stroke
        send(field, QEvent::KeyRelease, 140);
        send(field, QEvent::KeyPress, time);
    }
    send(field, QEvent::KeyPress, 900);
    EXPECT_EQ(Raised(), (Log{"Command1", "Command1"}));
    send(field, QEvent::KeyPress, 2000);
    EXPECT_EQ(Raised(), Log{"Command1"});
    person.Soon([&] {
        QWidget& box = *QApplication::activeModalWidget();
        send(box, QEvent::KeyRelease, 2300);
        send(*box.findChild<QPushButton*>(), QEvent::KeyPress, 2300);
        EXPECT_TRUE(box.isVisible());
        LeaveBox();
    });
    ShowBox();
}

TEST_F(QtWindowsTest, KeepsTypedTextWithinItsLength) {
    Show();
    for (const char* letter : {"1", "2", "3"})
        person.Type(window, {.Letter = letter});
    EXPECT_EQ(window.Text1.Text + " " + person.Text(window, window.Text1), "12 12");
}

// Qt is in the middle of the button's click when the window's real one could be deleted.
TEST_F(QtWindowsTest, RealWindowStaysWhileItsHandlerIsOnTheStack) {
    window.Command1.Click = [this] {
        ShowBox();
        for (int pass = 0; pass < 3; ++pass)
            Pump();
    };
    Show();
    Start(Other->Timer1, 50, [this] { Sample.IsLoaded() ? window.Unload() : LeaveBox(); });
    const QPointer<QWidget> real = QtPerson::RealOf(window);
    person.Click(window, window.Command1);
    EXPECT_NE(real, nullptr);
    EXPECT_FALSE(Sample.IsLoaded());
}

TEST_F(QtWindowsTest, EndLeavesEveryLoop) {
    window.Command1.Click = [&] {
        Other.ShowModal();
        window.Log.push_back("modal");
    };
    Start(window.Timer1, 1, [&] {
        window.Timer1.Disable();
        ShowBox();
        window.Log.push_back("box");
    });
    Start(window.Timer2, 30, [&] { Windows.End(); });
    Sample.Show();
    person.Soon([&] { person.Click(window, window.Command1); });
    Windows.Run();
    EXPECT_EQ(Raised(), (Log{"box", "modal"}));
    EXPECT_FALSE(person.Shows(window) || person.Shows(*Other));
}

// A tick that opens a box must not keep its own next one waiting; nor must a pump, which handles the ticks itself, keep
// those of a box that a click in it opens.
TEST_F(QtWindowsTest, TicksComeInNestedLoops) {
    int ticks = 0;
    const auto tick = [&] {
        if (++ticks == 1)
            ShowBox();
        else
            LeaveBox();
        window.Timer1.Disable();
    };
    window.Command1.Click = [&] {
        ticks = 1;
        Start(window.Timer1, 1, tick);
        ShowBox();
    };
    Show();
    Start(window.Timer1, 1, tick);
    Windows.WaitForEvents();
    EXPECT_EQ(ticks, 2);
    person.Soon([&] { person.Click(window, window.Command1); });
    Windows.WaitForEvents();
    EXPECT_EQ(ticks, 2);
}

TEST_F(QtWindowsTest, WaitReturnsForEventsAndShowsWhatHasChanged) {
    Show();
    std::string shown;
    Start(window.Timer1, 100, [&] {
        window.Timer1.Disable();
        shown = person.Text(window, window.Label1);
    });
    window.Label1.Caption = "new";
    Windows.WaitForEvents(); // painting the label is no event
    EXPECT_EQ(shown, "new");
    person.Soon([&] { person.Click(window, window.Command1); });
    Windows.WaitForEvents();
    EXPECT_EQ(Raised(), Log{"Command1"});
}

TEST_F(QtWindowsTest, KeepsACloseUntilHandlersMayRun) {
    Show();
    person.Soon([&] { person.Close(window); });
    int looks = 0;
    Windows.PaintUntil([&](std::int64_t) { return ++looks > 3; }, 1000);
    EXPECT_TRUE(window.IsLoaded());
    Pump();
    EXPECT_FALSE(window.IsLoaded());
}

} // namespace
} // namespace tarnwick::test

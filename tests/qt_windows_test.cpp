#include "platform/qt/QtLook.h"
#include "qt_person.h"
#include "window/Dialogs.h"

#include <QAccessible>
#include <QCheckBox>
#include <QCloseEvent>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QTableView>
#include <QTreeWidget>

#include <cstdlib>

int main(int count, char** arguments) {
    ::testing::InitGoogleTest(&count, arguments);
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    QApplication application(count, arguments);
    QApplication::setQuitOnLastWindowClosed(false);
    tarnwick::UseClassicLook(application);
    return RUN_ALL_TESTS();
}

namespace tarnwick::test {

INSTANTIATE_TYPED_TEST_SUITE_P(Qt, WindowContract, QtPerson);

} // namespace tarnwick::test

namespace tarnwick {

namespace {

const std::string Markup = "<b>R&D</b>\t[*]\xFF";
const QString MarkupShown = QStringLiteral("<b>R&D</b> [*]\uFFFD");

QString Spoken(QWidget& widget, QAccessible::Text what = QAccessible::Name) {
    return QAccessible::queryAccessibleInterface(&widget)->text(what);
}

using Log = std::vector<std::string>;

} // namespace

TEST_F(QtWindowsTest, ShowsEveryControlUnderItsNameAndInItsPlace) {
    window.Check1.Visible = false;
    window.Command2.Enabled = false;
    ShowSample();
    EXPECT_EQ(RealWindow("Sample")->size(), QSize(400, 400));
    for (const Control* control : window.Controls) {
        SCOPED_TRACE(control->Name);
        auto& widget = RealOf<QWidget>(*control);
        EXPECT_EQ(widget.isVisible(), control->Visible);
        EXPECT_EQ(widget.isEnabled(), control->Enabled);
        EXPECT_EQ(widget.pos(), QPoint(control->Place.Left / 15, control->Place.Top / 15));
        EXPECT_EQ(widget.parentWidget()->objectName().toStdString(), control->Container ? "Frame1" : "Sample");
    }
}

TEST_F(QtWindowsTest, ShowsDataAsPlainTextEverywhere) {
    window.Label1.Caption = Markup;
    window.Frame1.Caption = Markup;
    window.Label1.ToolTip = "<b>bold</b>";
    window.Title = Markup;
    window.Text1.MaxLength = 0;
    window.Text1.Text = Markup;
    window.Grid1.SetCellText(1, 1, Markup);
    window.Tree1.AddCheckNode(1, Markup);
    ShowSample();

    EXPECT_EQ(RealOf<QLabel>(window.Label1).textFormat(), Qt::PlainText);
    EXPECT_EQ(Spoken(RealOf<QLabel>(window.Label1)), MarkupShown);
    EXPECT_EQ(Spoken(RealOf<QGroupBox>(window.Frame1)), MarkupShown);
    EXPECT_EQ(RealOf<QLineEdit>(window.Text1).text(), MarkupShown);
    EXPECT_EQ(RealOf<QTableView>(window.Grid1).model()->index(0, 0).data().toString(), MarkupShown);
    EXPECT_EQ(RealOf<QTreeWidget>(window.Tree1).topLevelItem(0)->child(2)->text(0), MarkupShown);
    EXPECT_EQ(RealOf<QLabel>(window.Label1).toolTip(), QStringLiteral("<p>&lt;b&gt;bold&lt;/b&gt;</p>"));
    EXPECT_EQ(RealWindow("Sample")->windowTitle(), QStringLiteral("<b>R&D</b> [*][*]\uFFFD"));
}

TEST_F(QtWindowsTest, ShowsAtOnceWhatAClickHasChangedAndBreaksLinesAtItsOwnLineEndsOnly) {
    window.Label1.WordWrap = true;
    window.Command1.Click = [this] {
        window.Label1.Caption = "one\r\ntwo\nthree\rfour";
        window.Label2.Caption = "one\r\ntwo";
    };
    ShowSample();
    ClickOn(window.Command1);
    EXPECT_EQ(RealOf<QLabel>(window.Label1).text(), QStringLiteral("one\ntwo three four"));
    EXPECT_EQ(RealOf<QLabel>(window.Label2).text(), QStringLiteral("one two"));
}

TEST_F(QtWindowsTest, ShowsMenuAndMessageTextsAsTheyAre) {
    ShowSample();
    MenuEntry entry;
    entry.Caption = Markup;
    Menu menu{"menu", "Menu", {&entry}};
    QString shown;
    Soon([&] {
        shown = static_cast<QMenu*>(QApplication::activePopupWidget())->actions().first()->text();
        QApplication::activePopupWidget()->close();
    });
    PopUp(menu, *Sample);
    EXPECT_EQ(shown, QStringLiteral("<b>R&&D</b> [*]\uFFFD"));

    const std::string unbroken(255, 'x');
    Soon([&] {
        auto* box = static_cast<QMessageBox*>(QApplication::activeModalWidget());
        shown = box->text();
        EXPECT_EQ(box->textFormat(), Qt::PlainText);
        const auto* label = box->findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
        EXPECT_LE(label->fontMetrics().boundingRect(label->rect(), Qt::TextWordWrap, shown).width(), label->width());
        box->reject();
    });
    Machine.Windows.ShowMessage("Name: " + Markup + "\r\n" + unbroken, "T", MessageIcon::Critical, MessageButtons::Ok);
    EXPECT_EQ(shown.remove(QChar(0x200B)), "Name: " + MarkupShown + "\n" + QString::fromStdString(unbroken));
}

TEST_F(QtWindowsTest, ReadsWellToAScreenReader) {
    window.Label2.Caption = "Connecting...";
    ShowSample();
    EXPECT_EQ(Spoken(RealOf<QLabel>(window.Label2)), QStringLiteral("Connecting..."));
    EXPECT_EQ(Spoken(RealOf<QLabel>(window.Label2), QAccessible::Description), QStringLiteral("Status"));
    EXPECT_EQ(Spoken(RealOf<QLineEdit>(window.Text1)), QStringLiteral("Seconds"));

    QAccessibleInterface* grid = QAccessible::queryAccessibleInterface(&RealOf<QTableView>(window.Grid1));
    EXPECT_EQ(grid->text(QAccessible::Name), QStringLiteral("Rows"));
    ASSERT_NE(grid->tableInterface(), nullptr);
    EXPECT_EQ(grid->tableInterface()->rowCount(), 3);
    EXPECT_EQ(grid->tableInterface()->columnDescription(0), QStringLiteral("Name"));
    EXPECT_EQ(grid->tableInterface()->cellAt(1, 0)->text(QAccessible::Name), QStringLiteral("b"));

    QAccessibleInterface* tree = QAccessible::queryAccessibleInterface(&RealOf<QTreeWidget>(window.Tree1));
    EXPECT_EQ(tree->text(QAccessible::Name), QStringLiteral("Folders"));
    QAccessibleInterface* second = tree->tableInterface()->cellAt(2, 0);
    EXPECT_EQ(second->text(QAccessible::Name), QStringLiteral("Second"));
    EXPECT_TRUE(second->state().checkable);
    EXPECT_TRUE(second->state().checked);
}

TEST_F(QtWindowsTest, RaisesWhatTheUserDoes) {
    ShowSample();

    ClickOn(window.Command2);
    ClickOn(window.Label2);
    ClickOn(window.Check1, QPoint(5, 7));
    ClickOn(window.Option2, QPoint(5, 7));
    EXPECT_EQ(window.Log, (Log{"Command2", "Label2", "Check1", "Option2"}));
    EXPECT_EQ(window.Check1.Value, 1);
    EXPECT_TRUE(!window.Option1.Value && window.Option2.Value);
    ClickOn(window.Option1, QPoint(5, 7));
    EXPECT_TRUE(window.Option1.Value && !window.Option2.Value);

    QTest::keyClicks(&RealOf<QLineEdit>(window.Text1), "123");
    EXPECT_EQ(window.Text1.Text, "12");
    window.Text1.SelectAll();
    Machine.Windows.PumpEvents();
    QTest::keyClicks(&RealOf<QLineEdit>(window.Text1), "9");
    EXPECT_EQ(window.Text1.Text, "9");
}

TEST_F(QtWindowsTest, TakesTheKeyboard) {
    ShowSample();
    auto& tree = RealOf<QTreeWidget>(window.Tree1);
    auto& grid = RealOf<QTableView>(window.Grid1);

    QTest::keyClick(&RealOf<QLineEdit>(window.Text1), Qt::Key_Return); // the default button
    RealOf<QPushButton>(window.Command2).setFocus();
    QTest::keyClick(&RealOf<QPushButton>(window.Command2), Qt::Key_Return);
    QTest::keyClick(&tree, Qt::Key_Escape);
    QTest::keyClick(&tree, Qt::Key_Down);
    QTest::keyClick(&tree, Qt::Key_Space);
    EXPECT_EQ(window.Log, (Log{"Command1", "Command2", "Check 2 1 1"})); // the field first, then the handler
    EXPECT_NE(RealWindow("Sample"), nullptr);

    window.Log.clear();
    grid.setFocus();
    for (const int row : {1, 2}) {
        QTest::keyClick(&grid, Qt::Key_Down);
        EXPECT_EQ(window.Grid1.SelectedRow, row);
    }
    QTest::keyClick(&grid, Qt::Key_Menu);
    QTest::keyClick(&grid, Qt::Key_F10, Qt::ShiftModifier);
    QTest::keyClick(&grid, Qt::Key_Return);
    EXPECT_EQ(window.Log, (Log{"Button 2", "Button 2", "Command1"}));
}

TEST_F(QtWindowsTest, GoesThroughTheControlsInTabOrder) {
    ShowSample();
    QWidget* real = RealWindow("Sample");
    Log order;
    for (int step = 0; step < 7; ++step) {
        order.push_back(real->focusWidget()->objectName().toStdString());
        QTest::keyClick(real->focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(order, (Log{"Text1", "Command1", "Command2", "Grid1", "Tree1", "Check1", "Option1"}));
}

TEST_F(QtWindowsTest, RightButtonKeepsTheSelection) {
    ShowSample();
    auto& grid = RealOf<QTableView>(window.Grid1);
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, QPoint(20, 5));
    EXPECT_EQ(window.Grid1.SelectedRow, 1);
    for (const QPoint place : {QPoint(20, 40), QPoint(390, 60)})
        QTest::mouseClick(grid.viewport(), Qt::RightButton, {}, place);
    EXPECT_EQ(window.Grid1.SelectedRow, 1);
    EXPECT_TRUE(grid.selectionModel()->isRowSelected(0));
    EXPECT_EQ(window.Log, (Log{"Button 1", "Button 2", "Button 2"}));
}

TEST_F(QtWindowsTest, SelectionStaysWithItsRow) {
    ShowSample();
    auto& grid = RealOf<QTableView>(window.Grid1);
    const auto selected = [&] {
        Machine.Windows.Show(window);
        const QModelIndexList rows = grid.selectionModel()->selectedRows();
        return rows.isEmpty() ? "" : rows.first().data().toString().toStdString();
    };
    window.Grid1.SelectedRow = 1;
    EXPECT_EQ(selected(), "c");
    window.Grid1.Sort(1);
    EXPECT_EQ(selected(), "c");
    EXPECT_EQ(window.Grid1.SelectedRow, 3);
    window.Grid1.RemoveRow(1);
    EXPECT_EQ(selected(), "c");
    EXPECT_EQ(grid.model()->rowCount(), 2);
    window.Grid1.RemoveRow(2);
    EXPECT_EQ(selected(), "");
    EXPECT_EQ(window.Grid1.SelectedRow, 0);
}

TEST_F(QtWindowsTest, WritingFieldsIsNoInputAndInputMeetsThemAtOnce) {
    ShowSample();
    window.Check1.Value = 1;
    window.Option2.Value = true;
    window.Text1.Text = "12";
    window.Tree1.SetNodeCheck(2, 1);
    window.Grid1.SelectedRow = 2;
    Machine.Windows.Show(window);
    EXPECT_TRUE(RealOf<QCheckBox>(window.Check1).isChecked());
    EXPECT_TRUE(RealOf<QRadioButton>(window.Option2).isChecked());
    EXPECT_EQ(RealOf<QTreeWidget>(window.Tree1).topLevelItem(0)->child(0)->checkState(0), Qt::Checked);
    window.Command1.Enabled = false; // input meets the model as it is now: it isn't on the screen yet
    ClickOn(window.Command1);
    EXPECT_EQ(window.Log, Log{});
}

TEST_F(QtWindowsTest, UnloadsFromItsOwnHandler) {
    ShowSample();
    const std::shared_ptr<Window> kept = window.shared_from_this();
    window.Command1.Click = [this] {
        window.Unload();
        window.Log.push_back(Sample.IsLoaded() ? "loaded" : "gone");
    };
    auto& other = RealOf<QPushButton>(window.Command2);
    ClickOn(window.Command1);
    EXPECT_EQ(RealWindow("Sample"), nullptr);
    other.click(); // the real window is there until Qt deletes it
    EXPECT_EQ(window.Log, (Log{"gone"}));
}

// Qt is in the middle of the button's click when the window's real one could be deleted.
TEST_F(QtWindowsTest, RealWindowStaysWhileItsHandlerIsOnTheStack) {
    window.Command1.Click = [this] {
        ShowBox();
        for (int pass = 0; pass < 3; ++pass)
            Machine.Windows.PumpEvents();
    };
    Start(Other->Timer1, 50, [this] {
        if (Sample.IsLoaded())
            window.Unload();
        else
            QApplication::activeModalWidget()->close();
    });
    ShowSample();
    const QPointer<QWidget> real = RealWindow("Sample");
    ClickOn(window.Command1);
    EXPECT_NE(real, nullptr);
    EXPECT_FALSE(Sample.IsLoaded());
}

TEST_F(QtWindowsTest, CloseBoxUnloadsOnce) {
    int unloads = 0;
    window.Unloading = [&] { ++unloads; };
    ShowSample();
    const std::shared_ptr<Window> kept = window.shared_from_this();
    QWidget* real = RealWindow("Sample");
    QCloseEvent close;
    QCoreApplication::sendEvent(real, &close);
    EXPECT_FALSE(close.isAccepted());
    QCoreApplication::sendEvent(real, &close);
    EXPECT_EQ(unloads, 1);
    EXPECT_FALSE(Sample.IsLoaded());
    EXPECT_EQ(RealWindow("Sample"), nullptr);
}

TEST_F(QtWindowsTest, ModalWindowBlocksItsCallerUntilItIsUnloaded) {
    Other->Name = "Other";
    Other->Command1.Click = [this] { Other->Unload(); };
    Log& log = window.Log;
    window.Command1.Click = [this, &log] {
        Other.ShowModal();
        log.push_back(Other.IsLoaded() ? "loaded" : "gone");
    };
    ShowSample();
    Soon([&] {
        EXPECT_EQ(QApplication::activeModalWidget(), RealWindow("Other"));
        log.push_back("shown");
        QTest::mouseClick(&Real<QPushButton>(*Other, Other->Command1), Qt::LeftButton);
    });
    ClickOn(window.Command1);
    EXPECT_EQ(log, (Log{"shown", "gone"}));
}

TEST_F(QtWindowsTest, EndLeavesEveryLoop) {
    Other->Name = "Other";
    Log& log = window.Log;
    window.Command1.Click = [&] {
        Other.ShowModal();
        log.push_back("modal");
        Machine.Windows.WaitForEvents(); // would sleep for ever
        log.push_back("wait");
    };
    Start(window.Timer1, 1, [&] {
        window.Timer1.Disable();
        const MessageAnswer answer =
            Machine.Windows.ShowMessage("?", "?", MessageIcon::Question, MessageButtons::YesNo);
        log.push_back(answer == MessageAnswer::No ? "no" : "yes");
    });
    Start(window.Timer2, 30, [&] { Machine.Windows.End(); });
    Sample.Show();
    Soon([&] { RealOf<QPushButton>(window.Command1).click(); });
    Machine.Windows.Run();
    EXPECT_EQ(log, (Log{"no", "modal", "wait"}));
    EXPECT_EQ(RealWindow("Sample"), nullptr);
    EXPECT_EQ(RealWindow("Other"), nullptr);
}

// A tick that opens a message box must not keep the other ticks, nor its own next one, nor posted messages waiting.
TEST_F(QtWindowsTest, TicksAndMessagesComeInNestedLoops) {
    static int messages;
    messages = 0;
    Machine.Windows.InstallProcedure(window.Handle(), [](WindowHandle, std::uint32_t, std::int32_t, std::int32_t) {
        ++messages;
        return std::int32_t{0};
    });
    int ticks = 0;
    Start(window.Timer1, 1, [&] {
        ++ticks;
        Machine.Loop.Post({window.Handle(), 1, 0, 0});
        if (ticks == 1)
            ShowBox();
        else if (ticks == 3)
            QApplication::activeModalWidget()->close();
    });
    ShowSample();
    while (ticks < 3)
        Machine.Windows.WaitForEvents();
    EXPECT_EQ(ticks, 3);
    EXPECT_GE(messages, 2);
}

// The pump leaves the ticks alone that it handles itself, but not those of a box that a click in it opens.
TEST_F(QtWindowsTest, TicksComeInABoxThatAClickInAPumpOpens) {
    window.Command1.Click = [this] {
        Start(window.Timer1, 1, [this] {
            window.Timer1.Disable();
            window.Log.push_back("tick");
            QApplication::activeModalWidget()->close();
        });
        ShowBox();
    };
    ShowSample();
    Soon([this] { RealOf<QPushButton>(window.Command1).click(); });
    Machine.Windows.WaitForEvents();
    EXPECT_EQ(window.Log, (Log{"tick"}));
}

TEST_F(QtWindowsTest, WaitReturnsForEventsAndShowsWhatHasChanged) {
    ShowSample();
    QString shown;
    Start(window.Timer1, 100, [&] {
        window.Timer1.Disable();
        shown = RealOf<QLabel>(window.Label1).text();
    });
    window.Label1.Caption = "new";
    Machine.Windows.WaitForEvents(); // painting the label is no event
    EXPECT_EQ(shown, QStringLiteral("new"));
    Soon([&] { ClickOn(window.Command1); });
    Machine.Windows.WaitForEvents();
    EXPECT_EQ(window.Log, (Log{"Command1"}));
    Machine.Loop.Post({window.Handle(), 1, 0, 0});
    Machine.Windows.WaitForEvents();
    EXPECT_FALSE(Machine.Loop.HasMessages());
}

TEST_F(QtWindowsTest, AnswersOfAQuestion) {
    ShowSample();
    for (const auto& [key, answer] : {std::pair{Qt::Key_Return, MessageAnswer::No},
                                      {Qt::Key_Escape, MessageAnswer::No},
                                      {Qt::Key_Y, MessageAnswer::Yes}}) {
        Soon([key = key] {
            auto* box = static_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_TRUE(QTest::qWaitForWindowActive(box)); // access keys are the active window's
            QTest::keyClick(box, key, key == Qt::Key_Y ? Qt::AltModifier : Qt::NoModifier);
        });
        EXPECT_EQ(Machine.Windows.ShowMessage("?", "T", MessageIcon::Question, MessageButtons::YesNo), answer) << key;
    }
}

TEST_F(QtWindowsTest, MenuRaisesTheChosenEntryAndNeverAGreyedOne) {
    ShowSample();
    Log log;
    MenuEntry first, line, greyed, last;
    line.Separator = true;
    greyed.Enabled = false;
    for (MenuEntry* entry : {&first, &greyed, &last}) {
        entry->Caption = entry == &first ? "first" : entry == &greyed ? "greyed" : "last";
        entry->Click = [&log, entry] {
            log.push_back(entry->Caption + (QApplication::activePopupWidget() == nullptr ? "" : ", menu open"));
        };
    }
    Menu menu{"menu", "Menu", {&first, &line, &greyed, &last}};
    Soon([] {
        for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Down, Qt::Key_Return})
            QTest::keyClick(QApplication::activePopupWidget(), key);
    });
    PopUp(menu, *Sample);
    EXPECT_EQ(log, (Log{"last"}));
}

TEST_F(QtWindowsTest, MouseMovesReachTheControlUnderTheMouseAlone) {
    window.Label2.MouseMove = [this] { window.Log.push_back("label"); };
    window.Frame1.MouseMove = [this] { window.Log.push_back("frame"); };
    window.MouseMove = [this] { window.Log.push_back("window"); };
    ShowSample();
    for (QWidget* widget : {&RealOf<QWidget>(window.Label2), &RealOf<QWidget>(window.Text1),
                            &RealOf<QWidget>(window.Frame1), RealWindow("Sample")}) {
        const QPointF place(2, 2);
        QMouseEvent move(QEvent::MouseMove, place, widget->mapToGlobal(place), Qt::NoButton, {}, {});
        QCoreApplication::sendEvent(widget, &move);
    }
    EXPECT_EQ(window.Log, (Log{"label", "frame", "window"}));
}

} // namespace tarnwick

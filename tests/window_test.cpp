#include "Driver.h"

#include "report/Form6.h"
#include "text/Ascii.h"
#include "text/Text.h"
#include "text/Utf8.h"
#include "window/BoxText.h"
#include "window/Dialogs.h"
#include "window/Keyboard.h"
#include "window/Layout.h"
#include "window/Pace.h"

#include <set>

namespace tarnwick {
namespace {

using WindowTest = Program;

TEST_F(WindowTest, AGridSortsRegardlessOfCaseKeepsItsSelectionAndTellsOfEveryChange) {
    Grid grid;
    std::uint64_t revision = grid.Revision();
    const auto shows = [&](const std::string& expected) {
        EXPECT_NE(std::exchange(revision, grid.Revision()), grid.Revision()); // all that a front end looks at
        std::string texts;
        for (int row = 1; row <= grid.RowCount(); ++row)
            texts += grid.CellText(row, 1) + grid.CellText(row, 2);
        EXPECT_EQ(texts, expected);
    };
    for (const bool visible : {true, false}) {
        grid.AddColumn("A", 10, visible);
        shows("");
    }
    std::string all;
    for (const std::string cells : {"b1", "A2", "B3"}) {
        grid.AddRow();
        shows(all);
        grid.RemoveRow(grid.RowCount());
        grid.AddRow(grid.AddRecord({cells.substr(0, 1), cells.substr(1)}));
        shows(all += cells);
    }
    grid.SelectedRow = 3;
    for (int again = 0; again < 2; ++again) { // a second sort of a column doesn't reverse it
        grid.Sort(1);
        shows("A2b1B3");
        EXPECT_EQ(grid.SelectedRow, 3);
    }
    grid.RemoveRow(1);
    shows("b1B3");
    EXPECT_EQ(grid.SelectedRow, 2);
    for (const int none : {-1, 0, 9}) {
        grid.RemoveRow(none);
        grid.Sort(none);
        EXPECT_EQ(grid.CellText(none, 1) + grid.CellText(1, none), "");
    }
    grid.RemoveRow(1);
    shows("B3");
    grid.Sort(2);
    shows("B3");
    grid.ClearRows();
    shows("");
    EXPECT_EQ(grid.SelectedRow, 0);
    grid.Sort(1);
}

TEST_F(WindowTest, ATreeTellsOfEachNodeAndLeavesOutWhatItCantCount) {
    Tree tree;
    std::set<std::uint64_t> revisions{tree.Revision()};
    for (int node = 0; node < 40000; ++node) {
        node % 2 == 0 ? tree.AddCheckNode(0, "x") : tree.AddGroupNode("x");
        revisions.insert(tree.Revision());
    }
    EXPECT_EQ(tree.Nodes().Count(), 32767);
    EXPECT_EQ(revisions.size(), 32768U);
}

TEST_F(WindowTest, Utf8KeepsEveryCodeAtItsLengthsEnds) {
    const std::u32string codes = U"\u007F\u0080\u07FF\u0800\uFFFF\U00010000\U0010FFFF";
    std::string text;
    for (const char32_t code : codes)
        AppendUtf8(text, code);
    EXPECT_EQ(text, "\u007F\u0080\u07FF\u0800\uFFFF\U00010000\U0010FFFF");
    std::u32string read;
    for (std::size_t at = 0; at < text.size(); at += DecodeUtf8(text, at).Bytes)
        read += DecodeUtf8(text, at).Valid ? DecodeUtf8(text, at).Code : U'?';
    EXPECT_EQ(read, codes);
    EXPECT_EQ(ShownLine("a\u202Eb\u2066c\u2069\u202Ad\u2065"), "a\uFFFDb\uFFFDc\uFFFD\uFFFDd\u2065");
    EXPECT_EQ(Shortened("a\u00E9b", 2) + Shortened("a\u00E9", 2), "a\u00E9...a\u00E9");
    for (const char* bytes :
         {"\xC1\xBF", "\xE0\x9F\xBF", "\xED\xA0\x80", "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80", "\xC2", "\x80"})
        EXPECT_FALSE(DecodeUtf8(bytes, 0).Valid || IsAscii(bytes));
}

TEST_F(WindowTest, ABoxBreaksAndCutsOnlyALongText) {
    EXPECT_EQ(FittedToBox("Short\r\ntext").Text, "Short\r\ntext");
    EXPECT_EQ(FittedToBox("Short\r\ntext").Width, 0);
    const std::string line(100, 'w'); // as wide as a box
    const BoxText broken = FittedToBox("URL: " + line + line + "x");
    EXPECT_EQ(broken.Text, "URL: \r\n" + line + "\r\n" + line + "\r\nx");
    EXPECT_EQ(broken.Width, 800);
    std::string text;
    for (const char* name : {"a", "b", "c", "d"})
        text += std::string(1000, *name) + "\r\n";
    const std::string cut = FittedToBox(text).Text;
    EXPECT_LE(std::ranges::count(cut, '\n'), 420 / 16);
    EXPECT_TRUE(cut.find("d...") != std::string::npos) << "every line keeps its beginning";
}

TEST_F(WindowTest, TimersTickOnceAPassAndRefuseSenselessIntervals) {
    Form7.Load();
    Timer& timer = Form7->Timer1;
    int ticks = 0;
    timer.Tick = [&] { ++ticks; };
    const auto ticksAfter = [&](std::int64_t ms) {
        machine.Clock.Advance(ms);
        machine.Windows.PumpEvents();
        return std::exchange(ticks, 0);
    };
    EXPECT_FALSE(timer.SetInterval(0) || timer.SetInterval(-5));
    timer.Enable();
    EXPECT_EQ(ticksAfter(299), 0);
    EXPECT_EQ(ticksAfter(5000), 1); // many intervals late: the missed ticks are not made up
    EXPECT_EQ(ticksAfter(0), 0);
    timer.Disable();
    EXPECT_EQ(ticksAfter(5000), 0);
    timer.Enable(); // counts from zero
    EXPECT_EQ(ticksAfter(299), 0);
    EXPECT_TRUE(timer.SetInterval(100)); // and so does a new interval
    EXPECT_EQ(ticksAfter(99), 0);
    EXPECT_EQ(ticksAfter(1), 1);
    Form4->Timer1.Tick = [&] { timer.Disable(); };
    Form4->Timer1.SetInterval(50);
    Form4->Timer1.Enable();
    EXPECT_EQ(ticksAfter(200), 0); // due, but switched off by the tick before it
    timer.Enable();
    Form4->Timer1.Tick = [&] {
        Form4->Timer1.Disable();
        machine.Windows.PumpEvents();
    };
    EXPECT_EQ(ticksAfter(100), 1); // in the pump of the tick before it, and not once more
}

TEST_F(WindowTest, ThePaceFollowsTheCostOfDrawing) {
    Pace pace;
    for (const auto& [cost, wait] : {std::pair{0, 16}, {5, 50}, {100, 200}}) {
        pace.Done(1000 - cost, 1000);
        EXPECT_EQ(pace.Wait(1000), wait);
    }
    pace.Begin();
    EXPECT_EQ(pace.Wait(1000), 0);
}

TEST_F(WindowTest, AnAccessKeyIsTheLetterAfterASingleMark) {
    CommandButton button;
    for (const auto& [caption, key] :
         {std::pair{"&Go!", "G"}, {"A &&&b", "B"}, {"&&c", ""}, {"none", ""}, {"last&", ""}}) {
        button.Caption = caption;
        EXPECT_EQ(AccessKeyOf(button), key) << caption;
    }
    CheckBox box;
    OptionButton option;
    Label label;
    box.Caption = label.Caption = "&x";
    option.Caption = "&y";
    EXPECT_EQ(AccessKeyOf(box) + AccessKeyOf(option) + AccessKeyOf(label), "XY");
}

TEST_F(WindowTest, AKeyWithoutAButtonPressesNone) {
    Form9.Show(); // has no default button
    Form1.Show();
    Form1->Command1.Enabled = false;
    EXPECT_EQ(EffectOf({.Which = Key::Enter}, *Form9, nullptr).Press, nullptr);
    EXPECT_EQ(EffectOf({.Which = Key::Enter}, *Form1, nullptr).Press, nullptr);
    for (const KeyPress& key : {KeyPress{.Letter = "", .Alt = true}, {.Which = Key::Space}})
        EXPECT_FALSE(EffectOf(key, *Form1, nullptr).Handled);
}

TEST_F(WindowTest, AFieldTakesNoMoreThanItHoldsButWhatMakesALongTextShorter) {
    Form1.Show();
    TextBox& field = Form1->Text1; // of two characters
    for (const auto& [before, text, after] :
         {std::tuple{"12", "\u00E9\u00E9", "\u00E9\u00E9"}, {"1234", "5678", "1234"}, {"1234", "123", "123"}}) {
        field.Text = before;
        Input(*Form1).Edit(field, text);
        EXPECT_EQ(field.Text, after);
    }
}

TEST_F(WindowTest, OnlyAFrameOverTheWholeOfAControlHidesIt) {
    for (const Rect& by : {Rect{}, {15, 0, -15, 0}, {0, 15, 0, -15}, {0, 0, -15, 0}, {0, 0, 0, -15}}) {
        struct : Window {
            Label Label1;
            Frame Frame1;
        } window;
        ApplyLayout(
            window, {.Name = "Window"},
            {{window.Label1, "Label1", nullptr, {150, 150, 600, 300}},
             {window.Frame1, "Frame1", nullptr, {150 + by.Left, 150 + by.Top, 600 + by.Width, 300 + by.Height}}});
        EXPECT_EQ(IsShown(window, window.Label1), by != Rect());
    }
}

TEST_F(WindowTest, AWindowWithoutAFrameHasNoCloseBox) {
    Form9.Show();
    Input(*Form9).Close();
    EXPECT_TRUE(Form9.IsLoaded());
}

TEST_F(WindowTest, AWindowOutlivesTheHandlerThatUnloadsIt) {
    Form5.Hide(); // has no effect yet
    Window& window = Form5.Load();
    window.Raise(std::function<void()>([&window] {
        window.Unload();
        Form3.Hide();
        window.Unload(); // has no effect any more
        EXPECT_TRUE(*window.Name == "Form5" && !Form3->IsVisible());
    }));
}

// What a keyboard and a screen reader rely on, over every window.
TEST_F(WindowTest, EveryWindowIsWhole) {
    std::set<std::string> titles;
    for (WindowSlot* slot :
         std::initializer_list<WindowSlot*>{&Form1, &Form2, &Form3, &Form4, &Form5, &Form6, &Form7, &Form9}) {
        const Window& window = slot->Load();
        SCOPED_TRACE(*window.Name);
        EXPECT_EQ(window.Icon == "tarnwick.png", slot == &Form2 || slot == &Form4 || slot == &Form5 || slot == &Form7);
        EXPECT_TRUE(titles.insert(window.Title).second) << "two windows of one title";
        std::set<std::string> taken; // names, places in the tab order, access keys
        int defaults = 0;
        for (const Control* control : window.Controls) {
            SCOPED_TRACE(*control->Name);
            EXPECT_TRUE(taken.insert(control->Name).second);
            EXPECT_TRUE(control->TabIndex < 0 || taken.insert(std::to_string(control->TabIndex)).second);
            const auto& [left, top, width, height] = *control->Place;
            const Rect room = control->Container == nullptr ? Rect{0, 0, window.ClientWidth, window.ClientHeight}
                                                            : *(*control->Container)->Place;
            EXPECT_TRUE(slot == &Form2 || (left + width <= room.Width && top + height <= room.Height));
            const bool isButton = control->Kind == ControlKind::CommandButton;
            EXPECT_TRUE(!isButton || taken.insert("&" + AccessKeyOf(*control)).second);
            defaults += isButton && *static_cast<const CommandButton*>(control)->Default ? 1 : 0;
            EXPECT_FALSE(control->TabIndex >= 0 && (control->Caption + *control->AccessibleName).empty());
            const bool isBanner = control->BackColor.Role == ColorRole::ButtonShadow;
            EXPECT_TRUE(!isBanner || static_cast<const Label*>(control)->Alignment == Alignment::Center);
            const bool isPicture = control->Kind == ControlKind::PictureBox && slot != &Form6;
            EXPECT_TRUE(!isPicture || (static_cast<const PictureBox*>(control)->Picture == "side.jpg" &&
                                       *control->AccessibleName == (slot == &Form2 ? "" : "Tarnwick")));
        }
        EXPECT_FALSE(taken.contains("&")) << "a button without a key";
        EXPECT_EQ(defaults, slot == &Form2 || slot == &Form9 ? 0 : 1);
    }
    EXPECT_EQ(*Form4->Label8.AccessibleDescription, "Status");
}

} // namespace
} // namespace tarnwick

#include "Driver.h"

#include "report/Form6.h"
#include "window/Pace.h"
#include "window/Utf8.h"

#include <cctype>
#include <set>
#include <utility>

namespace tarnwick {
namespace {

using WindowTest = Program;

TEST_F(WindowTest, AGridSortsRegardlessOfCaseAndKeepsItsSelection) {
    Grid grid;
    std::uint64_t revision = grid.Revision();
    const auto shows = [&](const std::string& first, const std::string& second) {
        EXPECT_NE(std::exchange(revision, grid.Revision()), grid.Revision());
        std::string texts[2];
        for (int row = 1; row <= grid.RowCount(); ++row)
            for (const int column : {1, 2})
                texts[column - 1] += grid.CellText(row, column);
        EXPECT_EQ(texts[0] + texts[1], first + second);
    };
    grid.AddColumn("A", 10);
    grid.AddColumn("B", 10, false);
    for (const auto& [a, b] : {std::pair{"b", "1"}, {"A", "2"}, {"B", "3"}}) {
        grid.AddRow();
        grid.SetCellText(grid.RowCount(), 1, a);
        grid.SetCellText(grid.RowCount(), 2, b);
    }
    shows("bAB", "123");
    grid.SelectedRow = 3;
    for (int again = 0; again < 2; ++again) { // a second sort of a column doesn't reverse it
        grid.Sort(1);
        shows("AbB", "213");
        EXPECT_EQ(grid.SelectedRow, 3);
    }
    grid.RemoveRow(1);
    shows("bB", "13");
    EXPECT_EQ(grid.SelectedRow, 2);
    grid.RemoveRow(2);
    EXPECT_EQ(grid.SelectedRow, 0);
    for (const int none : {-1, 0, 9}) {
        grid.RemoveRow(none);
        grid.Sort(none);
        EXPECT_EQ(grid.CellText(none, 1) + grid.CellText(1, none), "");
    }
    shows("b", "1");
    grid.AddRow();
    shows("b", "1");
    grid.ClearRows();
    shows("", "");
    grid.Sort(1);
}

// A front end looks at the revision alone.
TEST_F(WindowTest, EveryChangeOfAGridOrATreeIsSeen) {
    Grid grid;
    grid.AddColumn("A", 10);
    const std::function<void()> changes[] = {[&] { grid.AddColumn("B", 10); },     [&] { grid.AddRow(); },
                                             [&] { grid.SetCellText(1, 1, "x"); }, [&] { grid.Sort(2); },
                                             [&] { grid.RemoveRow(1); },           [&] { grid.ClearRows(); }};
    for (const auto& change : changes) {
        const auto before = grid.Revision();
        change();
        EXPECT_NE(grid.Revision(), before);
    }
    Tree tree;
    auto before = tree.Revision();
    const std::function<void()> nodes[] = {[&] { tree.AddGroupNode("x"); }, [&] { tree.AddCheckNode(1, "y"); },
                                           [&] { tree.FinishNodes(); }};
    for (const auto& change : nodes) {
        change();
        EXPECT_NE(std::exchange(before, tree.Revision()), tree.Revision());
    }
}

TEST_F(WindowTest, Utf8KeepsEveryCodeAtItsLengthsEnds) {
    const std::pair<char32_t, std::string> codes[] = {{0x7F, "\x7F"},
                                                      {0x80, "\xC2\x80"},
                                                      {0x7FF, "\xDF\xBF"},
                                                      {0x800, "\xE0\xA0\x80"},
                                                      {0xFFFF, "\xEF\xBF\xBF"},
                                                      {0x10000, "\xF0\x90\x80\x80"},
                                                      {0x10FFFF, "\xF4\x8F\xBF\xBF"}};
    for (const auto& [code, bytes] : codes) {
        std::string text;
        AppendUtf8(text, code);
        EXPECT_EQ(text, bytes);
        const Utf8Character read = DecodeUtf8(bytes, 0);
        EXPECT_TRUE(read.Valid && read.Code == code && read.Bytes == bytes.size()) << bytes;
    }
    for (const char* bytes :
         {"\xC1\xBF", "\xE0\x9F\xBF", "\xED\xA0\x80", "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80", "\xC2"})
        EXPECT_FALSE(DecodeUtf8(bytes, 0).Valid);
}

TEST_F(WindowTest, ATreeLeavesOutWhatItCantCount) {
    Tree tree;
    for (int node = 0; node < 40000; ++node)
        node % 2 == 0 ? tree.AddCheckNode(0, "x") : tree.AddGroupNode("x");
    EXPECT_EQ(tree.Nodes().Count(), 32767);
}

TEST_F(WindowTest, TimersTickOnceAPassAndRefuseSenselessIntervals) {
    Form7.Load();
    Timer& timer = Form7->Timer1;
    int ticks = 0;
    timer.Tick = [&] { ++ticks; };
    EXPECT_FALSE(timer.SetInterval(0));
    EXPECT_FALSE(timer.SetInterval(-5));
    EXPECT_EQ(timer.Interval(), 300);
    timer.Enable();
    machine.Clock.Advance(299);
    machine.Windows.PumpEvents();
    EXPECT_EQ(ticks, 0);
    machine.Clock.Advance(5000); // many intervals late: the missed ticks are not made up
    machine.Windows.PumpEvents();
    machine.Windows.PumpEvents();
    EXPECT_EQ(ticks, 1);
    timer.Disable();
    machine.Clock.Advance(5000);
    machine.Windows.PumpEvents();
    timer.Enable(); // counts from zero
    machine.Windows.PumpEvents();
    EXPECT_EQ(ticks, 1);
    timer.SetInterval(100); // and so does a new interval
    machine.Clock.Advance(100);
    machine.Windows.PumpEvents();
    EXPECT_EQ(ticks, 2);
}

TEST_F(WindowTest, ThePaceFollowsTheCostOfDrawing) {
    Pace pace;
    for (const auto& [cost, wait] : {std::pair{0, 16}, {5, 50}, {100, 200}}) {
        pace.Done(1000 - cost, 1000);
        EXPECT_EQ(pace.Wait(1000), wait);
        EXPECT_EQ(pace.Wait(1001 + wait), 0);
    }
    pace.Begin();
    EXPECT_EQ(pace.Wait(1000), 0);
}

TEST_F(WindowTest, AnAccessKeyIsTheLetterAfterASingleMark) {
    CommandButton button;
    for (const auto& [caption, key] :
         {std::pair{"&Go!", "G"}, {"A && &b", "B"}, {"&&c", ""}, {"none", ""}, {"last&", ""}}) {
        button.Caption = caption;
        EXPECT_EQ(AccessKeyOf(button), key) << caption;
    }
}

TEST_F(WindowTest, AWindowOutlivesTheHandlerThatUnloadsIt) {
    Form9.Show();
    Form9Window& about = *Form9;
    about.Label10.Click = [&about] {
        about.Unload();
        EXPECT_EQ(about.Label3.Caption, "Tarnwick");
    };
    about.Raise(about.Label10.Click);
}

// What a keyboard and a screen reader rely on, over every window.
TEST_F(WindowTest, EveryWindowIsWhole) {
    WindowSlot* slots[] = {&Form1, &Form2, &Form3, &Form4, &Form5, &Form6, &Form7, &Form9};
    std::set<std::string> titles;
    for (WindowSlot* slot : slots) {
        const Window& window = slot->Load();
        SCOPED_TRACE(window.Name);
        EXPECT_EQ(window.Icon == "tarnwick.png", slot == &Form2 || slot == &Form4 || slot == &Form5 || slot == &Form7);
        EXPECT_TRUE(titles.insert(window.Title).second) << "two windows of one title";
        std::set<std::string> names;
        std::set<int> places;
        std::set<char> keys;
        int defaults = 0;
        for (const Control* control : window.Controls) {
            SCOPED_TRACE(control->Name);
            EXPECT_TRUE(names.insert(control->Name).second);
            EXPECT_TRUE(control->TabIndex < 0 || places.insert(control->TabIndex).second);
            const Rect& place = control->Place;
            const Rect room = control->Container == nullptr ? Rect{0, 0, window.ClientWidth, window.ClientHeight}
                                                            : control->Container->Place;
            if (slot != &Form2) {
                EXPECT_LE(place.Left + place.Width, room.Width);
                EXPECT_LE(place.Top + place.Height, room.Height);
            }
            if (control->Kind == ControlKind::CommandButton) {
                const std::size_t ampersand = control->Caption.find('&');
                ASSERT_NE(ampersand, std::string::npos);
                EXPECT_TRUE(keys.insert(static_cast<char>(std::tolower(control->Caption[ampersand + 1]))).second);
                defaults += static_cast<const CommandButton*>(control)->Default ? 1 : 0;
            }
            const bool hasNoText = control->Kind == ControlKind::Grid || control->Kind == ControlKind::Tree ||
                                   control->Kind == ControlKind::TextBox;
            EXPECT_FALSE(hasNoText && control->AccessibleName.empty());
        }
        EXPECT_EQ(defaults, slot == &Form2 || slot == &Form9 ? 0 : 1);
    }
}

} // namespace
} // namespace tarnwick

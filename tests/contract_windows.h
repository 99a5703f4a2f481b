#pragma once

// What a window must do on every desktop, written once against a person's hands and eyes. A front end's tests
// instantiate the suite for their Person.

#include "Person.h"

#include <initializer_list>

namespace tarnwick::test {

class WindowContract : public WindowFixture, public ::testing::WithParamInterface<PersonMaker> {
protected:
    WindowContract() : WindowFixture(GetParam()()) {}
};

TEST_P(WindowContract, RaisesWhatAPersonDoes) {
    Show();
    p.Click(w, w.Command2);
    p.Click(w, w.Check1);
    p.ClickNode(w, w.Tree1, 2);
    p.ClickHeader(w, w.Grid1, 3);
    p.ClickRow(w, w.Grid1, 2, 1);
    p.ClickRow(w, w.Grid1, 3, 2);
    EXPECT_EQ(Raised(), (Log{"Command2", "Check1", "Check 211", "Header 3", "Button 1", "Button 2"}));
    EXPECT_TRUE(w.Check1.Value == 1 && p.IsMarked(w, w.Check1));
    p.Click(w, w.Option2);
    EXPECT_TRUE(w.Option2.Value && !w.Option1.Value);
    p.Click(w, w.Option1);
    EXPECT_TRUE(w.Option1.Value && !w.Option2.Value && !p.IsMarked(w, w.Option2));
}

TEST_P(WindowContract, LetsNobodyReachWhatIsCoveredHiddenOrDisabled) {
    w.Frame2.Visible = true; // over the tree
    w.Command2.Enabled = false;
    w.Check1.Visible = false;
    w.Frame1.Enabled = false; // with the first field of the tab order
    Show();
    EXPECT_TRUE(p.HasFocus(w, w.Command1) && p.Reads(w, w.Command2));
    EXPECT_FALSE(p.Reads(w, w.Tree1) || p.Reads(w, w.Check1));
    for (int press = 0; press < 12; ++press) {
        Press(Key::Tab);
        p.Type(w, {.Letter = " "});
        p.Type(w, {.Which = Key::Down});
    }
    p.Click(w, w.Command2);
    PressAlt("t");
    p.ActOn(w, w.Command2);
    for (const std::string& entry : Raised())
        EXPECT_EQ(entry, "Command1"); // by Space
    EXPECT_EQ(w.Tree1.NodeCheck(2), 0);
}

TEST_P(WindowContract, GivesAHiddenOrBlockedWindowNoEvents) {
    Show();
    w.Command1.Click = [&] {
        w.Log.push_back("leaves");
        Sample.Hide();
    };
    p.Click(w, w.Command1);
    p.Click(w, w.Command1); // the second of two quick clicks
    p.ActOn(w, w.Command2);
    p.Close(w);
    EXPECT_EQ(Raised(), Log{"leaves"});
    EXPECT_TRUE(w.IsLoaded());

    Show();
    p.Soon([&] {
        p.Click(w, w.Command2);
        p.ActOn(w, w.Command2);
        p.Close(w);
        EXPECT_TRUE(p.Shows(*Other));
        Other.Unload();
    });
    Other.ShowModal();
    EXPECT_EQ(Raised(), Log{});
    p.Click(w, w.Command2);
    EXPECT_EQ(Raised(), Log{"Command2"});
}

TEST_P(WindowContract, CountsAClickForTheCaptionThatWasPressed) {
    Show();
    p.PressOn(w, w.Command1);
    w.Command1.Caption = "&Stop";
    p.LetGo(w, w.Command1);
    EXPECT_EQ(Raised(), Log{});
    p.Settle();
    p.Click(w, w.Command1);
    EXPECT_EQ(Raised(), Log{"Command1"});
    p.PressOn(w, w.Command1);
    p.LetGo(w, w.Command2); // moved off the button
    EXPECT_EQ(Raised(), Log{});
}

TEST_P(WindowContract, PressesOnceWithAHeldKey) {
    Show();
    p.Type(w, {.Which = Key::Enter});
    p.Type(w, {.Which = Key::Enter, .Repeated = true});
    PressAlt("t");
    PressAlt("t", true);
    EXPECT_EQ(Raised(), (Log{"Command1", "Command2"}));
    EXPECT_TRUE(p.HasFocus(w, w.Command2)); // as the access key gives it, so that Enter presses it now
    Press(Key::Enter);
    EXPECT_EQ(Raised(), Log{"Command2"});
}

TEST_P(WindowContract, MovesTheFocusInTabOrder) {
    w.Option1.Value = true;
    Show();
    for (const Control* next : std::initializer_list<const Control*>{&w.Text1, &w.Command1, &w.Command2, &w.Grid1,
                                                                     &w.Tree1, &w.Check1, &w.Option1, &w.Text1}) {
        EXPECT_TRUE(p.HasFocus(w, *next)) << next->Name;
        Press(Key::Tab);
    }
    Press(Key::Tab, true);
    Press(Key::Tab, true);
    EXPECT_TRUE(p.HasFocus(w, w.Option1));
    Press(Key::Down);
    EXPECT_TRUE(p.HasFocus(w, w.Option2) && w.Option2.Value && !w.Option1.Value);
    w.SetFocus(w.Check1);
    p.Settle();
    EXPECT_TRUE(p.HasFocus(w, w.Check1));
    w.Check1.Enabled = false;
    p.Settle();
    EXPECT_TRUE(p.HasFocus(w, w.Option2)); // the next that can have it
}

TEST_P(WindowContract, KeepsTheGridsSelectionWithItsRow) {
    Show();
    p.ClickRow(w, w.Grid1, 1, 1);
    w.Grid1.Sort(1);
    p.Settle();
    EXPECT_EQ(p.SelectedRow(w, w.Grid1), 3);
    p.ClickRow(w, w.Grid1, 0, 1);
    EXPECT_EQ(p.SelectedRow(w, w.Grid1), 3);
    EXPECT_EQ(w.Grid1.SelectedRow, 3);
    p.Type(w, {.Letter = "b"});
    EXPECT_EQ(w.Grid1.SelectedRow, 2);
    p.Type(w, {.Letter = "x"});
    EXPECT_EQ(w.Grid1.SelectedRow, 2);
    Raised();
    Press(Key::Menu);
    EXPECT_EQ(Raised(), Log{"Button 2"});
    w.Grid1.RemoveRow(2);
    p.Settle();
    EXPECT_EQ(p.SelectedRow(w, w.Grid1), 0);
}

TEST_P(WindowContract, ShowsWhatTheModelSays) {
    w.Text1.Text = "100"; // stored by hand; longer than the field takes
    Show();
    EXPECT_EQ(p.Text(w, w.Text1), "100");
    w.Title = "Other";
    w.Label1.Caption = "<b>R&D</b>\t\xFF";
    w.Tree1.SetNodeCheck(2, 1);
    w.Check1.Value = 1;
    w.Command1.Caption = "&Stop";
    w.Option2.Value = true;
    p.Settle();
    EXPECT_EQ(p.Title(w), "Other");
    EXPECT_EQ(p.Text(w, w.Label1), "<b>R&D</b> \xEF\xBF\xBD");
    EXPECT_EQ(p.Text(w, w.Command1), "&Stop");
    EXPECT_TRUE(p.IsTicked(w, w.Tree1, 2) && p.IsMarked(w, w.Check1) && p.IsMarked(w, w.Option2));
    EXPECT_EQ(Raised(), Log{}); // writing a field is no input
    w.Option2.Value = false;
    p.Settle();
    EXPECT_FALSE(p.IsMarked(w, w.Option2));
    EXPECT_EQ(w.Text1.Text, "100");
}

TEST_P(WindowContract, ShowsInTheFirstPassWhatAClickHasDone) {
    Show();
    std::string shown;
    w.Command1.Click = [&] {
        w.Label1.Caption = "Waiting...";
        Pump();
        shown = p.Text(w, w.Label1);
    };
    for (int click = 0; click < 3; ++click) { // also straight after the last time
        w.Label1.Caption = "before";
        shown.clear();
        p.Click(w, w.Command1);
        EXPECT_EQ(shown, "Waiting...");
    }
}

TEST_P(WindowContract, ClosesByItsCloseBoxUnlessItHasNone) {
    Show();
    w.Border = FrameStyle::None;
    p.Close(w);
    EXPECT_EQ(Raised(), Log{});
    w.Border = FrameStyle::FixedSingle;
    w.Command1.Click = [&] {
        p.Close(w);
        w.Log.push_back(w.IsLoaded() ? "loaded" : "gone"); // the object outlives its handler
    };
    p.Click(w, w.Command1);
    p.Settle();
    EXPECT_EQ(Raised(), (Log{"unload", "gone"}));
    EXPECT_FALSE(p.Shows(w));
}

TEST_P(WindowContract, AnswersWhatThePersonAnswers) {
    Show();
    for (const MessageAnswer answer : {MessageAnswer::Yes, MessageAnswer::No}) {
        p.Answer(answer);
        EXPECT_EQ(ShowMessage("<b>?</b>", "T", MessageIcon::Question, MessageButtons::YesNo), answer);
    }
    MenuEntry first{"first", "&First", false, true, [&] { w.Log.push_back("first"); }};
    MenuEntry grey{"grey", "Grey", false, false, [&] { w.Log.push_back("grey"); }};
    Menu menu{"menu", "Menu", {&first, &grey}};
    for (const int entry : {1, 2, 0}) {
        p.Choose(entry);
        PopUp(menu, w);
    }
    EXPECT_EQ(Raised(), Log{"first"});
}

TEST_P(WindowContract, GivesMouseMovesToTheControlUnderTheMouse) {
    w.MouseMove = [&] { w.Log.push_back("window"); };
    w.Frame1.MouseMove = [&] { w.Log.push_back("frame"); };
    w.Label1.MouseMove = [&] { w.Log.push_back("label"); };
    Show();
    p.MoveMouse(w, 300, 100);
    p.MoveMouse(w, 2700, 1000); // inside the frame, beside its controls
    p.MoveMouse(w, 300, 5500);
    EXPECT_EQ(Raised(), (Log{"label", "frame", "window"}));
}

TEST_P(WindowContract, OnlyPaintsWhileWorkIsUnderWay) {
    Show();
    Start(w.Timer1, 1, [&] { w.Log.push_back("tick"); });
    p.Soon([&] { p.ActOn(w, w.Command1); });
    w.Label1.Caption = "Connecting...";
    const auto look = [&](std::int64_t) {
        EXPECT_EQ(p.Text(w, w.Label1), "Connecting...");
        return false;
    };
    services().Windows.PaintUntil(look, 100);
    EXPECT_EQ(Raised(), Log{});
    for (int pass = 0; pass < 1000 && (w.Log.empty() || w.Log.back() != "tick"); ++pass)
        services().Windows.WaitForEvents();
    EXPECT_FALSE(Raised().empty());
}

TEST_P(WindowContract, TicksInEveryLoopAndNotAfterTheEnd) {
    Show();
    int ticks = 0;
    Start(w.Timer1, 5, [&] {
        ++ticks;
        Other.Unload();
    });
    Other.ShowModal(); // returns by the tick
    for (int pass = 0, before = ticks; pass < 100 && ticks == before; ++pass)
        services().Windows.WaitForEvents();
    EXPECT_GE(ticks, 2);
    services().Windows.End();
    ticks = 0;
    services().Windows.WaitForEvents(); // returns
    Other.ShowModal();
    EXPECT_EQ(ShowMessage("?", "T", MessageIcon::Question, MessageButtons::YesNo), MessageAnswer::No);
    p.Click(w, w.Command1);
    EXPECT_EQ(ticks, 0);
    EXPECT_EQ(Raised(), Log{});
}

} // namespace tarnwick::test

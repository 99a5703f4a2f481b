#pragma once

// What a window must do on every desktop, written once against a person's hands and eyes. A front end's tests bring a
// Person of their own and instantiate the suite for it.

#include "SampleWindow.h"
#include "window/Dialogs.h"
#include "window/Keyboard.h"
#include "window/Text.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace tarnwick::test {

// Works with the windows as the desktop lets a person do it. A gesture has been handled when it returns, up to a loop
// that it has opened. The services are in use for as long as the person lives.
class Person {
public:
    virtual ~Person() = default;

    // Hands. A control gets the left button in its middle.
    virtual void PressOn(const Window& window, const Control& control) = 0;
    virtual void LetGo(const Window& window, const Control& control) = 0;
    virtual void ClickRow(const Window& window, const GridControl& grid, int row) = 0; // 0: below the last one
    virtual void RightClickRow(const Window& window, const GridControl& grid, int row) = 0;
    virtual void ClickHeader(const Window& window, const GridControl& grid, int column) = 0;
    virtual void ClickNode(const Window& window, const TreeControl& tree, int node) = 0; // its check box
    virtual void MoveMouse(const Window& window, int x, int y) = 0;                      // twips
    virtual void Type(const Window& window, const KeyPress& key) = 0;
    virtual void Close(const Window& window) = 0;                         // as the window manager asks for it
    virtual void ActOn(const Window& window, const Control& control) = 0; // a screen reader's press
    // Waits until the screen shows what the model says.
    virtual void Settle() = 0;
    // Acts as soon as the next loop runs, also one of a box or a menu that is yet to open.
    virtual void Soon(std::function<void()> act) = 0;
    // Answers the next box, chooses an entry of the next menu (from 1, 0 leaves it).
    virtual void Answer(MessageAnswer answer) = 0;
    virtual void Choose(int entry) = 0;

    // Eyes.
    virtual bool Shows(const Window& window) = 0;
    virtual std::string Title(const Window& window) = 0;
    virtual std::string Text(const Window& window, const Control& control) = 0; // "&" as in the caption
    virtual bool IsMarked(const Window& window, const Control& control) = 0;    // a check box or an option button
    virtual bool IsTicked(const Window& window, const TreeControl& tree, int node) = 0;
    virtual int SelectedRow(const Window& window, const GridControl& grid) = 0;
    virtual bool HasFocus(const Window& window, const Control& control) = 0;
    virtual bool Reads(const Window& window, const Control& control) = 0; // exists for a screen reader

    void Click(const Window& window, const Control& control) {
        PressOn(window, control);
        LetGo(window, control);
    }
};

using Log = std::vector<std::string>;

template <class Human> class WindowContract : public ::testing::Test {
protected:
    void Show() {
        Sample.Show();
        person.Settle();
    }
    static void Pump() { services().Windows.PumpEvents(); }
    // What has been raised since the last call.
    Log Raised() { return std::exchange(window.Log, {}); }
    void Press(Key key, bool shift = false) { person.Type(window, {.Which = key, .Shift = shift}); }
    void PressAlt(const char* letter, bool repeated = false) {
        person.Type(window, {.Letter = letter, .Alt = true, .Repeated = repeated});
    }

    WindowObject<SampleWindow> Sample; // both outlive the person, at whose end their windows go
    WindowObject<SampleWindow> Other;
    Human person;
    std::shared_ptr<SampleWindow> kept = std::static_pointer_cast<SampleWindow>(Sample->shared_from_this());
    SampleWindow& window = *kept;
};

TYPED_TEST_SUITE_P(WindowContract);

TYPED_TEST_P(WindowContract, RaisesWhatAPersonDoes) {
    auto& w = this->window;
    auto& p = this->person;
    this->Show();
    p.Click(w, w.Command2);
    p.Click(w, w.Check1);
    p.ClickNode(w, w.Tree1, 2);
    p.ClickHeader(w, w.Grid1, 3);
    p.ClickRow(w, w.Grid1, 2);
    p.RightClickRow(w, w.Grid1, 3);
    EXPECT_EQ(this->Raised(), (Log{"Command2", "Check1", "Check 2 1 1", "Header 3", "Button 1", "Button 2"}));
    EXPECT_EQ(w.Check1.Value, 1);
    EXPECT_TRUE(p.IsMarked(w, w.Check1));
    EXPECT_EQ(w.Grid1.SelectedRow, 2);
    p.Click(w, w.Option2);
    EXPECT_TRUE(w.Option2.Value && !w.Option1.Value);
    p.Click(w, w.Option1);
    EXPECT_TRUE(w.Option1.Value && !w.Option2.Value && !p.IsMarked(w, w.Option2));
}

TYPED_TEST_P(WindowContract, LetsNobodyReachWhatIsCoveredHiddenOrDisabled) {
    auto& w = this->window;
    auto& p = this->person;
    w.Frame2.Visible = true; // over the tree
    w.Command2.Enabled = false;
    w.Check1.Visible = false;
    w.Frame1.Enabled = false; // with the first field of the tab order
    this->Show();
    EXPECT_TRUE(p.HasFocus(w, w.Command1));
    EXPECT_FALSE(p.Reads(w, w.Tree1));
    EXPECT_FALSE(p.Reads(w, w.Check1));
    EXPECT_TRUE(p.Reads(w, w.Command2));
    for (int press = 0; press < 12; ++press) {
        this->Press(Key::Tab);
        p.Type(w, {.Letter = " "});
        p.Type(w, {.Which = Key::Down});
    }
    p.Click(w, w.Command2);
    this->PressAlt("t");
    p.ActOn(w, w.Command2);
    for (const std::string& entry : this->Raised())
        EXPECT_EQ(entry, "Command1"); // by Space
    EXPECT_EQ(w.Tree1.NodeCheck(2), 0);
    w.Grid1.Visible = false;
    this->Press(Key::Menu);
    EXPECT_EQ(this->Raised(), Log{});
}

TYPED_TEST_P(WindowContract, GivesAHiddenOrBlockedWindowNoEvents) {
    auto& w = this->window;
    auto& p = this->person;
    this->Show();
    w.Command1.Click = [&] {
        w.Log.push_back("leaves");
        this->Sample.Hide();
    };
    p.PressOn(w, w.Command1);
    p.LetGo(w, w.Command1);
    p.Click(w, w.Command1); // the second of two quick clicks
    p.ActOn(w, w.Command2);
    p.Close(w);
    EXPECT_EQ(this->Raised(), Log{"leaves"});
    EXPECT_TRUE(w.IsLoaded());

    this->Show();
    p.Soon([&] {
        p.Click(w, w.Command2);
        p.ActOn(w, w.Command2);
        p.Close(w);
        EXPECT_TRUE(p.Shows(*this->Other));
        this->Other.Unload();
    });
    this->Other.ShowModal();
    EXPECT_EQ(this->Raised(), Log{});
    p.Click(w, w.Command2);
    EXPECT_EQ(this->Raised(), Log{"Command2"});
}

TYPED_TEST_P(WindowContract, CountsAClickForTheCaptionThatWasPressed) {
    auto& w = this->window;
    auto& p = this->person;
    this->Show();
    p.PressOn(w, w.Command1);
    w.Command1.Caption = "&Stop";
    p.LetGo(w, w.Command1);
    EXPECT_EQ(this->Raised(), Log{});
    p.Settle();
    p.Click(w, w.Command1);
    EXPECT_EQ(this->Raised(), Log{"Command1"});
    p.PressOn(w, w.Command1);
    p.LetGo(w, w.Command2); // moved off the button
    EXPECT_EQ(this->Raised(), Log{});
}

TYPED_TEST_P(WindowContract, PressesOnceWithAHeldKey) {
    auto& w = this->window;
    auto& p = this->person;
    this->Show();
    p.Type(w, {.Which = Key::Enter});
    p.Type(w, {.Which = Key::Enter, .Repeated = true});
    this->PressAlt("t");
    this->PressAlt("t", true);
    EXPECT_EQ(this->Raised(), (Log{"Command1", "Command2"}));
    EXPECT_TRUE(p.HasFocus(w, w.Command2)); // as the access key gives it, so that Enter presses it now
    this->Press(Key::Enter);
    EXPECT_EQ(this->Raised(), Log{"Command2"});
}

TYPED_TEST_P(WindowContract, MovesTheFocusInTabOrder) {
    auto& w = this->window;
    auto& p = this->person;
    w.Option1.Value = true;
    this->Show();
    for (const Control* next : std::initializer_list<const Control*>{&w.Text1, &w.Command1, &w.Command2, &w.Grid1,
                                                                     &w.Tree1, &w.Check1, &w.Option1, &w.Text1}) {
        EXPECT_TRUE(p.HasFocus(w, *next)) << next->Name;
        this->Press(Key::Tab);
    }
    this->Press(Key::Tab, true);
    this->Press(Key::Tab, true);
    EXPECT_TRUE(p.HasFocus(w, w.Option1));
    this->Press(Key::Down);
    EXPECT_TRUE(p.HasFocus(w, w.Option2) && w.Option2.Value && !w.Option1.Value);
    w.SetFocus(w.Check1);
    p.Settle();
    EXPECT_TRUE(p.HasFocus(w, w.Check1));
    w.Check1.Enabled = false;
    p.Settle();
    EXPECT_TRUE(p.HasFocus(w, w.Option2)); // the next that can have it
}

TYPED_TEST_P(WindowContract, KeepsTheGridsSelectionWithItsRow) {
    auto& w = this->window;
    auto& p = this->person;
    this->Show();
    p.ClickRow(w, w.Grid1, 1);
    w.Grid1.Sort(1);
    p.Settle();
    EXPECT_EQ(p.SelectedRow(w, w.Grid1), 3);
    p.ClickRow(w, w.Grid1, 0);
    EXPECT_EQ(p.SelectedRow(w, w.Grid1), 3);
    EXPECT_EQ(w.Grid1.SelectedRow, 3);
    p.Type(w, {.Letter = "b"});
    EXPECT_EQ(w.Grid1.SelectedRow, 2);
    p.Type(w, {.Letter = "x"});
    EXPECT_EQ(w.Grid1.SelectedRow, 2);
    this->Raised();
    this->Press(Key::Menu);
    EXPECT_EQ(this->Raised(), Log{"Button 2"});
    w.Grid1.RemoveRow(2);
    p.Settle();
    EXPECT_EQ(p.SelectedRow(w, w.Grid1), 0);
}

TYPED_TEST_P(WindowContract, ShowsWhatTheModelSays) {
    auto& w = this->window;
    auto& p = this->person;
    w.Text1.Text = "100"; // stored by hand; longer than the field takes
    this->Show();
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
    EXPECT_EQ(this->Raised(), Log{}); // writing a field is no input
    w.Option2.Value = false;
    p.Settle();
    EXPECT_FALSE(p.IsMarked(w, w.Option2));
    EXPECT_EQ(w.Text1.Text, "100");
}

TYPED_TEST_P(WindowContract, ShowsInTheFirstPassWhatAClickHasDone) {
    auto& w = this->window;
    auto& p = this->person;
    this->Show();
    std::string shown;
    w.Command1.Click = [&] {
        w.Label1.Caption = "Waiting...";
        this->Pump();
        shown = p.Text(w, w.Label1);
    };
    for (int click = 0; click < 3; ++click) { // also straight after the last time
        w.Label1.Caption = "before";
        shown.clear();
        p.Click(w, w.Command1);
        EXPECT_EQ(shown, "Waiting...");
    }
}

TYPED_TEST_P(WindowContract, ClosesByItsCloseBoxUnlessItHasNone) {
    auto& w = this->window;
    auto& p = this->person;
    int unloaded = 0;
    w.Unloading = [&] { ++unloaded; };
    this->Show();
    w.Border = FrameStyle::None;
    p.Close(w);
    EXPECT_EQ(unloaded, 0);
    w.Border = FrameStyle::FixedSingle;
    w.Command1.Click = [&] {
        w.Log.push_back("in");
        p.Close(w);
        w.Log.push_back(w.IsLoaded() ? "loaded" : "gone"); // the object outlives its handler
    };
    p.Click(w, w.Command1);
    p.Settle();
    EXPECT_EQ(this->Raised(), (Log{"in", "gone"}));
    EXPECT_EQ(unloaded, 1);
    EXPECT_FALSE(p.Shows(w));
}

TYPED_TEST_P(WindowContract, AnswersWhatThePersonAnswers) {
    auto& w = this->window;
    auto& p = this->person;
    this->Show();
    const auto ask = [] { return ShowMessage("<b>?</b>", "T", MessageIcon::Question, MessageButtons::YesNo); };
    for (const MessageAnswer answer : {MessageAnswer::Yes, MessageAnswer::No}) {
        p.Answer(answer);
        EXPECT_EQ(ask(), answer);
    }
    MenuEntry first{"first", "&First", false, true, [&] { w.Log.push_back("first"); }};
    MenuEntry grey{"grey", "Grey", false, false, [&] { w.Log.push_back("grey"); }};
    Menu menu{"menu", "Menu", {&first, &grey}};
    for (const int entry : {1, 2, 0}) {
        p.Choose(entry);
        PopUp(menu, w);
    }
    EXPECT_EQ(this->Raised(), Log{"first"});
}

TYPED_TEST_P(WindowContract, GivesMouseMovesToTheControlUnderTheMouse) {
    auto& w = this->window;
    auto& p = this->person;
    w.MouseMove = [&] { w.Log.push_back("window"); };
    w.Frame1.MouseMove = [&] { w.Log.push_back("frame"); };
    w.Label1.MouseMove = [&] { w.Log.push_back("label"); };
    this->Show();
    p.MoveMouse(w, 300, 100);
    p.MoveMouse(w, 2700, 1000); // inside the frame, beside its controls
    p.MoveMouse(w, 300, 5500);
    EXPECT_EQ(this->Raised(), (Log{"label", "frame", "window"}));
}

TYPED_TEST_P(WindowContract, TicksInEveryLoopAndNotAfterTheEnd) {
    auto& w = this->window;
    auto& p = this->person;
    this->Show();
    int ticks = 0;
    w.Timer1.Tick = [&] {
        ++ticks;
        this->Other.Unload();
    };
    w.Timer1.SetInterval(5);
    w.Timer1.Enable();
    this->Other.ShowModal(); // returns by the tick
    for (int pass = 0, before = ticks; pass < 100 && ticks == before; ++pass)
        services().Windows.WaitForEvents();
    EXPECT_GE(ticks, 2);
    services().Windows.End();
    ticks = 0;
    services().Windows.WaitForEvents(); // returns
    this->Other.ShowModal();
    EXPECT_EQ(ShowMessage("?", "T", MessageIcon::Question, MessageButtons::YesNo), MessageAnswer::No);
    p.Click(w, w.Command1);
    EXPECT_EQ(ticks, 0);
    EXPECT_EQ(this->Raised(), Log{});
}

REGISTER_TYPED_TEST_SUITE_P(WindowContract, RaisesWhatAPersonDoes, LetsNobodyReachWhatIsCoveredHiddenOrDisabled,
                            GivesAHiddenOrBlockedWindowNoEvents, CountsAClickForTheCaptionThatWasPressed,
                            PressesOnceWithAHeldKey, MovesTheFocusInTabOrder, KeepsTheGridsSelectionWithItsRow,
                            ShowsWhatTheModelSays, ShowsInTheFirstPassWhatAClickHasDone,
                            ClosesByItsCloseBoxUnlessItHasNone, AnswersWhatThePersonAnswers,
                            GivesMouseMovesToTheControlUnderTheMouse, TicksInEveryLoopAndNotAfterTheEnd);

} // namespace tarnwick::test

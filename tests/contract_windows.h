#pragma once

// What a window must do on every desktop, written once for a sample window and a person's hands and eyes before it.
// Each front end's tests include it and make their Person.

#include "text/Text.h"
#include "window/Dialogs.h"
#include "window/Keyboard.h"
#include "window/Layout.h"

#include <gtest/gtest.h>

namespace tarnwick::test {

using Log = std::vector<std::string>;

// A window with a control of every kind, whose handlers write down what was raised.
class SampleWindow : public Window {
public:
    SampleWindow() {
        ClientWidth = ClientHeight = 6000;
        Timers = {&Timer1};
        ApplyLayout(*this, {{Shape1, "Shape1", nullptr, {0, 0, 6000, 6000}},
                            {Line1, "Line1", nullptr, {0, 5400, 6000, 0}},
                            {Label1, "Label1", nullptr, {0, 0, 1500, 210}},
                            {Frame1, "Frame1", nullptr, {0, 300, 3000, 900}},
                            {Label2, "Label2", &Frame1, {150, 300, 1500, 210}},
                            {Text1, "Text1", &Frame1, {1650, 300, 600, 285}, "", 0},
                            {Option1, "Option1", &Frame1, {0, 0, 900, 225}, "", 6},
                            {Option2, "Option2", nullptr, {3000, 0, 900, 225}, "", 7},
                            {Check1, "Check1", nullptr, {3000, 300, 900, 225}, "", 5},
                            {Picture1, "Picture1", nullptr, {4500, 0, 1500, 1500}},
                            {Grid1, "Grid1", nullptr, {0, 1500, 6000, 1500}, "", 3},
                            {Tree1, "Tree1", nullptr, {0, 3000, 6000, 1500}, "", 4},
                            {Frame2, "Frame2", nullptr, {0, 3000, 6000, 1500}, "", -1, false},
                            {Command2, "Command2", nullptr, {0, 4800, 900, 375}, "&Two", 2},
                            {Command1, "Command1", nullptr, {1500, 4800, 900, 375}, "&One", 1}});
        Command1.Default = Label2.WordWrap = true;
        Text1.MaxLength = 2;
        Text1.AccessibleName = "Seconds";
        Label2.AccessibleDescription = "Status";
        for (Control* control : Controls)
            control->Click = [this, control] { Log.push_back(control->Name); };
        Tree1.AddGroupNode("Heading");
        Tree1.AddCheckNode(1, "First", 0);
        Tree1.AddCheckNode(1, "Second", 1);
        Tree1.FinishNodes();
        Tree1.Check = [this](int node, int value) { Write("Check", 100 * node + 10 * value + Tree1.NodeCheck(node)); };
        for (const char* column : {"Name", "Hidden", "Folder"})
            Grid1.AddColumn(column, 90, *column != 'H');
        for (const char* name : {"c", "b", "a"}) {
            Grid1.AddRow();
            Grid1.SetCellText(Grid1.RowCount(), 1, name);
        }
        Grid1.HeaderClick = [this](int column) { Write("Header", column); };
        Grid1.MouseButton = [this](int button, int, int, int) { Write("Button", button); };
    }

    Label Label1, Label2;
    Frame Frame1, Frame2; // Frame2, hidden at first, lies over the tree
    CommandButton Command1, Command2;
    CheckBox Check1;
    OptionButton Option1, Option2;
    TextBox Text1;
    PictureBox Picture1;
    Shape Shape1;
    Line Line1;
    GridControl Grid1;
    TreeControl Tree1;
    Timer Timer1;

    test::Log Log;

private:
    void OnUnload() override { Log.push_back("unload"); }
    void Write(const std::string& event, int number) { Log.push_back(event + " " + std::to_string(number)); }
};

// Loads the one object that it is there for.
struct SampleSlot : WindowSlot {
    const std::shared_ptr<SampleWindow> Object = std::make_shared<SampleWindow>();
    std::shared_ptr<Window> Make() const override { return Object; }
};

// Works with the window as the desktop lets a person do it. A gesture has been handled when it returns, up to a loop
// that it has opened. The services are in use for as long as the person lives.
class Person {
public:
    explicit Person(SampleWindow& sample) : w(sample) {}
    virtual ~Person() = default;

    // Hands. A control gets the left button in its middle.
    virtual void PressOn(Control& control) = 0;
    virtual void LetGo(Control& control) = 0;
    // A click on what is then shown anew before the click is handled.
    virtual void ClickEarly(Control& control, const std::function<void()>& change) = 0;
    // Row 0 is below the last one; the buttons are 1 and 2, the right one.
    virtual void ClickRow(int row, int button) = 0;
    virtual void ClickNode(int node) = 0;     // its check box
    virtual void MoveMouse(int x, int y) = 0; // twips
    virtual void Type(const KeyPress& key) = 0;
    virtual void Close() = 0;                 // as the window manager asks for it
    virtual void ActOn(Control& control) = 0; // a screen reader's press
    // Waits until the screen shows what the model says.
    virtual void Settle() = 0;
    // Acts as soon as the next loop runs, also that of a box or a menu that is yet to open.
    virtual void Soon(std::function<void()> act) = 0;

    // Eyes.
    virtual bool Shows(const Window& window) = 0;
    virtual std::string Text(const Control& control) = 0; // "&" as in the caption
    virtual bool IsMarked(const Control& control) = 0;    // a check box or an option button
    virtual int SelectedRow() = 0;
    virtual bool HasFocus(const Control& control) = 0;
    virtual bool Reads(const Control& control) = 0; // exists for a screen reader

    void Click(Control& control) {
        PressOn(control);
        LetGo(control);
    }

protected:
    SampleWindow& w;
};

// The person of the front end that is tested.
std::unique_ptr<Person> MakePerson(SampleWindow& sample);

// The sample window before a person; both are there for as long as the test.
class WindowFixture : public ::testing::Test {
protected:
    WindowFixture() { Sample.Load(); }

    void Show() {
        Sample.Show();
        p.Settle();
    }
    static void Start(Timer& timer, int ms, std::function<void()> tick) {
        timer.Tick = std::move(tick);
        timer.SetInterval(ms);
        timer.Enable();
    }
    // What has been raised since the last call.
    Log Raised() { return std::exchange(w.Log, {}); }

    SampleSlot Sample, Other; // outlive the person, at whose end their windows are given up
    SampleWindow& w = *Sample.Object;
    const std::unique_ptr<Person> person_ = MakePerson(w);
    Person& p = *person_;
};

using WindowContract = WindowFixture;

TEST_F(WindowContract, RaisesWhatAPersonDoes) {
    Show();
    for (const char* letter : {"1", " ", "3"})
        p.Type({.Letter = letter, .Repeated = *letter == ' '}); // a field takes a held key's repetitions
    EXPECT_EQ(w.Text1.Text + "," + p.Text(w.Text1), "1 ,1 ");   // longer than the field takes
    w.Text1.Text = "5";
    p.Type({.Letter = "6"}); // to what the model says now
    EXPECT_EQ(w.Text1.Text.size(), 2U);
    w.Command2.Caption = "&Uno";
    p.Settle();
    p.ActOn(w.Command2);
    p.Click(w.Command1);
    p.Click(w.Label1);
    p.Click(w.Check1);
    p.ClickNode(2);
    p.ClickRow(2, 1);
    p.ClickRow(3, 2);
    EXPECT_EQ(Raised(), (Log{"Command2", "Command1", "Label1", "Check1", "Check 211", "Button 1", "Button 2"}));
    EXPECT_TRUE(w.Check1.Value == 1 && p.IsMarked(w.Check1));
    p.Click(w.Option2);
    p.Click(w.Option1);
    EXPECT_TRUE(w.Option1.Value && !w.Option2.Value && !p.IsMarked(w.Option2));
}

TEST_F(WindowContract, LetsNobodyReachWhatIsCoveredHiddenOrDisabled) {
    w.Frame2.Visible = true; // over the tree
    w.Command2.Enabled = false;
    w.Check1.Visible = false;
    w.Frame1.Enabled = false; // with the first field of the tab order
    Show();
    const Rect tree = w.Frame2.Place;
    for (const Rect& by : {Rect{15, 0, -15, 0}, {0, 15, 0, -15}, {0, 0, -15, 0}, {0, 0, 0, -15}, {}}) {
        w.Frame2.Place = {tree.Left + by.Left, tree.Top + by.Top, tree.Width + by.Width, tree.Height + by.Height};
        p.Settle();
        EXPECT_EQ(p.Reads(w.Tree1), by != Rect()) << "covered in part";
    }
    EXPECT_TRUE(p.HasFocus(w.Command1) && p.Reads(w.Command2));
    EXPECT_FALSE(p.Reads(w.Check1));
    for (int press = 0; press < 12; ++press) {
        p.Type({.Which = Key::Tab});
        p.Type({.Letter = " "});
        p.Type({.Which = Key::Down});
    }
    p.Click(w.Command2);
    p.Type({.Letter = "t", .Alt = true});
    p.ActOn(w.Command2);
    const Log raised = Raised();
    EXPECT_TRUE(!raised.empty() && raised == Log(raised.size(), "Command1")); // by Space
}

TEST_F(WindowContract, ClosesByItsCloseBoxButGivesAHiddenOrBlockedWindowNoEvents) {
    Show();
    w.Command1.Click = [&] {
        w.Log.push_back("leaves");
        Sample.Hide();
    };
    p.Click(w.Command1);
    p.Click(w.Command1); // the second of two quick clicks
    p.ActOn(w.Command2);
    p.Close();
    EXPECT_EQ(Raised(), Log{"leaves"});

    Show();
    w.SetFocus(w.Command2);
    p.Settle();
    p.Soon([&] {
        p.Click(w.Command2);
        p.ActOn(w.Command2);
        p.Type({.Letter = "t", .Alt = true});
        p.Type({.Which = Key::Tab});
        p.Close();
        EXPECT_TRUE(p.Shows(*Other.Object));
        Other.Unload();
    });
    Other.ShowModal();
    p.Settle();
    EXPECT_EQ(Raised(), Log{});
    EXPECT_TRUE(p.HasFocus(w.Command2)) << "as before the keys under the other window";

    w.Border = FrameStyle::None; // has no close box
    p.Close();
    w.Border = FrameStyle::FixedSingle;
    w.Command1.Click = [&] {
        p.Close();
        w.Log.push_back(w.IsLoaded() ? "loaded" : "gone"); // the object outlives its handler
    };
    p.Click(w.Command1);
    p.Settle();
    EXPECT_EQ(Raised(), (Log{"unload", "gone"}));
    EXPECT_FALSE(p.Shows(w));
}

TEST_F(WindowContract, PressesOnceAndForTheCaptionThatWasPressed) {
    Show();
    for (const bool repeated : {false, true}) {
        p.Type({.Which = Key::Enter, .Repeated = repeated});
        p.Type({.Letter = "t", .Alt = true, .Repeated = repeated});
        p.Type({.Which = Key::Enter, .Repeated = repeated}); // on the button that the access key has given the focus
        p.Type({.Which = Key::Space, .Letter = " ", .Repeated = repeated});
        EXPECT_EQ(Raised(), repeated ? Log{} : (Log{"Command1", "Command2", "Command2", "Command2"}));
    }
    p.PressOn(w.Command1);
    w.Command1.Caption = w.Command2.Caption;
    p.LetGo(w.Command1); // not for that one
    p.Settle();
    p.Click(w.Command1);
    p.PressOn(w.Command1);
    p.LetGo(w.Command2); // moved off the button
    p.ClickEarly(w.Command1, [this] { w.Command1.Caption = "&Stop"; });
    EXPECT_EQ(Raised(), Log{"Command1"});
}

TEST_F(WindowContract, MovesTheFocusInTabOrder) {
    w.Option1.Value = true;
    Show();
    for (const Control* next : std::vector<const Control*>{&w.Text1, &w.Command1, &w.Command2, &w.Grid1, &w.Tree1,
                                                           &w.Check1, &w.Option1, &w.Text1}) {
        EXPECT_TRUE(p.HasFocus(*next)) << next->Name;
        p.Type({.Which = Key::Tab});
    }
    for (int press = 0; press < 2; ++press)
        p.Type({.Which = Key::Tab, .Shift = true});
    p.Type({.Which = Key::Down});
    EXPECT_TRUE(p.HasFocus(w.Option2) && w.Option2.Value && !w.Option1.Value);
    w.SetFocus(w.Check1);
    p.Settle();
    EXPECT_TRUE(p.HasFocus(w.Check1));
    w.Check1.Enabled = false;
    p.Settle();
    EXPECT_TRUE(p.HasFocus(w.Option2)); // the next that can have it
}

TEST_F(WindowContract, KeepsTheGridsSelectionWithItsRow) {
    Show();
    p.ClickRow(1, 1);
    w.Grid1.Sort(1);
    p.Settle();
    EXPECT_EQ(p.SelectedRow(), 3);
    p.ClickRow(0, 1);
    EXPECT_TRUE(p.SelectedRow() == 3 && w.Grid1.SelectedRow == 3);
    for (const char* letter : {"b", "x"}) {
        p.Type({.Letter = letter});
        EXPECT_EQ(w.Grid1.SelectedRow, 2);
    }
    p.Type({.Which = Key::Menu});
    EXPECT_EQ(Raised().back(), "Button 2");
    for (const int row : {2, 2}) { // the second time it is the last one
        p.ClickRow(row, 1);
        w.Grid1.RemoveRow(row);
        p.Settle();
        p.ClickRow(0, 1);
        EXPECT_TRUE(p.SelectedRow() == 0 && w.Grid1.SelectedRow == 0);
    }
}

TEST_F(WindowContract, ShowsWhatTheModelSays) {
    w.Text1.Text = "100"; // stored by hand; longer than the field takes
    Show();
    EXPECT_EQ(p.Text(w.Text1), "100");
    w.Label1.Caption = "<b>R&D</b>\r\n\xFF";
    w.Check1.Value = 1;
    w.Command1.Caption = "&Stop";
    w.Option2.Value = true;
    p.Settle();
    EXPECT_EQ(p.Text(w.Label1) + p.Text(w.Command1), "<b>R&D</b> \xEF\xBF\xBD&Stop");
    EXPECT_TRUE(p.IsMarked(w.Check1) && p.IsMarked(w.Option2));
    EXPECT_EQ(Raised(), Log{}); // writing a field is no input

    std::string shown;
    w.Command1.Click = [&] {
        w.Label1.Caption = "Waiting...";
        EXPECT_TRUE(services().Windows.PumpEvents());
        shown = p.Text(w.Label1);
    };
    for (int click = 0; click < 3; ++click) { // in the first pass, also straight after the last time
        w.Label1.Caption = "before";
        p.Click(w.Command1);
        EXPECT_EQ(std::exchange(shown, ""), "Waiting...");
    }
}

TEST_F(WindowContract, GivesMouseMovesToTheControlUnderTheMouse) {
    w.MouseMove = [&] { w.Log.push_back("window"); };
    w.Frame1.MouseMove = [&] { w.Log.push_back("frame"); };
    w.Label1.MouseMove = [&] { w.Log.push_back("label"); };
    w.Grid1.MouseMove = [&] { w.Log.push_back("grid"); };
    Show();
    p.MoveMouse(300, 100);
    p.MoveMouse(2700, 1000); // inside the frame, beside its controls
    p.MoveMouse(300, 2900);
    p.MoveMouse(300, 5500);
    EXPECT_EQ(Raised(), (Log{"label", "frame", "grid", "window"}));
    for (const auto& [x, y] : {std::pair{1500, 0}, {0, 210}, {2985, 300}, {0, 1200}})
        p.MoveMouse(x, y); // at their edges
    EXPECT_EQ(Raised(), (Log{"window", "window", "frame", "window"}));
}

TEST_F(WindowContract, OnlyPaintsWhileWorkIsUnderWay) {
    Show();
    Start(w.Timer1, 1, [&] { w.Log.push_back("tick"); });
    p.Soon([&] {
        p.ActOn(w.Command2);
        p.Close();
    });
    w.Label1.Caption = "Connecting...";
    const auto look = [&](std::int64_t) {
        EXPECT_EQ(p.Text(w.Label1), "Connecting...");
        return false;
    };
    services().Windows.PaintUntil(look, 100);
    EXPECT_EQ(Raised(), Log{});
    p.Settle();
    EXPECT_FALSE(w.IsLoaded()); // a close is kept until handlers may run
}

TEST_F(WindowContract, TicksInEveryLoopUntilTheEndLeavesThemAll) {
    const auto ask = [] { return ShowMessage("?", "T", MessageIcon::Question, MessageButtons::YesNo); };
    Show();
    int ticks = 0;
    Start(w.Timer1, 20, [&] {
        if (++ticks == 1)
            Other.Unload();
        else if (ticks == 3)
            EXPECT_EQ(ask(), MessageAnswer::No); // must not keep the next tick waiting
        else if (ticks == 4)
            services().Windows.End();
    });
    Other.ShowModal();
    for (int pass = 0; pass < 100 && ticks < 2; ++pass)
        services().Windows.WaitForEvents();
    Other.ShowModal();
    EXPECT_EQ(std::exchange(ticks, 0), 4);
    EXPECT_FALSE(services().Windows.WaitForEvents() || services().Windows.PumpEvents());
    Other.ShowModal();
    EXPECT_EQ(ask(), MessageAnswer::No);
    p.Click(w.Command1);
    EXPECT_TRUE(ticks == 0 && Raised().empty());
    EXPECT_FALSE(p.Shows(w) || p.Shows(*Other.Object));
}

} // namespace tarnwick::test

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
        Timers = {&Timer1};
        ApplyLayout(*this, {.Name = "Sample", .ClientWidth = 6000, .ClientHeight = 6000},
                    {{Shape1, "Shape1", nullptr, {0, 0, 6000, 6000}},
                     {Line1, "Line1", nullptr, {0, 5400, 6000, 0}},
                     {.Field = Label1,
                      .Name = "Label1",
                      .Container = nullptr,
                      .Place = {0, 0, 1500, 210},
                      .ToolTip = "<b>tip</b>"},
                     {Frame1, "Frame1", nullptr, {0, 300, 3000, 900}},
                     {.Field = Label2,
                      .Name = "Label2",
                      .Container = &Frame1,
                      .Place = {150, 300, 1500, 210},
                      .WordWrap = true,
                      .AccessibleDescription = "Status"},
                     {.Field = Text1,
                      .Name = "Text1",
                      .Container = &Frame1,
                      .Place = {1650, 300, 600, 285},
                      .TabIndex = 0,
                      .AccessibleName = "Seconds",
                      .MaxLength = 2},
                     {.Field = Value1,
                      .Name = "Value1",
                      .Container = &Frame1,
                      .Place = {150, 600, 1500, 210},
                      .Centered = true},
                     {Option1, "Option1", &Frame1, {0, 0, 900, 225}, "", 6},
                     {Option2, "Option2", nullptr, {3000, 0, 900, 225}, "", 7},
                     {Check1, "Check1", nullptr, {3000, 300, 900, 225}, "", 5},
                     {Picture1, "Picture1", nullptr, {4500, 0, 1500, 1500}},
                     {Grid1, "Grid1", nullptr, {0, 1500, 6000, 1500}, "", 3},
                     {Tree1, "Tree1", nullptr, {0, 3000, 6000, 1500}, "", 4},
                     {Frame2, "Frame2", nullptr, {0, 3000, 6000, 1500}, "", -1, false},
                     {Command2, "Command2", nullptr, {0, 4800, 900, 375}, "&Two", 2},
                     {.Field = Command1,
                      .Name = "Command1",
                      .Container = nullptr,
                      .Place = {1500, 4800, 900, 375},
                      .Caption = "&One",
                      .TabIndex = 1,
                      .Default = true}});
        for (Control* control : Controls)
            control->Click = [this, control] { Log.push_back(control->Name); };
        Tree1.AddGroupNode("Heading");
        Tree1.AddCheckNode(1, "First", 0);
        Tree1.AddCheckNode(1, "Second", 1);
        Tree1.FinishNodes();
        Tree1.Check = [this](int node, int value) { Write("Check", 100 * node + 10 * value + Tree1.NodeCheck(node)); };
        for (const char* column : {"Name", "Hidden", "Folder"})
            Grid1.AddColumn(column, 90, *column != 'H');
        for (const char* name : {"c", "b", "a"})
            Grid1.AddRow(Grid1.AddRecord({name}));
        Grid1.HeaderClick = [this](int column) { Write("Header", column); };
        Grid1.MouseButton = [this](int button, int, int, int) { Write("Button", button); };
    }

    Label Label1, Label2;
    Label Value1;         // one line in a frame
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
    // The key by way of a screen reader's bus, where the desktop has one.
    virtual void TypeByReader(const KeyPress& key) { Type(key); }
    virtual void Paste(const std::string& text) = 0; // into the field
    virtual void Close() = 0;                        // as the window manager asks for it
    virtual void ActOn(Control& control) = 0;        // a screen reader's press
    // Waits until the screen shows what the model says.
    virtual void Settle() = 0;
    // Acts as soon as the next loop runs, also that of a box or a menu that is yet to open.
    virtual void Soon(std::function<void()> act) = 0;

    // Eyes.
    virtual bool Shows(const Window& window) = 0;
    virtual std::string Text(const Control& control) = 0; // "&" as in the caption
    // What is painted of a control, or of the whole window with nullptr: another number for another picture.
    virtual std::size_t Picture(const Control* control) = 0;
    virtual std::string Title() = 0;

    // Ears: what a screen reader has been given to speak since the last call; the first one begins to listen.
    virtual Log Spoken() = 0;
    virtual bool IsMarked(const Control& control) = 0; // a check box or an option button
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

static_assert(!std::is_assignable_v<decltype((Control::Place)), Rect>, "the layout table alone writes a fixed field");

TEST_F(WindowContract, RaisesWhatIsClicked) {
    Show();
    p.Click(w.Command1);
    p.Click(w.Label1);
    p.Click(w.Check1);
    p.ClickNode(2);
    p.ClickRow(2, 1);
    p.ClickRow(3, 2);
    EXPECT_EQ(Raised(), (Log{"Command1", "Label1", "Check1", "Check 211", "Button 1", "Button 2"}));
}

TEST_F(WindowContract, ChangesTheMarkThatIsClicked) {
    Show();
    p.Click(w.Check1);
    EXPECT_EQ(w.Check1.Value, 1);
    EXPECT_TRUE(p.IsMarked(w.Check1));
}

TEST_F(WindowContract, TakesTheMarkFromTheOtherOptions) {
    Show();
    p.Click(w.Option2);
    p.Click(w.Option1);
    EXPECT_TRUE(w.Option1.Value);
    EXPECT_FALSE(w.Option2.Value);
    EXPECT_FALSE(p.IsMarked(w.Option2));
}

TEST_F(WindowContract, ObeysAScreenReader) {
    Show();
    w.Command2.Caption = "&Uno";
    p.Settle();
    p.ActOn(w.Command2);
    EXPECT_EQ(Raised(), Log{"Command2"});
}

TEST_F(WindowContract, TypesUpToTheLengthOfAField) {
    Show();
    for (const char* letter : {"1", " ", "3"})
        p.Type({.Letter = letter, .Repeated = *letter == ' '}); // a field takes a held key's repetitions
    EXPECT_EQ(w.Text1.Text, "1 ");
    EXPECT_EQ(p.Text(w.Text1), "1 ");
}

TEST_F(WindowContract, TypesIntoWhatTheModelSaysNow) {
    Show();
    w.Text1.Text = "5";
    p.Type({.Letter = "6"});
    EXPECT_EQ(w.Text1.Text.size(), 2U);
}

TEST_F(WindowContract, PastesNoLineEndIntoAField) {
    Show();
    for (const char* end : {"\r\n", "\n", "\xE2\x80\xA8"}) {
        w.Text1.Text = "";
        p.Settle();
        p.Paste(std::string("7") + end + "8");
        EXPECT_EQ(w.Text1.Text, "7");
        EXPECT_EQ(p.Text(w.Text1), "7");
    }
}

TEST_F(WindowContract, HidesWhatAFrameCovers) {
    w.Frame2.Visible = true; // over the tree
    Show();
    EXPECT_FALSE(p.Reads(w.Tree1));
    w.Frame2.Visible = false;
    p.Settle();
    EXPECT_TRUE(p.Reads(w.Tree1));
}

TEST_F(WindowContract, LetsNobodyPressWhatIsHiddenOrDisabled) {
    w.Frame2.Visible = true; // over the tree
    w.Command2.Enabled = false;
    w.Check1.Visible = false;
    w.Frame1.Enabled = false; // with the first field of the tab order
    Show();
    EXPECT_TRUE(p.HasFocus(w.Command1));
    EXPECT_TRUE(p.Reads(w.Command2));
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
    EXPECT_FALSE(raised.empty());
    EXPECT_EQ(raised, Log(raised.size(), "Command1")) << "by Space";
}

TEST_F(WindowContract, TakesNothingOnceHidden) {
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
}

TEST_F(WindowContract, TakesNothingBehindAModalWindow) {
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
}

TEST_F(WindowContract, OutlivesTheHandlerThatClosesIt) {
    Show();
    w.Command1.Click = [&] {
        p.Close();
        w.Log.push_back(w.IsLoaded() ? "loaded" : "gone");
    };
    p.Click(w.Command1);
    p.Settle();
    EXPECT_EQ(Raised(), (Log{"unload", "gone"}));
    EXPECT_FALSE(p.Shows(w));
}

TEST_F(WindowContract, PressesByKey) {
    Show();
    p.Type({.Which = Key::Enter});
    p.Type({.Letter = "t", .Alt = true});
    p.Type({.Which = Key::Enter}); // on the button that the access key has given the focus
    p.Type({.Which = Key::Space, .Letter = " "});
    EXPECT_EQ(Raised(), (Log{"Command1", "Command2", "Command2", "Command2"}));
}

TEST_F(WindowContract, PressesOnceWhileAKeyIsHeld) {
    Show();
    p.Type({.Which = Key::Enter, .Repeated = true});
    p.Type({.Letter = "t", .Alt = true, .Repeated = true});
    w.SetFocus(w.Command2);
    p.Settle();
    p.Type({.Which = Key::Space, .Letter = " ", .Repeated = true});
    EXPECT_EQ(Raised(), Log{});
}

TEST_F(WindowContract, ClicksForTheCaptionThatWasPressed) {
    Show();
    p.PressOn(w.Command1);
    w.Command1.Caption = w.Command2.Caption;
    p.LetGo(w.Command1);
    EXPECT_EQ(Raised(), Log{});
    p.Settle();
    p.Click(w.Command1);
    EXPECT_EQ(Raised(), Log{"Command1"});
    p.ClickEarly(w.Command1, [this] { w.Command1.Caption = "&Stop"; });
    EXPECT_EQ(Raised(), Log{}) << "a click that has waited";
}

TEST_F(WindowContract, ClicksNothingOnceTheMouseHasLeftTheButton) {
    Show();
    p.PressOn(w.Command1);
    p.LetGo(w.Command2);
    EXPECT_EQ(Raised(), Log{});
}

TEST_F(WindowContract, MovesTheFocusInTabOrder) {
    w.Option1.Value = true;
    Show();
    for (const Control* next : std::vector<const Control*>{&w.Text1, &w.Command1, &w.Command2, &w.Grid1, &w.Tree1,
                                                           &w.Check1, &w.Option1, &w.Text1}) {
        EXPECT_TRUE(p.HasFocus(*next)) << *next->Name;
        p.Type({.Which = Key::Tab});
    }
    for (int press = 0; press < 2; ++press)
        p.Type({.Which = Key::Tab, .Shift = true});
    EXPECT_TRUE(p.HasFocus(w.Option1));
}

TEST_F(WindowContract, ChoosesAnOptionByItsArrows) {
    w.Option1.Value = true;
    Show();
    w.SetFocus(w.Option1);
    p.Settle();
    p.Type({.Which = Key::Down});
    EXPECT_TRUE(p.HasFocus(w.Option2));
    EXPECT_TRUE(w.Option2.Value);
    EXPECT_FALSE(w.Option1.Value);
}

TEST_F(WindowContract, PassesTheFocusOnFromWhatIsDisabled) {
    w.Option1.Value = true;
    Show();
    w.SetFocus(w.Check1);
    p.Settle();
    EXPECT_TRUE(p.HasFocus(w.Check1));
    w.Check1.Enabled = false;
    p.Settle();
    EXPECT_TRUE(p.HasFocus(w.Option1));
}

TEST_F(WindowContract, KeepsTheGridsSelectionWithItsRow) {
    Show();
    p.ClickRow(1, 1);
    w.Grid1.Sort(1);
    p.Settle();
    EXPECT_EQ(p.SelectedRow(), 3);
    p.ClickRow(0, 1);
    EXPECT_EQ(p.SelectedRow(), 3) << "after a click below the rows";
    EXPECT_EQ(w.Grid1.SelectedRow, 3);
}

TEST_F(WindowContract, SelectsTheNextRowThatBeginsWithALetter) {
    w.Grid1.AddRow(w.Grid1.AddRecord({"beta"}));
    Show();
    p.ClickRow(1, 1);
    for (const auto& [letter, row] : {std::pair{"b", 2}, {"b", 4}, {"b", 2}, {"x", 2}}) { // b, beta, b, none
        p.Type({.Letter = letter});
        EXPECT_EQ(w.Grid1.SelectedRow, row) << letter;
    }
    w.SetFocus(w.Command2);
    p.Settle();
    p.Type({.Letter = "c"});
    EXPECT_EQ(w.Grid1.SelectedRow, 2) << "a letter typed on a button";
}

TEST_F(WindowContract, OpensAMenuByItsKey) {
    Show();
    p.ClickRow(1, 1);
    p.Type({.Which = Key::Menu});
    EXPECT_EQ(Raised(), (Log{"Button 1", "Button 2"}));
}

TEST_F(WindowContract, SelectsNoRowAfterTheSelectedOneHasGone) {
    Show();
    for (const int row : {2, 2}) { // the second time it is the last one
        p.ClickRow(row, 1);
        w.Grid1.RemoveRow(row);
        p.Settle();
        p.ClickRow(0, 1);
        EXPECT_EQ(p.SelectedRow(), 0);
        EXPECT_EQ(w.Grid1.SelectedRow, 0);
    }
}

TEST_F(WindowContract, ShowsTextsAsTheyAre) {
    w.Text1.Text = "100"; // stored by hand; longer than the field takes
    Show();
    EXPECT_EQ(p.Text(w.Text1), "100");
    w.Label1.Caption = "<b>R&D</b>\r\n\xFF\x7F";
    p.Settle();
    EXPECT_EQ(p.Text(w.Label1), "<b>R&D</b> \xEF\xBF\xBD ");
}

TEST_F(WindowContract, FollowsEveryFieldThatMayBeWritten) {
    w.Check1.Caption = "Check";
    Show();
    const std::vector<std::tuple<const char*, const Control*, std::function<void()>>> fields = {
        {"Caption", &w.Label1, [&] { w.Label1.Caption = "Label"; }},
        {"a button's Caption", &w.Command2, [&] { w.Command2.Caption = "&Stop"; }},
        {"Font", &w.Label1, [&] { w.Label1.Font.Underline = true; }},
        {"ForeColor", &w.Label1, [&] { w.Label1.ForeColor = Color::Rgb(200, 0, 0); }},
        {"BackColor", &w.Label1, [&] { w.Label1.BackColor = Color::Rgb(255, 255, 0); }},
        {"Enabled", &w.Check1, [&] { w.Check1.Enabled = false; }},
        {"Value", &w.Check1, [&] { w.Check1.Value = 1; }},
        {"an option's Value", &w.Option2, [&] { w.Option2.Value = true; }},
        {"Text", &w.Text1, [&] { w.Text1.Text = "8"; }},
        {"SelectAll", &w.Text1, [&] { w.Text1.SelectAll(); }},
        {"Picture", &w.Picture1, [&] { w.Picture1.Picture = "side.jpg"; }},
        {"a row", &w.Grid1, [&] { w.Grid1.AddRow(w.Grid1.AddRecord({"new"})); }},
        {"a node", &w.Tree1, [&] { w.Tree1.AddCheckNode(1, "new"); }},
        {"a check", &w.Tree1, [&] { w.Tree1.SetNodeCheck(2, 1); }},
        {"Visible", &w.Check1, [&] { w.Check1.Visible = false; }},
        {"Edge", nullptr, [&] { w.Edge = 5; }},
        {"a window's BackColor", nullptr, [&] { w.BackColor = Color::Rgb(0, 0, 99); }},
    };
    w.Shape1.Visible = false; // over the edge
    p.Settle();
    for (const auto& [field, control, write] : fields) {
        const std::size_t before = p.Picture(control);
        EXPECT_EQ(p.Picture(control), before) << field << ": looks the same while nothing changes";
        write();
        p.Settle();
        EXPECT_NE(p.Picture(control), before) << field;
    }
    w.Title = "New title";
    p.Settle();
    EXPECT_EQ(p.Title(), "New title");
    EXPECT_EQ(Raised(), Log{}) << "writing a field is no input";
}

TEST_F(WindowContract, AnnouncesALabelOnceItShows) {
    Show();
    p.Spoken();
    for (Label* label : {&w.Label1, &w.Value1})
        label->Click = nullptr; // it would be a button to a reader
    w.Label1.Caption = "text";
    p.Settle();
    EXPECT_EQ(p.Spoken(), Log{}) << "a new text alone";
    w.Label1.Announce();
    p.Settle();
    EXPECT_EQ(p.Spoken(), Log{"text"});
    w.Frame1.Visible = false;
    w.Value1.Caption = "late";
    w.Value1.Announce();
    p.Settle();
    EXPECT_EQ(p.Spoken(), Log{}) << "it is hidden with its frame";
    w.Frame1.Visible = true;
    p.Settle();
    EXPECT_EQ(p.Spoken(), Log{"late"});
}

TEST_F(WindowContract, CentersATextWhereItsTableSaysSo) {
    w.Label1.Caption = w.Value1.Caption = "text";
    Show();
    EXPECT_NE(p.Picture(&w.Label1), p.Picture(&w.Value1));
}

TEST_F(WindowContract, ShowsWhatAHandlerWritesInItsFirstPass) {
    Show();
    std::string shown;
    w.Command1.Click = [&] {
        w.Label1.Caption = "Waiting...";
        EXPECT_TRUE(services().Windows.PumpEvents());
        shown = p.Text(w.Label1);
    };
    for (int click = 0; click < 3; ++click) { // also straight after the last time
        w.Label1.Caption = "before";
        p.Click(w.Command1);
        EXPECT_EQ(std::exchange(shown, ""), "Waiting...");
    }
}

TEST_F(WindowContract, GivesMouseMovesToTheControlUnderTheMouse) {
    Show();
    w.MouseMove = [&] { w.Log.push_back("window"); };
    w.Frame1.MouseMove = [&] { w.Log.push_back("frame"); };
    w.Label1.MouseMove = [&] { w.Log.push_back("label"); };
    w.Grid1.MouseMove = [&] { w.Log.push_back("grid"); };
    p.Settle();
    p.MoveMouse(300, 100);
    p.MoveMouse(2700, 1000); // inside the frame, beside its controls
    p.MoveMouse(300, 2900);
    p.MoveMouse(300, 5500);
    EXPECT_EQ(Raised(), (Log{"label", "frame", "grid", "window"}));
    for (const auto& [x, y] : {std::pair{1500, 0}, {0, 210}, {2985, 300}, {0, 1200}})
        p.MoveMouse(x, y); // at their edges
    EXPECT_EQ(Raised(), (Log{"window", "window", "frame", "window"}));
}

TEST_F(WindowContract, KeepsInputInItsOrderWhileItOnlyPaints) {
    Show();
    Start(w.Timer1, 1, [&] { w.Log.push_back("tick"); });
    w.Label1.Caption = "Connecting...";
    int looks = 0;
    const auto look = [&](std::int64_t) {
        EXPECT_EQ(p.Text(w.Label1), "Connecting...");
        if (++looks == 1) {
            p.ActOn(w.Command2);
            p.TypeByReader({.Which = Key::Enter});
            p.Close();
        }
        return false;
    };
    services().Windows.PaintUntil(look, 100);
    EXPECT_EQ(Raised(), Log{});
    w.Timer1.Disable();
    p.Settle();
    EXPECT_EQ(Raised(), (Log{"Command2", "Command1", "unload"}));
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
    EXPECT_FALSE(services().Windows.WaitForEvents());
    EXPECT_FALSE(services().Windows.PumpEvents());
    Other.ShowModal();
    EXPECT_EQ(ask(), MessageAnswer::No);
    p.Click(w.Command1);
    EXPECT_EQ(ticks, 0);
    EXPECT_EQ(Raised(), Log{});
    EXPECT_FALSE(p.Shows(w));
    EXPECT_FALSE(p.Shows(*Other.Object));
}

} // namespace tarnwick::test

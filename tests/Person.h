#pragma once

// A sample window, and a person's hands and eyes before it. Each front end's tests bring a Person of their own.

#include "window/Dialogs.h"
#include "window/Keyboard.h"
#include "window/Layout.h"
#include "window/Text.h"

#include <gtest/gtest.h>

#include <functional>

namespace tarnwick::test {

using Log = std::vector<std::string>;

// A window with a control of every kind, whose handlers write down what was raised.
class SampleWindow : public Window {
public:
    SampleWindow() {
        ClientWidth = ClientHeight = 6000;
        Timers = {&Timer1};
        ApplyLayout(*this, {{Shape1, "Shape1", nullptr, {0, 0, 6000, 6000}},
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

} // namespace tarnwick::test

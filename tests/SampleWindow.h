#pragma once

#include "window/Layout.h"

#include <string>
#include <vector>

namespace tarnwick {

// A window with a control of every kind, whose handlers write down what was raised.
class SampleWindow : public Window {
public:
    SampleWindow() {
        Name = Title = "Sample";
        ClientWidth = ClientHeight = 6000;
        Timers = {&Timer1, &Timer2};
        ApplyLayout(*this, {{Shape1, "Shape1", nullptr, {0, 0, 6000, 6000}},
                            {Label1, "Label1", nullptr, {0, 0, 1500, 210}},
                            {Frame1, "Frame1", nullptr, {0, 300, 3000, 900}},
                            {Label2, "Label2", &Frame1, {150, 300, 1500, 210}},
                            {Text1, "Text1", &Frame1, {1650, 300, 600, 285}, "", 0},
                            {Option1, "Option1", &Frame1, {0, 0, 900, 225}, "", 6},
                            {Option2, "Option2", nullptr, {3000, 0, 900, 225}, "", 7},
                            {Check1, "Check1", nullptr, {3000, 300, 900, 225}, "", 5},
                            {Picture1, "Picture1", nullptr, {4500, 0, 1500, 1500}},
                            {Line1, "Line1", nullptr, {0, 1305, 3000, 0}},
                            {Grid1, "Grid1", nullptr, {0, 1500, 6000, 1500}, "", 3},
                            {Tree1, "Tree1", nullptr, {0, 3000, 6000, 1500}, "", 4},
                            {Frame2, "Frame2", nullptr, {0, 3000, 6000, 1500}, "", -1, false},
                            {Command2, "Command2", nullptr, {0, 4800, 900, 375}, "&Two", 2},
                            {Command1, "Command1", nullptr, {1500, 4800, 900, 375}, "&One", 1}});
        Command1.Default = true;
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
        Grid1.AddColumn("Name", 100);
        Grid1.AddColumn("Hidden", 100, false);
        Grid1.AddColumn("Folder", 100);
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
    Line Line1;
    Shape Shape1;
    GridControl Grid1;
    TreeControl Tree1;
    Timer Timer1, Timer2;

    std::vector<std::string> Log;

private:
    void OnUnload() override { Log.push_back("unload"); }
    void Write(const std::string& event, int number) { Log.push_back(event + " " + std::to_string(number)); }
};

} // namespace tarnwick

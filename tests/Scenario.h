#pragma once

// One person's whole work with the program: an availability check with findings and a removal, a duplicate check with a
// removal, the options stored anew. Nothing of it is taken for granted: what can't be reached is left alone, and a
// window that has nothing more to offer is closed.

#include "availability/Form4.h"
#include "duplicates/Form7.h"
#include "platform/headless/HeadlessWindows.h"
#include "report/Form5.h"
#include "shell/Form1.h"
#include "shell/Form3.h"
#include "shell/Form9.h"
#include "window/Input.h"
#include "window/Reach.h"

#include <string>

namespace tarnwick::test {

class Scenario {
public:
    explicit Scenario(HeadlessWindows& windows) : windows_(windows) {}

    std::string Timeout = "11"; // as typed into the options

    void Play() {
        Start();
        CheckAvailability();
        CheckDuplicates();
        SaveOptions();
    }

    void Start() {
        Form9.Show();
        Form9->Timer1.SetInterval(1);
        WaitUntil([] { return Form3.IsLoaded() && Form3->IsVisible(); });
    }

    // Leaves the report open if the run has found anything.
    void RunAvailability() {
        Click(*Form3, Form3->Option1);
        Click(*Form3, Form3->Command1);
        Click(*Form4, Form4->Command1); // "&Go"
        if (Form4->Tree1.NodeCheck(RootNode) == 0)
            Input(*Form4).Tick(Form4->Tree1, RootNode);
        Click(*Form4, Form4->Command1); // "&Start"; returns at the run's end
        if (Form4->Command1.Caption == "&Start")
            return Input(*Form4).Close();
        Click(*Form4, Form4->Command1); // "&Report" or "&Finish"
    }

    void CheckAvailability() {
        RunAvailability();
        if (!Form5.IsLoaded() || !Form5->IsVisible())
            return;
        Remove(*Form5, Form5->Grid1, "mnuBadRemove");
        Click(*Form5, Form5->Command1);
    }

    void CheckDuplicates() {
        Click(*Form3, Form3->Option2);
        Click(*Form3, Form3->Command1);
        Click(*Form7, Form7->Command1); // "&Start"
        Form7->Timer1.SetInterval(1);
        WaitUntil([] { return Form7->Command1.Caption != "&Cancel"; });
        Remove(*Form7, Form7->Grid1, "mnuDupK2");
        Click(*Form7, Form7->Command1); // "&Finish"
    }

    void SaveOptions() {
        windows_.InPass(1, [this] {
            Form1->Text1.Text = Timeout;
            Click(*Form1, Form1->Command1);
            if (Form1.IsLoaded())
                Input(*Form1).Close();
        });
        Click(*Form3, Form3->Command2);
    }

private:
    static constexpr int RootNode = 2;

    static void Click(Window& window, Control& control) { Input(window).Click(control, control.Caption); }

    void Remove(Window& window, GridControl& grid, const std::string& entry) {
        windows_.Choices = {entry};
        windows_.Answers = {MessageAnswer::Yes};
        Input(window).Select(grid, 1);
        Input(window).PressGrid(grid, 2, 0, 5, 5);
    }

    template <class Condition> void WaitUntil(Condition condition) {
        for (int pass = 0; pass < 1000 && !condition(); ++pass)
            windows_.WaitForEvents();
    }

    HeadlessWindows& windows_;
};

} // namespace tarnwick::test

#pragma once

// Drives the windows as a user does: a control can be used only while its window shows it and it is enabled.

#include "availability/Form4.h"
#include "duplicates/Form7.h"
#include "favorites/Favorites.h"
#include "platform/headless/HeadlessPlatform.h"
#include "report/Form5.h"
#include "shell/Form1.h"
#include "shell/Form2.h"
#include "shell/Form3.h"
#include "shell/Form9.h"
#include "shell/Preferences.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tarnwick {

class Program : public ::testing::Test {
protected:
    Program() {
        tarnwick::Favorites::CurrentLink = {};
        tarnwick::Favorites::LinkFinished = false;
        tarnwick::Favorites::RunCompleted = false;
        tarnwick::Favorites::EndOnMainClose = false;
        tarnwick::Favorites::SplashDone = false;
    }

    // From the start of the process to the main window.
    void StartProgram() {
        Form9.Show();
        for (int pass = 0; pass < 3 && !Form3.IsLoaded(); ++pass)
            machine.Windows.WaitForEvents();
        ASSERT_TRUE(Form3.IsLoaded() && Form3->IsVisible());
    }

    Window& OwnerOf(const Control& control) {
        for (Window* window : machine.Loop.Windows())
            for (const Control* own : window->Controls)
                if (own == &control)
                    return *window;
        throw std::logic_error("the control's window is not loaded");
    }

    void Click(Control& control) {
        Window& window = OwnerOf(control);
        ASSERT_TRUE(window.IsVisible()) << window.Name;
        ASSERT_TRUE(control.Visible && control.Enabled) << control.Name;
        window.Raise(control.Click);
    }

    void Choose(OptionButton& chosen) {
        Form3->Option1.Value = &chosen == &Form3->Option1;
        Form3->Option2.Value = &chosen == &Form3->Option2;
    }

    // The user clicks the check box in front of this text.
    void TickNode(const std::string& text) {
        for (int index = 1; index <= Form4->Tree1.Nodes().Count(); ++index) {
            if (Form4->Tree1.NodeAt(index).Text != text)
                continue;
            const std::int32_t value = 1 - Form4->Tree1.NodeCheck(index);
            Form4->Tree1.SetNodeCheck(index, value);
            Form4->Raise(Form4->Tree1.Check, index, value);
            return;
        }
        FAIL() << "no node " << text;
    }

    // From the main window to the tree of the availability window.
    void OpenTree() {
        Click(Form3->Command1);
        Click(Form4->Command1);
        ASSERT_EQ(Form4->Command1.Caption, "&Start");
    }

    // The whole road of a check over these nodes, up to its end text.
    void CheckNodes(const std::vector<std::string>& texts) {
        OpenTree();
        for (const std::string& text : texts)
            TickNode(text);
        Click(Form4->Command1);
    }

    // Every kind of finding counts.
    void CatchAll() {
        for (const char* key : {"Catch401", "Catch403", "Catch404", "CatchUnabled", "CatchTimedout", "CatchConnerr"})
            machine.Settings.Values[key] = "1";
    }

    // The report's cells of one column, from top to bottom.
    static std::vector<std::string> Cells(const Grid& grid, int column) {
        std::vector<std::string> cells;
        for (int row = 1; row <= grid.RowCount(); ++row)
            cells.push_back(grid.CellText(row, column));
        return cells;
    }

    void MenuChoice(const std::string& entry) { machine.Windows.Choices.push_back(entry); }
    void RightClick(Window& window, GridControl& grid) { window.Raise(grid.MouseButton, 2, 0, 5, 5); }

    HeadlessPlatform machine;
};

using Strings = std::vector<std::string>;

} // namespace tarnwick

#pragma once

// Drives the windows as a user does, through the input that the front ends use.

#include "availability/Form4.h"
#include "duplicates/Form7.h"
#include "favorites/Favorites.h"
#include "favorites/Folders.h"
#include "favorites/Preferences.h"
#include "platform/headless/HeadlessPlatform.h"
#include "report/Form5.h"
#include "shell/Form1.h"
#include "shell/Form2.h"
#include "shell/Form3.h"
#include "shell/Form9.h"
#include "window/Input.h"
#include "window/Reach.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace tarnwick {

// A new listing gets the first free number.
inline bool NoListingIsOpen() {
    Favorites::ListingHandle listing = 0;
    Favorites::FindFirst(Favorites::FavoritesRoot() + "*", listing);
    Favorites::FindEnd(listing);
    return listing == 1;
}

// The whole program on a machine in memory.
class Program : public ::testing::Test {
protected:
    Program() {
        using namespace tarnwick::Favorites;
        CurrentLink = {};
        LinkFinished = RunCompleted = EndOnMainClose = SplashDone = false;
    }

    // From the start of the process to the main window.
    void StartProgram() {
        Form9.Show();
        for (int pass = 0; pass < 3 && !Form3.IsLoaded(); ++pass)
            machine.Windows.WaitForEvents();
        ASSERT_TRUE(Form3.IsLoaded() && Form3->IsVisible());
    }

    // On a control that a person can reach; `shown` is what it showed when the click began.
    void Click(Control& control) {
        for (Window* window : machine.Loop.Windows())
            if (std::ranges::count(window->Controls, &control) != 0) {
                ASSERT_TRUE(window->TakesInput() && IsReachable(*window, control)) << control.Name;
                return Input(*window).Click(control, control.Caption);
            }
        FAIL() << control.Name << " is of no loaded window";
    }

    static void CloseBox(Window& window) { Input(window).Close(); }

    // The user clicks the check box in front of this text, the last one of that text.
    void TickNode(const std::string& text) {
        for (int index = Form4->Tree1.Nodes().Count(); index > 0; --index)
            if (Form4->Tree1.NodeAt(index).Text == text)
                return Input(*Form4).Tick(Form4->Tree1, index);
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

    // Every kind of finding counts, or none.
    void CatchAll(bool all = true) {
        for (const char* key : {"Catch401", "Catch403", "Catch404", "CatchUnabled", "CatchTimedout", "CatchConnerr"})
            machine.Settings.Values[key] = all ? "1" : "0";
    }

    // The last message box: a question with Yes and No, or a message with OK alone.
    void ExpectMessage(const std::string& text, MessageIcon icon, const std::string& title = "Tarnwick") {
        ASSERT_FALSE(machine.Windows.Messages.empty());
        const auto buttons = icon == MessageIcon::Question ? MessageButtons::YesNo : MessageButtons::Ok;
        EXPECT_EQ(machine.Windows.Messages.back(), (HeadlessWindows::ShownMessage{text, title, icon, buttons}));
    }

    // The report's cells of one column, from top to bottom.
    static std::vector<std::string> Cells(const Grid& grid, int column) {
        std::vector<std::string> cells;
        for (int row = 1; row <= grid.RowCount(); ++row)
            cells.push_back(grid.CellText(row, column));
        return cells;
    }

    static std::vector<std::string> RowCells(const Grid& grid, int row) {
        std::vector<std::string> cells;
        for (int column = 1; column <= static_cast<int>(grid.Columns().size()); ++column)
            cells.push_back(grid.CellText(row, column));
        return cells;
    }

    static std::vector<std::string> VisibleColumns(const Grid& grid) {
        std::vector<std::string> headers;
        for (const auto& column : grid.Columns())
            if (column.Visible)
                headers.push_back(column.Header);
        return headers;
    }

    // Selects a row and chooses an entry of its menu, by the entry's name.
    void Choose(Window& window, GridControl& grid, int row, const std::string& entry) {
        machine.Windows.Choices.push_back(entry);
        Input(window).Select(grid, row);
        Input(window).PressGrid(grid, 2, 0, 5, 5);
    }

    HeadlessPlatform machine;
};

using Strings = std::vector<std::string>;

} // namespace tarnwick

#pragma once

// Works the program as a person does, through the input that the front ends use.

#include "availability/Form4.h"
#include "duplicates/Form7.h"
#include "favorites/Favorites.h"
#include "favorites/Folders.h"
#include "platform/headless/HeadlessPlatform.h"
#include "report/Form5.h"
#include "shell/Form1.h"
#include "shell/Form2.h"
#include "shell/Form3.h"
#include "shell/Form9.h"
#include "shell/Preferences.h"
#include "window/Input.h"
#include "window/Reach.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

namespace tarnwick {

using Strings = std::vector<std::string>;

// A new listing gets the first free number.
inline bool NoListingIsOpen() {
    Favorites::ListingHandle listing = 0;
    Favorites::FindFirst(Favorites::FavoritesRoot() + "*", listing);
    Favorites::FindEnd(listing);
    return listing == 1;
}

// A person before the whole program, which has just been started on a machine with windows in memory.
template <class Machine> class User {
public:
    User() {
        using namespace Favorites;
        CurrentLink = {};
        LinkFinished = RunCompleted = EndOnMainClose = SplashDone = false;
    }

    // From the start of the process to the main window.
    void StartProgram() {
        Form9.Show();
        Form9->Timer1.SetInterval(1);
        WaitUntil([] { return Form3.IsLoaded(); });
        ASSERT_TRUE(Form3.IsLoaded() && Form3->IsVisible());
    }

    // On a control that a person can reach; `shown` is what it showed when the click began.
    void Click(Control& control) {
        for (Window* window : machine.Loop.Windows())
            if (std::ranges::count(window->Controls, &control) != 0) {
                ASSERT_TRUE(window->TakesInput() && IsReachable(*window, control)) << *control.Name;
                return Input(*window).Click(control, control.Caption);
            }
        FAIL() << *control.Name << " is of no loaded window";
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

    // A whole check over these nodes, up to its end text.
    void CheckNodes(const Strings& texts) {
        OpenTree();
        for (const std::string& text : texts)
            TickNode(text);
        Click(Form4->Command1);
    }

    // The same over all favorites, up to the report if there is anything to report.
    void CheckAll() {
        constexpr int root = 2;
        CheckNodes(Form4->Tree1.NodeCheck(root) == 0 ? Strings{"- Favorites Root -"} : Strings{});
        Click(Form4->Command1);
    }

    // A whole duplicate check, from the main window to its end.
    void CheckDuplicates() {
        Click(Form3->Option2);
        Click(Form3->Command1);
        Form7->Timer1.SetInterval(1);
        Click(Form7->Command1);
        WaitUntil([] { return !Form7.IsLoaded() || Form7->Command1.Caption != "&Cancel"; });
    }

    // Acts as the user of the options, whose close box is pressed if they are still open afterwards.
    void InOptions(const std::function<void()>& act) {
        machine.Windows.InPass(1, [=] {
            act();
            if (Form1.IsLoaded())
                CloseBox(*Form1);
        });
        Click(Form3->Command2);
    }

    void SaveTimeout(const std::string& timeout) {
        InOptions([=, this] {
            Form1->Text1.Text = timeout;
            Click(Form1->Command1);
        });
    }

    // One person's whole work: both checks, each with the removal of its first finding, and the options stored anew.
    void DoEverything(const std::string& timeout) {
        StartProgram();
        CheckAll();
        if (Form5->IsVisible()) {
            machine.Windows.Answers = {MessageAnswer::Yes};
            Choose(*Form5, Form5->Grid1, 1, "mnuBadRemove");
            Click(Form5->Command1);
        }
        CheckDuplicates();
        machine.Windows.Answers = {MessageAnswer::Yes};
        Choose(*Form7, Form7->Grid1, 1, "mnuDupK2");
        Click(Form7->Command1);
        SaveTimeout(timeout);
    }

    // Every kind of finding counts, or none.
    void CatchAll(bool all = true) {
        for (const char* key : {"Catch401", "Catch403", "Catch404", "CatchUnabled", "CatchTimedout", "CatchConnerr"})
            SavePreferences({{key, all ? "1" : "0"}});
    }

    // The last message box: a question with Yes and No, or a message with OK alone.
    void ExpectMessage(const std::string& text, MessageIcon icon, const std::string& title = "Tarnwick") {
        ASSERT_FALSE(machine.Windows.Messages.empty());
        const auto buttons = icon == MessageIcon::Question ? MessageButtons::YesNo : MessageButtons::Ok;
        EXPECT_EQ(machine.Windows.Messages.back(), (HeadlessWindows::ShownMessage{text, title, icon, buttons}));
    }

    // The report's cells of one column, from top to bottom.
    static Strings Cells(const Grid& grid, int column) {
        Strings cells;
        for (int row = 1; row <= grid.RowCount(); ++row)
            cells.push_back(grid.CellText(row, column));
        return cells;
    }

    static Strings RowCells(const Grid& grid, int row) {
        Strings cells;
        for (int column = 1; column <= static_cast<int>(grid.Columns().size()); ++column)
            cells.push_back(grid.CellText(row, column));
        return cells;
    }

    // With their widths.
    static Strings VisibleColumns(const Grid& grid) {
        EXPECT_EQ(grid.DefaultRowHeight, 17);
        Strings headers;
        for (const auto& column : grid.Columns())
            if (column.Visible)
                headers.push_back(column.Header + " " + std::to_string(column.Width));
        return headers;
    }

    // Selects a row and chooses an entry of its menu, by the entry's name.
    void Choose(Window& window, GridControl& grid, int row, const std::string& entry) {
        machine.Windows.Choices = {entry};
        Input(window).Select(grid, row);
        Input(window).PressGrid(grid, 2, 0, 5, 5);
    }

    Machine machine;

private:
    void WaitUntil(const std::function<bool()>& isDone) {
        for (int pass = 0; pass < 1000 && !isDone(); ++pass)
            machine.Windows.WaitForEvents();
    }
};

// The whole program on a machine in memory.
class Program : public ::testing::Test, public User<HeadlessPlatform> {};

} // namespace tarnwick

#include "Driver.h"

namespace tarnwick {
namespace {

class ReportTest : public Program {
protected:
    void SetUp() override {
        StartProgram();
        for (const std::string name : {"b", "A", "c"}) {
            machine.Favorites.AddShortcut(name + ".url", "");
            const std::string file = machine.Favorites.Full(name + ".url");
            AddReportRow({name, "Work", "http://" + name + "/", "Not found (404)", file});
        }
        Form5.Show();
    }

    void Pick(int row, const std::string& entry) { Choose(*Form5, Form5->Grid1, row, entry); }

    // The names in the rows, and those whose files are there.
    std::string RowsAndFiles() {
        std::string names;
        for (const std::string& name : Cells(Form5->Grid1, ReportColumn::Name))
            names += name;
        names += " ";
        for (const std::string name : {"A", "b", "c"})
            names += machine.Favorites.Has(name + ".url") ? name : "";
        return names;
    }
};

TEST_F(ReportTest, TheMenuNamesTheSelectedRow) {
    EXPECT_EQ(VisibleColumns(Form5->Grid1), (Strings{"Name 110", "Folder 104", "URL 265", "Problem 110"}));
    for (const auto& [row, button] : {std::pair{0, 2}, {2, 1}}) {
        Form5->Grid1.SelectedRow = row;
        Form5->Raise(Form5->Grid1.MouseButton, button, 0, 5, 5);
        EXPECT_TRUE(machine.Windows.Menus.empty()) << "row " << row << ", button " << button;
    }
    Form2->mnuBadInfo.Click = [] { FAIL() << "greyed"; };
    Pick(2, "mnuBadInfo");
    Strings entries;
    for (const auto& entry : machine.Windows.Menus.at(0))
        entries.push_back((entry.Enabled ? "" : "grey: ") + entry.Caption);
    EXPECT_EQ(entries, (Strings{"A", "Remove it", "Hide it", "Go this site", "grey: Get info"}));
}

TEST_F(ReportTest, AsksOfEachValueInOneLineOfItsOwn) {
    AddReportRow({"x\r\nFolder: Trash", "Work", std::string(2000, 'u'), "Timed out", ""});
    Pick(4, "mnuBadRemove");
    const std::string question = machine.Windows.Messages.back().Text;
    EXPECT_NE(question.find("\r\nName: x Folder: Trash\r\nFolder: Work\r\n"), std::string::npos) << question;
    EXPECT_TRUE(question.ends_with("...")) << question;
}

TEST_F(ReportTest, RemovesTheRowAsItStandsAfterASortAndAYesOnly) {
    Form5->Grid1.SelectedRow = 1; // "b"
    Form5->Raise(Form5->Grid1.HeaderClick, ReportColumn::Name);
    Pick(Form5->Grid1.SelectedRow, "mnuBadRemove"); // answered No
    ExpectMessage("Are you sure to remove the following Favorite?\r\n\r\nName: b\r\nFolder: Work\r\nProblem: Not found "
                  "(404)\r\nURL: http://b/",
                  MessageIcon::Question);
    EXPECT_EQ(RowsAndFiles(), "Abc Abc");
    machine.Windows.Answers.assign(3, MessageAnswer::Yes);
    Pick(Form5->Grid1.SelectedRow, "mnuBadRemove");
    EXPECT_EQ(RowsAndFiles(), "Ac Ac");
    EXPECT_EQ(Form5->Grid1.SelectedRow, 0);
    // A file that is gone, or stays, takes its row away.
    machine.Favorites.LoseFile("c.url");
    machine.Favorites.ReadOnly.insert(machine.Favorites.Full("A.url"));
    Pick(2, "mnuBadRemove");
    Pick(1, "mnuBadRemove");
    EXPECT_EQ(RowsAndFiles(), " A");
}

TEST_F(ReportTest, HidesAndOpensWithoutTouchingAFile) {
    Pick(1, "mnuBadGo");
    Pick(3, "mnuBadGo");
    EXPECT_EQ(machine.Shell.Urls, (Strings{"http://b/", "http://c/"}));
    Pick(2, "mnuBadHide");
    EXPECT_EQ(RowsAndFiles(), "bc Abc");
    EXPECT_TRUE(machine.Windows.Messages.empty());
    CloseBox(*Form5); // does what "&Done" does
    EXPECT_TRUE(Form3->IsVisible());
}

} // namespace
} // namespace tarnwick

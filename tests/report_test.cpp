#include "Driver.h"

namespace tarnwick {
namespace {

class ReportTest : public Program {
protected:
    void SetUp() override {
        StartProgram();
        for (const char* name : {"b", "A", "c"}) {
            const std::string path = std::string("Work\\") + name + ".url";
            machine.Favorites.AddShortcut(path, "");
            AddReportRow(
                {name, "Work", std::string("http://") + name + "/", "Not found (404)", machine.Favorites.Full(path)});
        }
        Form5.Show();
    }

    using Program::Choose;
    void Choose(int row, const std::string& entry) { Choose(*Form5, Form5->Grid1, row, entry); }
    Strings Names() { return Cells(Form5->Grid1, ReportColumn::Name); }
};

TEST_F(ReportTest, TheMenuNamesTheSelectedRow) {
    EXPECT_EQ(VisibleColumns(Form5->Grid1), (Strings{"Name", "Folder", "URL", "Problem"}));
    Form5->Raise(Form5->Grid1.MouseButton, 2, 0, 5, 5);
    EXPECT_TRUE(machine.Windows.Menus.empty()) << "no row, no menu";
    Form5->Grid1.SelectedRow = 2;
    Form5->Raise(Form5->Grid1.MouseButton, 1, 0, 5, 5);
    EXPECT_TRUE(machine.Windows.Menus.empty());
    Choose(2, "mnuBadInfo"); // greyed: can't be chosen
    ASSERT_EQ(machine.Windows.Menus.size(), 1U);
    Strings captions;
    for (const auto& entry : machine.Windows.Menus[0]) {
        captions.push_back(entry.Caption);
        EXPECT_EQ(entry.Enabled, entry.Caption != "Get info");
    }
    EXPECT_EQ(captions, (Strings{"A", "Remove it", "Hide it", "Go this site", "Get info"}));
}

TEST_F(ReportTest, RemovesTheRowAsItStandsAfterASortAndAYesOnly) {
    Form5->Grid1.SelectedRow = 1; // "b"
    Form5->Raise(Form5->Grid1.HeaderClick, ReportColumn::Name);
    EXPECT_EQ(Names(), (Strings{"A", "b", "c"}));
    Choose(Form5->Grid1.SelectedRow, "mnuBadRemove"); // answered No
    ExpectMessage("Are you sure to remove the following Favorite?\r\n\r\nName: b\r\nFolder: Work\r\nProblem: Not found "
                  "(404)\r\nURL: http://b/",
                  MessageIcon::Question);
    EXPECT_TRUE(machine.Favorites.Has("Work\\b.url"));
    EXPECT_EQ(Names().size(), 3U);

    machine.Windows.Answers = {MessageAnswer::Yes};
    Choose(Form5->Grid1.SelectedRow, "mnuBadRemove");
    EXPECT_FALSE(machine.Favorites.Has("Work\\b.url"));
    EXPECT_TRUE(machine.Favorites.Has("Work\\A.url") && machine.Favorites.Has("Work\\c.url"));
    EXPECT_EQ(Names(), (Strings{"A", "c"}));
    EXPECT_EQ(Form5->Grid1.SelectedRow, 0);
}

TEST_F(ReportTest, AFileThatIsGoneOrStaysTakesItsRowAway) {
    machine.Favorites.LoseFile("Work\\b.url");
    machine.Favorites.ReadOnly.insert(machine.Favorites.Full("Work\\A.url"));
    machine.Windows.Answers = {MessageAnswer::Yes, MessageAnswer::Yes};
    Choose(1, "mnuBadRemove");
    Choose(1, "mnuBadRemove");
    EXPECT_EQ(Names(), Strings{"c"});
    EXPECT_TRUE(machine.Favorites.Has("Work\\A.url"));
    EXPECT_EQ(machine.Windows.Messages.size(), 2U);
}

TEST_F(ReportTest, HidesAndOpensWithoutTouchingAFile) {
    Choose(1, "mnuBadGo");
    Choose(3, "mnuBadGo");
    EXPECT_EQ(machine.Shell.Urls, (Strings{"http://b/", "http://c/"}));
    while (Form5->Grid1.RowCount() > 0)
        Choose(1, "mnuBadHide");
    EXPECT_TRUE(machine.Windows.Messages.empty());
    for (const char* file : {"Work\\A.url", "Work\\b.url", "Work\\c.url"})
        EXPECT_TRUE(machine.Favorites.Has(file));
    EXPECT_TRUE(Form5->IsVisible());
    CloseBox(*Form5); // does what "&Done" does
    EXPECT_TRUE(Form3->IsVisible());
    EXPECT_EQ(Form5->Grid1.RowCount(), 0);
}

} // namespace
} // namespace tarnwick

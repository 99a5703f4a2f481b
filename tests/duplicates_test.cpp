#include "Driver.h"

#include <random>
#include <set>

namespace tarnwick {
namespace {

class DuplicatesTest : public Program {
protected:
    void OpenCheck() {
        if (!Form3.IsLoaded())
            StartProgram();
        Click(Form3->Option2);
        Click(Form3->Command1);
        ASSERT_EQ(Form7->Command1.Caption, "&Start");
    }

    // Presses Start and lets the one tick run.
    void Run() {
        Click(Form7->Command1);
        if (Form7.IsLoaded() && Form7->Timer1.Enabled())
            machine.Windows.WaitForEvents();
    }

    Strings Pairs() {
        Strings pairs = Cells(Form7->Grid1, PairColumn::Link1);
        for (std::size_t row = 0; row < pairs.size(); ++row)
            pairs[row] += "-" + Form7->Grid1.CellText(static_cast<int>(row) + 1, PairColumn::Link2);
        return pairs;
    }

    void AddThree() {
        machine.Favorites.AddShortcut("A.url", "http://one.example/");
        machine.Favorites.AddShortcut("Work\\B.url", "HTTP://ONE.example/");
        machine.Favorites.AddShortcut("Work\\C.url", "http://one.EXAMPLE/");
    }
};

TEST_F(DuplicatesTest, PairsEqualLinksInTheOrderOfADoubleLoop) {
    AddThree();
    machine.Favorites.AddShortcut("Work\\Other.url", "http://one.example"); // no trailing slash: another link
    machine.Favorites.AddShortcut("Work\\Empty.url", "");
    machine.Favorites.AddShortcut("Work\\Deep\\D.url", "http://one.example/"); // below the first level
    machine.Favorites.AddShortcut("My.URLs\\E.url", "http://one.example/");
    std::minstd_rand random(7);
    for (int number = 0; number < 150; ++number)
        machine.Favorites.AddShortcut("F" + std::to_string(number % 7) + "\\" + std::to_string(number) + ".url",
                                      number < 9 ? "" : (number % 2 == 0 ? "x" : "X") + std::to_string(random() % 70));
    OpenCheck();
    Run();
    Strings wanted;
    for (std::size_t i = 0; i < Form7->szLinks.size(); ++i)
        for (std::size_t j = i + 1; j < Form7->szLinks.size(); ++j)
            if (machine.Text.Upper(Form7->szLinks[i]) == machine.Text.Upper(Form7->szLinks[j]))
                wanted.push_back(Form7->szNames[i] + "-" + Form7->szNames[j]);
    EXPECT_EQ(Pairs(), wanted);
    EXPECT_EQ(Form7->szLinks.size(), 155U);
    EXPECT_EQ(VisibleColumns(Form7->Grid1), (Strings{"Link 1", "Folder 1", "Link 2", "Folder 2"}));
    EXPECT_EQ(RowCells(Form7->Grid1, 1), (Strings{"A", "Favorites root", "B", "Work", machine.Favorites.Full("A.url"),
                                                  machine.Favorites.Full("Work\\B.url")}));
    EXPECT_FALSE(Form7->Frame1.Visible);
    EXPECT_TRUE(Form7->Command2.Enabled);
    EXPECT_EQ(Form7->Command1.Caption, "&Finish");
}

TEST_F(DuplicatesTest, SaysSoWhenThereAreNoneAndListsNoMoreFoldersThanItCanCount) {
    machine.Favorites.AddShortcut("A.url", "http://one.example/");
    for (int run = 0; run < 2; ++run) {
        OpenCheck();
        Form7->List1.resize(run == 0 ? 0 : 32765);
        Run();
        EXPECT_EQ(Form7->Label3.Caption, "\r\nThe scan process is done.\r\n\r\nNo duplicated Favorites found at this "
                                         "time.\r\n\r\n\r\nClick Finish button to return to the main window.");
        EXPECT_TRUE(Form7->Label3.Visible && Form7->Frame1.Visible);
        EXPECT_FALSE(Form7->Label1.Visible || Form7->Label2.Visible);
        EXPECT_EQ(Form7->List1.size(), run == 0 ? 1U : 32767U);
        Click(Form7->Command1);
        machine.Favorites.LoseFile("A.url"); // the second time there is no shortcut at all
        for (const char* folder : {"B", "C", "D"})
            machine.Favorites.AddFolder(folder);
    }
}

// Passes of one run: the listing's, 300 ms, the walk's, the comparison's. A cancel in any of them holds.
TEST_F(DuplicatesTest, CancelsInEveryPass) {
    AddThree();
    std::set<std::string> stages;
    int canceled = 0;
    for (int pass = 1; canceled == pass - 1; ++pass) {
        SCOPED_TRACE(pass);
        OpenCheck();
        machine.Windows.InPass(pass, [&] {
            if (Form7.IsLoaded() && Form7->Command1.Caption == "&Cancel") {
                stages.insert(Form7->Label1.Caption + Form7->Label2.Caption);
                Click(Form7->Command1);
                ++canceled;
            }
        });
        Run();
        if (canceled == pass) {
            EXPECT_EQ(Form7->Command1.Caption, "&Finish");
            EXPECT_EQ(Form7->Label1.Caption + Form7->Label2.Caption, "Operation canceled by user");
            EXPECT_TRUE(Form7->Frame1.Visible);
            EXPECT_FALSE(Form7->Command2.Enabled);
            EXPECT_TRUE(NoListingIsOpen());
        }
        Form7.Unload();
        machine.Windows.PumpEvents();
    }
    const std::string gathering = "Scanning Favorites, please wait...";
    EXPECT_EQ(stages, (std::set<std::string>{gathering, gathering + "A", gathering + "B", gathering + "C",
                                             "Comparing links...This can take some minutes"}));
}

// Closes the window in a pass, by the close box or by "&Finish" after a cancel, and starts a new check at once.
TEST_F(DuplicatesTest, AClosedCheckTouchesNothingAndANewOneStartsAtOnce) {
    AddThree();
    for (int pass = 1; pass <= 18; ++pass) {
        SCOPED_TRACE(pass);
        OpenCheck();
        const auto old = std::static_pointer_cast<Form7Window>(Form7->shared_from_this());
        std::string detail;
        machine.Windows.InPass((pass + 1) / 2, [&] {
            if (pass % 2 == 0)
                Click(Form7->Command1);
            pass % 2 == 0 ? Click(Form7->Command1) : Form7->Unload();
            EXPECT_FALSE(old->IsLoaded());
            detail = old->Label2.Caption + std::to_string(old->Grid1.RowCount());
            OpenCheck();
            Run();
            EXPECT_EQ(Pairs().size(), 3U);
        });
        Run();
        while (old->IsLoaded())
            machine.Windows.WaitForEvents();
        EXPECT_NE(&*Form7, old.get());
        EXPECT_EQ(Pairs().size(), 3U) << "the old run has added nothing";
        EXPECT_EQ(old->Label2.Caption + std::to_string(old->Grid1.RowCount()), detail) << "nor has it gone on";
        EXPECT_FALSE(Form7->Frame1.Visible);
        EXPECT_TRUE(NoListingIsOpen());
        Form7.Unload();
    }
}

TEST_F(DuplicatesTest, ARemovalTakesOneRowAndOneFile) {
    AddThree();
    machine.Favorites.ReadOnly.insert(machine.Favorites.Full("Work\\B.url"));
    OpenCheck();
    Run();
    Choose(*Form7, Form7->Grid1, 0, "mnuDupK1"); // no row is selected: the menu opens all the same
    EXPECT_EQ(machine.Windows.Menus.size(), 1U);
    EXPECT_TRUE(machine.Windows.Messages.empty());
    Form7->Raise(Form7->Grid1.HeaderClick, PairColumn::Folder2);
    EXPECT_EQ(Pairs(), (Strings{"A-B", "A-C", "B-C"}));
    const struct {
        int Row;
        const char* Entry;
        MessageAnswer Answer;
        Strings Rows;
        bool HasA, HasC;
    } steps[] = {
        {1, "mnuDupK1", MessageAnswer::Yes, {"A-C", "B-C"}, false, true},
        {1, "mnuDupK1", MessageAnswer::Yes, {"B-C"}, false, true}, // asks about A again, deletes nothing
        {1, "mnuDupK2", MessageAnswer::No, {"B-C"}, false, true},
        {1, "mnuDupK2", MessageAnswer::Yes, {}, false, false},
    };
    for (const auto& step : steps) {
        machine.Windows.Answers = {step.Answer};
        Choose(*Form7, Form7->Grid1, step.Row, step.Entry);
        EXPECT_EQ(Pairs(), step.Rows);
        EXPECT_EQ(machine.Favorites.Has("A.url"), step.HasA);
        EXPECT_EQ(machine.Favorites.Has("Work\\C.url"), step.HasC);
    }
    EXPECT_EQ(machine.Windows.Messages.front().Text,
              "Are you sure to remove the following Favorite?\r\n\r\nName: A\r\nFolder: Favorites root");
    EXPECT_EQ(machine.Windows.Messages.front().Icon, MessageIcon::Question);
    EXPECT_FALSE(Form7->Frame1.Visible);
    Click(Form7->Command1);
    EXPECT_TRUE(Form3->IsVisible() && !Form7.IsLoaded());
}

} // namespace
} // namespace tarnwick

#include "Driver.h"

#include <random>

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

TEST_F(DuplicatesTest, PairsEqualLinksInTheOrderOfGathering) {
    AddThree();
    machine.Favorites.AddShortcut("Work\\Other.url", "http://one.example"); // no trailing slash: another link
    machine.Favorites.AddShortcut("Play\\Empty1.url", "");
    machine.Favorites.AddShortcut("Work\\Empty2.url", "");
    machine.Favorites.AddShortcut("Work\\Deep\\D.url", "http://one.example/"); // below the first level
    machine.Favorites.AddShortcut("My.URLs\\E.url", "http://one.example/");
    OpenCheck();
    Run();
    EXPECT_EQ(Pairs(), (Strings{"A-B", "A-C", "Empty1-Empty2", "B-C"}));
    EXPECT_EQ(RowCells(Form7->Grid1, 1), (Strings{"A", "Favorites root", "B", "Work", machine.Favorites.Full("A.url"),
                                                  machine.Favorites.Full("Work\\B.url")}));
    EXPECT_FALSE(Form7->Frame1.Visible);
    EXPECT_TRUE(Form7->Command2.Enabled);
    EXPECT_EQ(Form7->Command1.Caption, "&Finish");
    EXPECT_TRUE(NoListingIsOpen());
    Click(Form7->Command1);
    EXPECT_FALSE(Form7.IsLoaded());
    EXPECT_TRUE(Form3->IsVisible());
}

TEST_F(DuplicatesTest, FindsThePairsOfADoubleLoopInItsOrder) {
    std::minstd_rand random(7);
    for (const int texts : {1, 5, 90}) {
        machine.Favorites.Root += 'x'; // an empty one
        for (int number = 0; number < 120; ++number)
            machine.Favorites.AddShortcut("F" + std::to_string(number % 7) + "\\" + std::to_string(number) + ".url",
                                          (random() % 2 == 0 ? "http://E/" : "HTTP://e/") +
                                              std::to_string(random() % texts));
        OpenCheck();
        Run();
        Strings wanted;
        for (std::size_t i = 0; i < Form7->szLinks.size(); ++i)
            for (std::size_t j = i + 1; j < Form7->szLinks.size(); ++j)
                if (machine.Text.Upper(Form7->szLinks[i]) == machine.Text.Upper(Form7->szLinks[j]))
                    wanted.push_back(Form7->szNames[i] + "-" + Form7->szNames[j]);
        EXPECT_EQ(Pairs(), wanted);
        Form7.Unload();
    }
}

TEST_F(DuplicatesTest, SaysSoWhenThereAreNone) {
    machine.Favorites.AddShortcut("A.url", "http://one.example/");
    for (int run = 0; run < 2; ++run) {
        OpenCheck();
        Run();
        EXPECT_EQ(Form7->Label3.Caption, "\r\nThe scan process is done.\r\n\r\nNo duplicated Favorites found at this "
                                         "time.\r\n\r\n\r\nClick Finish button to return to the main window.");
        EXPECT_TRUE(Form7->Label3.Visible && Form7->Frame1.Visible);
        EXPECT_FALSE(Form7->Label1.Visible || Form7->Label2.Visible);
        Click(Form7->Command1);
        machine.Favorites.LoseFile("A.url"); // the second time there is no shortcut at all
    }
}

// Passes of one run: the listing's, 300 ms, the walk's, the comparison's. A cancel in any of them holds.
TEST_F(DuplicatesTest, CancelsInEveryPass) {
    AddThree();
    int canceled = 0;
    for (int pass = 1; canceled == pass - 1; ++pass) {
        SCOPED_TRACE(pass);
        OpenCheck();
        machine.Windows.InPass(pass, [&] {
            if (Form7.IsLoaded() && Form7->Command1.Caption == "&Cancel") {
                Click(Form7->Command1);
                ++canceled;
            }
        });
        Run();
        if (canceled == pass) {
            EXPECT_EQ(Form7->Command1.Caption, "&Finish");
            EXPECT_EQ(Form7->Label2.Caption, "Operation canceled by user");
            EXPECT_EQ(Form7->Label1.Caption, "");
            EXPECT_TRUE(Form7->Frame1.Visible);
            EXPECT_FALSE(Form7->Command2.Enabled);
            EXPECT_TRUE(NoListingIsOpen());
        }
        Form7.Unload();
        machine.Windows.PumpEvents();
    }
    EXPECT_GT(canceled, 8);
}

// Closes the window in a pass, by the close box or by "&Finish" behind a cancel, and starts a new check at once.
TEST_F(DuplicatesTest, AClosedCheckTouchesNothingAndANewOneStartsAtOnce) {
    AddThree();
    for (const bool finish : {false, true}) {
        for (int pass = 1; pass <= 9; ++pass) {
            SCOPED_TRACE(pass);
            OpenCheck();
            const auto old = std::static_pointer_cast<Form7Window>(Form7->shared_from_this());
            int rows = -1;
            std::string detail;
            machine.Windows.InPass(pass, [&] {
                if (finish)
                    Click(Form7->Command1);
                finish ? Click(Form7->Command1) : Form7->Unload();
                EXPECT_FALSE(old->IsLoaded());
                EXPECT_TRUE(Form3->IsVisible());
                rows = old->Grid1.RowCount();
                detail = old->Label2.Caption;
                Click(Form3->Option2);
                Click(Form3->Command1);
                Run();
                EXPECT_EQ(Pairs().size(), 3U);
            });
            Run();
            while (old->IsLoaded())
                machine.Windows.WaitForEvents();
            EXPECT_NE(&*Form7, old.get());
            EXPECT_EQ(Pairs().size(), 3U) << "the old run has added nothing";
            EXPECT_EQ(old->Grid1.RowCount(), rows) << "nor has it gone on by itself";
            EXPECT_EQ(old->Label2.Caption, detail);
            EXPECT_FALSE(Form7->Frame1.Visible);
            EXPECT_TRUE(NoListingIsOpen());
            Form7.Unload();
        }
    }
}

class PairsTest : public DuplicatesTest {
protected:
    void SetUp() override {
        AddThree();
        OpenCheck();
        Run();
        machine.Windows.Answers.assign(9, MessageAnswer::Yes);
    }

    void Remove(int row, const std::string& entry) { Choose(*Form7, Form7->Grid1, row, entry); }
};

TEST_F(PairsTest, ARemovalTakesOneRowAndOneFile) {
    Remove(1, "mnuDupK1");
    ExpectMessage("Are you sure to remove the following Favorite?\r\n\r\nName: A\r\nFolder: Favorites root",
                  MessageIcon::Question);
    EXPECT_FALSE(machine.Favorites.Has("A.url"));
    EXPECT_EQ(Pairs(), (Strings{"A-C", "B-C"}));
    Remove(1, "mnuDupK1"); // asks about A again, deletes nothing
    EXPECT_EQ(Pairs(), Strings{"B-C"});
    EXPECT_TRUE(machine.Favorites.Has("Work\\B.url") && machine.Favorites.Has("Work\\C.url"));
    machine.Windows.Answers.front() = MessageAnswer::No;
    Remove(1, "mnuDupK2");
    EXPECT_TRUE(machine.Favorites.Has("Work\\C.url"));
    Remove(1, "mnuDupK2");
    EXPECT_FALSE(machine.Favorites.Has("Work\\C.url"));
    EXPECT_TRUE(machine.Favorites.Has("Work\\B.url"));
    EXPECT_FALSE(Form7->Frame1.Visible);
    Click(Form7->Command1);
    EXPECT_TRUE(Form3->IsVisible());
}

TEST_F(PairsTest, ReadOnlyFilesStayAndNoSelectionDoesNothing) {
    machine.Favorites.ReadOnly.insert(machine.Favorites.Full("A.url"));
    Remove(0, "mnuDupK1");
    EXPECT_EQ(machine.Windows.Menus.size(), 1U) << "the menu opens all the same";
    EXPECT_TRUE(machine.Windows.Messages.empty());
    Form7->Raise(Form7->Grid1.HeaderClick, PairColumn::Folder2);
    EXPECT_EQ(Pairs(), (Strings{"A-B", "A-C", "B-C"}));
    Remove(2, "mnuDupK1");
    EXPECT_EQ(Pairs(), (Strings{"A-B", "B-C"}));
    EXPECT_TRUE(machine.Favorites.Has("A.url"));
}

} // namespace
} // namespace tarnwick

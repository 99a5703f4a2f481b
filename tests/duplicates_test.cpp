#include "Driver.h"

#include <random>
#include <set>
#include <tuple>

namespace tarnwick {
namespace {

class DuplicatesTest : public Program {
protected:
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
    StartProgram();
    CheckDuplicates();
    Strings wanted;
    for (std::size_t i = 0; i < Form7->szLinks.size(); ++i)
        for (std::size_t j = i + 1; j < Form7->szLinks.size(); ++j)
            if (machine.Text.Upper(Form7->szLinks[i]) == machine.Text.Upper(Form7->szLinks[j]))
                wanted.push_back(Form7->szNames[i] + "-" + Form7->szNames[j]);
    EXPECT_EQ(Pairs(), wanted);
    EXPECT_EQ(Form7->szLinks.size(), 155U);
    EXPECT_EQ(VisibleColumns(Form7->Grid1), (Strings{"Link 1 105", "Folder 1 93", "Link 2 105", "Folder 2 93"}));
    EXPECT_EQ(RowCells(Form7->Grid1, 1), (Strings{"A", "Favorites root", "B", "Work", machine.Favorites.Full("A.url"),
                                                  machine.Favorites.Full("Work\\B.url")}));
    machine.Windows.PumpEvents();
    EXPECT_EQ(machine.Windows.Spoken.back(), Form7->Label4.Caption);
    EXPECT_FALSE(Form7->Frame1.Visible);
    EXPECT_TRUE(Form7->Command2.Enabled);
    EXPECT_EQ(Form7->Command1.Caption, "&Finish");
}

TEST_F(DuplicatesTest, SaysSoWhenThereAreNoneAndListsNoMoreFoldersThanItCanCount) {
    machine.Favorites.AddShortcut("A.url", "http://one.example/");
    StartProgram();
    for (const std::size_t before : {0U, 32765U}) {
        Form7->List1.resize(before);
        CheckDuplicates();
        EXPECT_EQ(Form7->Label3.Caption, "\r\nThe scan process is done.\r\n\r\nNo duplicated Favorites found at this "
                                         "time.\r\n\r\n\r\nClick Finish button to return to the main window.");
        EXPECT_TRUE(Form7->Label3.Visible && Form7->Frame1.Visible);
        EXPECT_FALSE(Form7->Label1.Visible || Form7->Label2.Visible);
        EXPECT_EQ(Form7->List1.size(), before == 0 ? 1U : 32767U);
        Click(Form7->Command1);
        machine.Favorites.LoseFile("A.url"); // the second time there is no shortcut at all
        for (const char* folder : {"B", "C", "D"})
            machine.Favorites.AddFolder(folder);
    }
}

// Passes of one run: the listing's, the walk's, the comparison's, which begin with its first step and amid its rows. A
// close leads to a new check at once.
TEST_F(DuplicatesTest, ACancelAndACloseHoldInEveryPass) {
    const std::string gathering = "Scanning Favorites, please wait...";
    std::set<std::string> stages, wanted = {gathering, "Comparing links...This can take some minutes"};
    for (const char* name : {"A", "B", "C", "D", "E", "F", "G", "H", "I", "J", "K", "L"}) {
        machine.Favorites.AddShortcut(std::string("Work\\") + name + ".url", "http://one.example/");
        wanted.insert(gathering + name);
    }
    StartProgram();
    for (const std::string way : {"cancel", "cancel and finish", "close box"})
        for (int pass = 1; pass <= 20; ++pass) {
            SCOPED_TRACE(way + " in pass " + std::to_string(pass));
            const auto old = std::static_pointer_cast<Form7Window>(Form7->shared_from_this());
            const auto detail = [&] {
                return old->Label2.Caption + std::to_string(old->Grid1.RowCount() + 1000 * old->List1.size());
            };
            std::string last;
            machine.Windows.InPass(pass, [&] {
                if (old->Label1.Visible && old->Label2.Visible)
                    stages.insert(old->Label1.Caption + old->Label2.Caption);
                way == "close box" ? CloseBox(*old) : Click(old->Command1);
                if (way == "cancel and finish")
                    Click(old->Command1);
                last = detail();
                if (way != "cancel")
                    CheckDuplicates();
            });
            CheckDuplicates();
            ASSERT_NE(last, "");
            EXPECT_EQ(detail(), last) << "the old run has gone on";
            EXPECT_TRUE(NoListingIsOpen());
            if (way == "cancel") {
                EXPECT_EQ(Form7->Command1.Caption, "&Finish");
                EXPECT_EQ(Form7->Label1.Caption + Form7->Label2.Caption, "Operation canceled by user");
                EXPECT_TRUE(Form7->Frame1.Visible && !Form7->Command2.Enabled);
            } else {
                EXPECT_FALSE(old->IsLoaded() || Form7->Frame1.Visible);
                EXPECT_EQ(Pairs().size(), 66U) << "the old run has added some";
            }
            Form7.Unload();
        }
    EXPECT_EQ(stages, wanted);
}

TEST_F(DuplicatesTest, ARemovalTakesOneRowAndOneFile) {
    AddThree();
    machine.Favorites.ReadOnly.insert(machine.Favorites.Full("Work\\B.url"));
    StartProgram();
    CheckDuplicates();
    Choose(*Form7, Form7->Grid1, 0, "mnuDupK1"); // no row is selected: the menu opens all the same
    EXPECT_EQ(machine.Windows.Menus.size(), 1U);
    EXPECT_TRUE(machine.Windows.Messages.empty());
    Form7->Raise(Form7->Grid1.HeaderClick, PairColumn::Folder2);
    EXPECT_EQ(Pairs(), (Strings{"A-B", "A-C", "B-C"}));
    const std::tuple<const char*, MessageAnswer, Strings, bool, bool> steps[] = {
        {"mnuDupK1", MessageAnswer::Yes, {"A-C", "B-C"}, false, true},
        {"mnuDupK1", MessageAnswer::Yes, {"B-C"}, false, true}, // asks about A again, deletes nothing
        {"mnuDupK2", MessageAnswer::No, {"B-C"}, false, true},
        {"mnuDupK2", MessageAnswer::Yes, {}, false, false}};
    for (const auto& [entry, answer, pairs, hasA, hasC] : steps) {
        machine.Windows.Answers = {answer};
        Choose(*Form7, Form7->Grid1, 1, entry);
        EXPECT_EQ(Pairs(), pairs);
        EXPECT_EQ(machine.Favorites.Has("A.url"), hasA);
        EXPECT_EQ(machine.Favorites.Has("Work\\C.url"), hasC);
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

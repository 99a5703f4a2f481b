// Whole checks over real connections to the sample's site, which answers well and badly.

#include "Driver.h"
#include "PosixMachine.h"
#include "posix_support.h"
#include "servers_support.h"

#include <map>

namespace tarnwick::test {

namespace {

class ServersTest : public ProgramOn<PosixMachine> {
protected:
    ServersTest() {
        CatchAll();
        machine.Settings.Values["Timeout"] = "1";
        machine.Events.EachPass = [this] {
            if (Form4.IsLoaded() && Form4->Command1.Caption == "&Stop")
                statuses[Form4->Label6.Caption] = Form4->Label8.Caption;
        };
    }

    void AddFavorite(const std::string& name, const std::string& url) {
        WriteFile(FileOf(name), "[InternetShortcut]\r\nURL=" + url + "\r\n");
    }
    std::string FileOf(const std::string& name) const { return home / ("Favorites/" + name + ".url"); }
    void CheckRoot() {
        Form3.Show();
        CheckNodes({"- Favorites Root -"});
    }

    TemporaryHome home;
    std::map<std::string, std::string> statuses; // by the favorite's name: what the window showed last
};

} // namespace

TEST_F(ServersTest, EachAnswerEndsItsOwnLinkAlone) {
    struct Link {
        std::string Path, Status, Problem; // no problem: no row
        std::string User = {}, Host = Site().Serving;
    };
    const std::string checking = "Checking document...";
    const Link links[] = {
        {"good", "Document OK", ""},
        {"missing?a=1#b", "Document not found", "Not found (404)"},
        {"forbidden", "Document forbidden", "Forbidden (403)"},
        {"private", "Unauthorized", "Unauthorized (401)"},
        {"private/in", "Document OK", "", "anna:secret@"},
        {"private/wrong", "Unauthorized", "Unauthorized (401)", "anna:secreT@"},
        {"moved", checking, ""},
        {"error", checking, ""},
        {"close", checking, ""},
        {"reset", checking, ""},
        {"garbage", checking, ""},
        {"split", checking, ""},
        {"endless", "Document OK", ""},
        {"slow", "Timed out", "Timed out"},
        {"refused", "Connection error", "Connection error", "", Site().Refusing},
        {"no name", "Unable to connect", "Unable to connect", "", "empty..label.invalid"},
    };
    const int before = OpenSockets();
    std::map<std::string, std::string> expected;
    std::vector<Strings> rows;
    for (const Link& link : links) {
        const std::string name = std::to_string(10 + expected.size());
        const std::string url = "http://" + link.User + link.Host + "/" + link.Path;
        expected[name] = link.Status;
        AddFavorite(name, url);
        if (!link.Problem.empty())
            rows.push_back({name, "Favorites root", url, link.Problem, Backslashed(FileOf(name))});
    }
    const std::int64_t start = machine.Clock.Now();
    CheckRoot();
    const std::int64_t took = machine.Clock.Now() - start;
    EXPECT_TRUE(took >= 995 && took < 10000) << took << " ms, of which the silent link has one second";
    statuses.erase("Waiting...");
    EXPECT_EQ(statuses, expected);
    std::vector<Strings> report;
    for (int row = 1; row <= Form5->Grid1.RowCount(); ++row)
        report.push_back(RowCells(Form5->Grid1, row));
    EXPECT_EQ(report, rows);
    EXPECT_EQ(OpenSockets(), before);
}

TEST_F(ServersTest, StopAndCloseBoxDropTheConnection) {
    machine.Settings.Values["Timeout"] = "20";
    for (const bool closeBox : {false, true}) {
        for (const char* status : {"Connecting...", "Checking document..."}) {
            SCOPED_TRACE(status);
            const int before = OpenSockets();
            AddFavorite("a", "http://" + Site().Serving + "/slow");
            AddFavorite("b", "http://" + Site().Serving + "/missing");
            machine.Events.When([&] { return Form4->Label8.Caption == status; },
                                [&] { closeBox ? CloseBox(*Form4) : Click(Form4->Command1); });
            CheckRoot();
            EXPECT_EQ(OpenSockets(), before);
            EXPECT_EQ(Form5->Grid1.RowCount(), 0);
            if (!closeBox)
                Click(Form4->Command1);
            EXPECT_TRUE(Form3->IsVisible());
            Form4.Unload();
        }
    }
}

} // namespace tarnwick::test

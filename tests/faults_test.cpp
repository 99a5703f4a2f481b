#include "Driver.h"

namespace tarnwick {
namespace {

const std::pair<std::string, const char*> Links[] = {
    {"Gone", "http://gone/"},       {"Good", "http://good/"},       {"Work\\Shut", "http://shut/"},
    {"Work\\Twin", "HTTP://good/"}, {"Work\\None", "http://none/"}, {"Work\\Deep\\Silent", "http://silent/"},
    {"Mail", "mailto:someone"}};

void Prepare(HeadlessPlatform& machine) {
    for (const auto& [path, url] : Links)
        machine.Favorites.AddShortcut(path + ".url", url);
    machine.Sockets.Hosts = {
        {"gone", {.Reply = "x 404 y"}}, {"good", {.Reply = "x 200 y"}}, {"shut", {.Refuses = true}}, {"silent", {}}};
    for (const char* key : {"Catch404", "CatchConnerr", "CatchTimedout", "CatchUnabled"})
        machine.Settings.Values[key] = "1";
    machine.Settings.Values["Timeout"] = "10";
}

// How the program is left, whatever has failed: open for its user, with every favorite but those that he gave up.
void ExpectSound(HeadlessPlatform& machine) {
    EXPECT_TRUE(std::ranges::any_of(machine.Loop.Windows(), &Window::TakesInput));
    EXPECT_FALSE(machine.Windows.HasEnded());
    EXPECT_EQ(machine.Sockets.OpenNumbers.size(), 0U);
    EXPECT_TRUE(NoListingIsOpen());
    std::string questions;
    for (const auto& message : machine.Windows.Messages)
        questions += message.Icon == MessageIcon::Question ? message.Text : "";
    for (const auto& [path, url] : Links) {
        const std::string question = "Name: " + path.substr(path.rfind('\\') + 1) + "\r\n";
        EXPECT_TRUE(machine.Favorites.Has(path + ".url") || questions.find(question) != std::string::npos) << path;
    }
    EXPECT_EQ(machine.Settings.Values["Timeout"] == "10", machine.Settings.Values["Timeout"] != "11");
}

TEST(FaultsTest, EachServiceCallFailsOnceInEachOfItsWays) {
    bool struck = true;
    for (int call = 1; struck && !::testing::Test::HasFailure(); ++call) {
        int ways = 1;
        for (int way = 1; way <= ways; ++way) {
            User<HeadlessPlatform> user;
            Prepare(user.machine);
            Fault& fault = user.machine.Faults;
            fault.Number = call;
            fault.Way = way;
            user.DoEverything("11");
            fault.Number = 0;
            SCOPED_TRACE(fault.Struck() + ", call " + std::to_string(call) + ", way " + std::to_string(way));
            ExpectSound(user.machine);
            struck = !fault.Struck().empty();
            ways = fault.Ways();
            if (!struck) {
                EXPECT_GT(call, 100) << "hardly any call was to fail";
                EXPECT_FALSE(user.machine.Favorites.Has("Gone.url") || user.machine.Favorites.Has("Work\\Twin.url"));
                EXPECT_EQ(user.machine.Settings.Values["Timeout"], "11");
            }
        }
    }
}

TEST(FaultsTest, TheEndOfTheProgramEndsEveryCheck) {
    for (int pass = 1; pass <= 40; ++pass)
        for (const bool duplicates : {true, false}) {
            User<HeadlessPlatform> user;
            Prepare(user.machine);
            user.StartProgram();
            const auto reached = [&] {
                return (duplicates ? Form7->Command1 : Form4->Command1).Caption +
                       std::to_string(user.machine.Favorites.ReadIn.size());
            };
            std::string last;
            user.machine.Windows.InPass(pass, [&] {
                user.machine.Windows.End();
                last = reached();
            });
            duplicates ? user.CheckDuplicates() : user.CheckNodes({"- Favorites Root -"});
            EXPECT_TRUE(last.empty() || reached() == last) << last << " in pass " << pass;
            EXPECT_TRUE(NoListingIsOpen() && user.machine.Sockets.OpenNumbers.empty());
        }
}

} // namespace
} // namespace tarnwick

#include "Driver.h"
#include "Scenario.h"

namespace tarnwick::test {

namespace {

const std::pair<const char*, const char*> Links[] = {{"Gone.url", "http://gone.example/"},
                                                     {"Good.url", "http://good.example/"},
                                                     {"Work\\Shut.url", "http://shut.example/"},
                                                     {"Work\\Twin.url", "HTTP://good.example/"},
                                                     {"Work\\None.url", "http://none.example/"},
                                                     {"Work\\Deep\\Silent.url", "http://silent.example/"},
                                                     {"Mail.url", "mailto:someone"}};

void Prepare(HeadlessPlatform& machine) {
    tarnwick::Favorites::SplashDone = tarnwick::Favorites::RunCompleted = false;
    for (const auto& [path, url] : Links)
        machine.Favorites.AddShortcut(path, url);
    machine.Sockets.Hosts = {{"gone.example", {.Reply = "HTTP/1.0 404 x"}},
                             {"good.example", {.Reply = "HTTP/1.0 200 x"}},
                             {"shut.example", {.Refuses = true}},
                             {"silent.example", {}}};
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
    std::ptrdiff_t lost = 0;
    for (const std::string path : {"Gone", "Good", "Work\\Shut", "Work\\Twin", "Work\\None", "Work\\Deep\\Silent"}) {
        const std::string question = "Name: " + path.substr(path.rfind('\\') + 1) + "\r\n";
        lost += machine.Favorites.Has(path + ".url") ? 0 : 1;
        EXPECT_TRUE(machine.Favorites.Has(path + ".url") || questions.find(question) != std::string::npos) << path;
    }
    EXPECT_TRUE(machine.Favorites.Has("Mail.url"));
    EXPECT_LE(lost, 2);
    EXPECT_EQ(machine.Settings.Values["Timeout"] == "10", machine.Settings.Values["Timeout"] != "11");
}

} // namespace

TEST(FaultsTest, EachServiceCallFailsOnceInEachOfItsWays) {
    int tried = 0;
    bool struck = true;
    for (int call = 1; struck && !HasFailure(); ++call) {
        struck = false;
        int ways = 1;
        for (int way = 1; way <= ways; ++way) {
            HeadlessPlatform machine;
            Prepare(machine);
            machine.Faults.Number = call;
            machine.Faults.Way = way;
            Scenario(machine.Windows).Play();
            machine.Faults.Number = 0;
            SCOPED_TRACE(machine.Faults.Struck() + ", call " + std::to_string(call) + ", way " + std::to_string(way));
            ExpectSound(machine);
            struck = !machine.Faults.Struck().empty();
            tried += struck ? 1 : 0;
            ways = machine.Faults.Ways();
            if (!struck) {
                EXPECT_FALSE(machine.Favorites.Has("Gone.url") || machine.Favorites.Has("Work\\Twin.url"));
                EXPECT_EQ(machine.Settings.Values["Timeout"], "11");
            }
        }
    }
    RecordProperty("calls", tried);
}

} // namespace tarnwick::test

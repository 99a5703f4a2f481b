// What takes too long for every test run: 30,000 links of every kind of bad server in one run, 300 runs in one process,
// 200 kills at random times. tests/long builds and runs it.

#include "Driver.h"
#include "platform/posix/PosixSettings.h"
#include "posix_support.h"
#include "report/ReportRow.h"

#include <chrono>
#include <csignal>
#include <cstdio>
#include <map>
#include <random>
#include <thread>

namespace tarnwick::test {
namespace {

using std::chrono::microseconds;

struct Usage {
    long Kilobytes, Descriptors;
};

// What this process uses now, on a line of its own.
Usage Measure(const char* what, int number) {
    long pages = 0, resident = 0;
    std::ifstream("/proc/self/statm") >> pages >> resident;
    const std::filesystem::directory_iterator descriptors("/proc/self/fd");
    const Usage usage{resident * sysconf(_SC_PAGESIZE) / 1024, std::distance(begin(descriptors), end(descriptors))};
    std::printf("%s %5d: %ld kB, %ld descriptors\n", what, number, usage.Kilobytes, usage.Descriptors);
    return usage;
}

class Proofs : public ::testing::Test {
protected:
    // Links of every kind that needs no time-out, in files of their own. The sample's site answers as the first piece
    // of a path says, until this process has gone.
    void MakeFavorites(int count) {
        char serving[64] = {}, refusing[64] = {}; // address and port
        FILE* site = popen("exec python3 '" SAMPLE_SITE "'", "re");
        ASSERT_TRUE(site != nullptr && std::fscanf(site, "%63s %63s", serving, refusing) == 2);
        const std::string root = std::string(serving) + "/";
        std::vector<std::pair<std::string, std::string>> kinds = {
            {root + "missing", "Not found (404)"},
            {root + "forbidden", "Forbidden (403)"},
            {root + "private", "Unauthorized (401)"},
            {"anna:secreT@" + root + "private/wrong", "Unauthorized (401)"},
            {"anna:secret@" + root + "private/in", ""},
            {refusing, "Connection error"},
            {"empty..label.invalid", "Unable to connect"},
            {"127.0.0.1:70000", "Unable to connect"}};
        for (const char* path : {"good", "error", "garbage", "close", "reset", "moved", "split", "endless"})
            kinds.emplace_back(root + path, "");
        for (int link = 0; link < count; ++link) {
            const auto& [url, problem] = kinds[static_cast<std::size_t>(link) % kinds.size()];
            const std::string name = std::to_string(link);
            const std::string path = home_ / ("Favorites/" + std::to_string(link / 1000) + "/" + name + ".url");
            files_[path] = "[InternetShortcut]\r\nURL=http://" + url + "\r\n";
            WriteFile(path, files_[path]);
            if (!problem.empty())
                problems_.emplace(name, problem);
        }
    }

    // One availability check; the report is left as a person leaves it.
    void CheckOnce(User<PosixMachine>& user) const {
        user.CheckAll();
        std::multimap<std::string, std::string> reported;
        for (int row = 1; row <= Form5->Grid1.RowCount(); ++row)
            reported.emplace(user.RowCells(Form5->Grid1, row)[0], user.RowCells(Form5->Grid1, row)[3]);
        EXPECT_TRUE(reported == problems_) << reported.size() << " rows";
        user.CloseBox(*Form5);
    }

    // The whole scenario in a process of its own, which dies after this time. Its exit status; every favorite is
    // restored after that, and has to be whole or one of the two that the scenario removes.
    int Play(const std::string& timeout, microseconds life = std::chrono::hours(1)) const {
        const int status = InChild([&] {
            std::thread([life] {
                std::this_thread::sleep_for(life);
                kill(getpid(), SIGKILL);
            }).detach();
            User<PosixMachineWith<PosixSettings>> user;
            user.CatchAll();
            user.DoEverything(timeout);
            for (int save = 0; save < 20; ++save) // so that many a kill hits one
                user.SaveTimeout(timeout);
            return HasFailure() || std::to_string(Preferences.Timeout) != timeout ? 1 : 0;
        });
        EXPECT_TRUE(status == 0 || status == 128 + SIGKILL) << status;
        int removed = 0;
        for (const auto& [path, bytes] : files_) {
            removed += std::filesystem::exists(path) ? 0 : 1;
            EXPECT_TRUE(!std::filesystem::exists(path) || FileBytes(path) == bytes) << path;
            WriteFile(path, bytes);
        }
        EXPECT_LE(removed, 2);
        return status;
    }

    TemporaryHome home_;
    std::map<std::string, std::string> files_;         // path to bytes
    std::multimap<std::string, std::string> problems_; // name to problem
};

TEST_F(Proofs, Links) {
    constexpr int count = 30000;
    MakeFavorites(count);
    User<PosixMachine> user;
    user.CatchAll();
    user.StartProgram();
    const long before = Measure("link", 0).Descriptors;
    std::string last;
    int links = 0;
    const std::function<void()> look = [&] {
        user.machine.Windows.InPass(1, look);
        const bool isNew = std::exchange(last, Favorites::CurrentLink.File) != Favorites::CurrentLink.File;
        if (isNew && ++links % 5000 == 0 && Measure("link", links).Descriptors > before + 2)
            ADD_FAILURE() << "more than one connection at a time";
    };
    look();
    CheckOnce(user);
    EXPECT_EQ(links, count);
    EXPECT_EQ(Measure("link", count).Descriptors, before);
}

TEST_F(Proofs, Runs) {
    MakeFavorites(66);
    User<PosixMachine> user;
    user.CatchAll();
    user.StartProgram();
    std::vector<Usage> usages = {Measure("run", 0)};
    for (int run = 1; run <= 300; ++run) {
        CheckOnce(user);
        if (run % 50 != 0)
            continue;
        usages.push_back(Measure("run", run));
        EXPECT_EQ(usages.back().Descriptors, usages[0].Descriptors);
    }
    EXPECT_LE(usages.back().Kilobytes - usages[1].Kilobytes, 512) << "memory isn't flat";
}

TEST_F(Proofs, Kill) {
    MakeFavorites(110);
    const auto start = std::chrono::steady_clock::now();
    ASSERT_EQ(Play("11"), 0);
    ASSERT_EQ(Play("10"), 0);
    const auto length = std::chrono::duration_cast<microseconds>(std::chrono::steady_clock::now() - start) / 2;
    std::mt19937 random(1); // NOLINT: the same times each run
    std::uniform_int_distribution<microseconds::rep> moment(0, length.count());
    std::string stored = "10";
    int killed = 0, changed = 0;
    for (int attempt = 0; attempt < 1000 && killed < 200; ++attempt) {
        const std::string timeout = stored == "10" ? "11" : "10";
        const bool wasKilled = Play(timeout, microseconds(moment(random))) == 128 + SIGKILL;
        std::vector<Setting> settings = {{"Timeout", "none"}};
        PosixSettings().Read("Tarnwick", "Preferences", settings);
        const std::string now = settings[0].Value;
        EXPECT_TRUE(now == stored || now == timeout) << "neither old nor new: " << now;
        killed += wasKilled ? 1 : 0;
        changed += wasKilled && now == timeout ? 1 : 0;
        stored = now;
    }
    EXPECT_EQ(killed, 200);
    EXPECT_TRUE(changed > 0 && changed < killed) << "every kill came before or after the save";
    EXPECT_EQ(Play("10"), 0) << "the next start isn't clean";
    const std::filesystem::recursive_directory_iterator entries(home_ / "config");
    EXPECT_EQ(std::distance(begin(entries), end(entries)), 2) << "the settings' folder and file";
}

} // namespace
} // namespace tarnwick::test

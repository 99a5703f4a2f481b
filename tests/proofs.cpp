// What takes too long for every test run: 30,000 links of every kind of bad server in one run, 300 runs in one process,
// 200 kills at random times. Usage: proofs links|runs|kill

#include "PosixMachine.h"
#include "Scenario.h"
#include "favorites/Favorites.h"
#include "favorites/Preferences.h"
#include "platform/posix/PosixSettings.h"
#include "posix_support.h"
#include "report/ReportRow.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <iterator>
#include <map>
#include <random>
#include <set>
#include <stdexcept>
#include <sys/wait.h>
#include <thread>

namespace tarnwick::test {

namespace {

bool sound = true;

void Expect(bool condition, const std::string& what) {
    if (!condition)
        std::printf("FAILED: %s\n", what.c_str());
    sound = sound && condition;
}

long ResidentKilobytes() {
    long pages = 0, resident = 0;
    std::ifstream("/proc/self/statm") >> pages >> resident;
    return resident * sysconf(_SC_PAGESIZE) / 1024;
}

long OpenDescriptors() {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), std::filesystem::directory_iterator());
}

// The sample's site answers as the first piece of a path says, until this process has gone.
struct SampleSite {
    SampleSite() {
        FILE* site = popen("exec python3 '" SAMPLE_SITE "'", "re");
        if (site == nullptr || std::fscanf(site, "%63s %63s", Serving, Refusing) != 2)
            throw std::runtime_error("the sample's site doesn't start");
    }
    char Serving[64] = {}, Refusing[64] = {}; // address and port
};

// Links of every kind that needs no time-out, in files of their own.
class Links {
public:
    explicit Links(int count) {
        const SampleSite sample;
        const std::string site = "http://" + std::string(sample.Serving) + "/";
        const std::pair<std::string, std::string> kinds[] = {
            {site + "good", ""},
            {site + "missing", "Not found (404)"},
            {site + "forbidden", "Forbidden (403)"},
            {site + "private", "Unauthorized (401)"},
            {site + "error", ""},
            {site + "garbage", ""},
            {site + "close", ""},
            {site + "reset", ""},
            {site + "moved", ""},
            {site + "split", ""},
            {site + "endless", ""},
            {"http://anna:secret@" + std::string(sample.Serving) + "/private/in", ""},
            {"http://anna:secreT@" + std::string(sample.Serving) + "/private/wrong", "Unauthorized (401)"},
            {"http://" + std::string(sample.Refusing), "Connection error"},
            {"http://empty..label.invalid", "Unable to connect"},
            {"http://127.0.0.1:70000", "Unable to connect"}};
        for (int link = 0; link < count; ++link) {
            const auto& [url, problem] = kinds[static_cast<std::size_t>(link) % std::size(kinds)];
            const std::string name = std::to_string(link);
            files_[home_ / ("Favorites/" + std::to_string(link / 1000) + "/" + name + ".url")] =
                "[InternetShortcut]\r\nURL=" + url + "\r\n";
            if (!problem.empty())
                problems_[name] = problem;
        }
        Restore();
    }

    // Every favorite as it was; false if one is neither whole nor removed, or more than these are gone.
    bool Restore(int removed = 0) {
        bool whole = true;
        for (const auto& [path, bytes] : files_) {
            const std::string found = FileBytes(path);
            whole = whole && (found == bytes || (!std::filesystem::exists(path) && --removed >= 0));
            if (found != bytes)
                WriteFile(path, bytes);
        }
        return whole;
    }
    bool ReportIsExact() const {
        std::map<std::string, std::string> rows;
        for (int row = 1; row <= Form5->Grid1.RowCount(); ++row)
            rows[Form5->Grid1.CellText(row, ReportColumn::Name)] = Form5->Grid1.CellText(row, ReportColumn::Problem);
        return rows == problems_ && Form5->Grid1.RowCount() == static_cast<int>(problems_.size());
    }
    std::string SettingsFolder() const { return home_ / "config"; }

private:
    TemporaryHome home_;
    std::map<std::string, std::string> files_;    // path to bytes
    std::map<std::string, std::string> problems_; // name to problem
};

void CatchAll(SettingsService& settings) {
    for (const char* key : {"Catch401", "Catch403", "Catch404", "CatchUnabled", "CatchTimedout", "CatchConnerr"})
        settings.Write("Tarnwick", "Preferences", {{key, "1"}});
}

// One availability check; the report is left as a person leaves it.
void RunOnce(Scenario& scenario, const Links& favorites) {
    scenario.RunAvailability();
    Expect(favorites.ReportIsExact(), "the report isn't that of the links");
    Form5.Unload();
}

void ProveLinks() {
    const Links favorites(30000);
    PosixMachine machine;
    CatchAll(machine.Settings);
    Scenario scenario(machine.Windows);
    scenario.Start();
    std::string last;
    int links = 0;
    std::vector<long> descriptors;
    machine.Events.EachPass = [&] {
        if (std::exchange(last, Favorites::CurrentLink.File) == Favorites::CurrentLink.File || ++links % 5000 != 0)
            return;
        descriptors.push_back(OpenDescriptors());
        std::printf("link %5d: %ld kB, %ld descriptors\n", links, ResidentKilobytes(), descriptors.back());
    };
    const long before = OpenDescriptors();
    RunOnce(scenario, favorites);
    Expect(links == 30000 && OpenDescriptors() == before, "descriptors aren't flat");
    Expect(std::ranges::max(descriptors) <= before + 2, "more than one connection at a time");
}

void ProveRuns() {
    const Links favorites(66);
    PosixMachine machine;
    CatchAll(machine.Settings);
    Scenario scenario(machine.Windows);
    scenario.Start();
    std::vector<long> memory;
    std::set<long> descriptors;
    for (int run = 1; run <= 300; ++run) {
        RunOnce(scenario, favorites);
        if (run % 50 != 0)
            continue;
        memory.push_back(ResidentKilobytes());
        descriptors.insert(OpenDescriptors());
        std::printf("run %3d: %ld kB, %ld descriptors\n", run, memory.back(), *descriptors.rbegin());
    }
    Expect(descriptors.size() == 1, "descriptors aren't flat");
    Expect(memory.back() - memory.front() <= 512, "memory isn't flat");
}

// The whole scenario in a process of its own, killed after this many microseconds; never below 0. Its exit status.
int PlayInChild(const std::string& timeout, int microseconds) {
    const pid_t child = fork();
    if (child == 0) {
        execl("/proc/self/exe", "proofs", "scenario", timeout.c_str(), nullptr);
        _exit(127);
    }
    if (microseconds >= 0) {
        std::this_thread::sleep_for(std::chrono::microseconds(microseconds));
        kill(child, SIGKILL);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return status;
}

int Play(const std::string& timeout) {
    PosixMachineWith<PosixSettings> machine;
    CatchAll(machine.Settings);
    Scenario scenario(machine.Windows);
    scenario.Timeout = timeout;
    scenario.Play();
    for (int save = 0; save < 20; ++save) // so that many a kill hits one
        scenario.SaveOptions();
    return Form3.IsLoaded() && Form3->IsVisible() && Preferences.Timeout == std::stoi(timeout) ? 0 : 1;
}

void ProveKills() {
    constexpr int Removed = 2; // by the scenario
    Links favorites(110);
    std::mt19937 random(1);  // NOLINT: the same times each run
    std::int64_t length = 0; // of the whole scenario, in microseconds
    for (const char* timeout : {"11", "10"}) {
        const auto start = std::chrono::steady_clock::now();
        Expect(PlayInChild(timeout, -1) == 0 && favorites.Restore(Removed), "the scenario fails by itself");
        length =
            std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - start).count();
    }
    std::uniform_int_distribution<int> moment(0, static_cast<int>(length));
    std::string stored = "10";
    int killed = 0, changed = 0;
    for (int attempt = 0; attempt < 1000 && killed < 200; ++attempt) {
        const std::string timeout = stored == "10" ? "11" : "10";
        const bool wasKilled = WIFSIGNALED(PlayInChild(timeout, moment(random)));
        Expect(favorites.Restore(Removed), "a favorite is neither whole nor removed");
        const std::string now = PosixSettings().Read("Tarnwick", "Preferences", "Timeout", "none");
        Expect(now == stored || now == timeout, "the settings are neither old nor new: " + now);
        killed += wasKilled ? 1 : 0;
        changed += wasKilled && now == timeout ? 1 : 0;
        stored = now;
    }
    Expect(killed == 200, "not killed 200 times");
    Expect(PlayInChild("10", -1) == 0 && favorites.Restore(Removed), "the next start isn't clean");
    int files = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(favorites.SettingsFolder()))
        files += entry.is_directory() ? 0 : 1;
    Expect(files == 1, std::to_string(files) + " files for the settings");
    std::printf("%d kills within %ld ms, the settings old after %d of them, new after %d\n", killed,
                static_cast<long>(length / 1000), killed - changed, changed);
}

} // namespace

} // namespace tarnwick::test

int main(int count, char** arguments) {
    using namespace tarnwick::test;
    const std::string what = count > 1 ? arguments[1] : "";
    if (what == "scenario" && count > 2)
        return Play(arguments[2]);
    if (what == "links")
        ProveLinks();
    else if (what == "runs")
        ProveRuns();
    else if (what == "kill")
        ProveKills();
    else
        Expect(false, "usage: proofs links|runs|kill");
    return sound ? 0 : 1;
}

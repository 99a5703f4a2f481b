// What takes too long for every test run: 30,000 links of every kind of bad server in one run, 300 runs in one process,
// 200 kills at random times. Usage: proofs links|runs|kill

#include "PosixMachine.h"
#include "Scenario.h"
#include "favorites/Favorites.h"
#include "favorites/Preferences.h"
#include "platform/posix/PosixSettings.h"
#include "posix_support.h"
#include "report/ReportRow.h"
#include "servers_support.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <iterator>
#include <map>
#include <random>
#include <set>
#include <sys/wait.h>

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

// A server of each kind that ends a link without a time-out, and the names that lead to none.
class EveryKind {
public:
    struct Kind {
        std::string Name;
        std::string Url;
        std::string Problem; // empty: no row
    };
    std::vector<Kind> Kinds;

    EveryKind() {
        Add("missing", Replies("HTTP/1.0 404 Not Found\r\n\r\n"), "Not found (404)");
        Add("forbidden", Replies("HTTP/1.0 403 No\r\n\r\n"), "Forbidden (403)");
        Add("unauthorized", Replies("HTTP/1.0 401 No\r\n\r\n"), "Unauthorized (401)");
        Add("good", Replies("HTTP/1.0 200 OK\r\n\r\n"), "");
        Add("half a line", Replies("HTTP/1.0 40"), "");
        Add("NULs", Replies(std::string(70000, '\0')), "");
        Add(
            "closes", [](Connection&) {}, "");
        Add(
            "resets", [](Connection& peer) { peer.ReadRequest(), peer.Reset(); }, "");
        Kinds.push_back({"refused", "http://127.0.0.1:" + std::to_string(nobody_.Port) + "/", "Connection error"});
        Kinds.push_back({"no name", "http://empty..label.invalid/", "Unable to connect"});
        Kinds.push_back({"no port", "http://127.0.0.1:70000/", "Unable to connect"});
    }

private:
    static TestServer::Serve Replies(const std::string& reply) {
        return [reply](Connection& peer) {
            peer.ReadRequest();
            peer.Send(reply);
        };
    }
    void Add(const std::string& name, TestServer::Serve serve, const std::string& problem) {
        servers_.push_back(std::make_unique<TestServer>(std::move(serve)));
        Kinds.push_back({name, "http://" + servers_.back()->Address() + "/", problem});
    }

    std::vector<std::unique_ptr<TestServer>> servers_;
    BoundPort nobody_;
};

// Favorites of every kind, and the program's whole machine but for its windows.
class Site {
public:
    explicit Site(int links) {
        for (int link = 0; link < links; ++link) {
            const EveryKind::Kind& kind = servers_.Kinds[static_cast<std::size_t>(link) % servers_.Kinds.size()];
            const std::string path = "Favorites/Folder " + std::to_string(link / 1000) + "/" + kind.Name + " " +
                                     std::to_string(link) + ".url";
            files_[home_ / path] = "[InternetShortcut]\r\nURL=" + kind.Url + "\r\n";
            if (!kind.Problem.empty())
                problems_[kind.Name + " " + std::to_string(link)] = kind.Problem;
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
    EveryKind servers_;
    std::map<std::string, std::string> files_;    // path to bytes
    std::map<std::string, std::string> problems_; // name to problem
};

void CatchAll(SettingsService& settings) {
    for (const char* key : {"Catch401", "Catch403", "Catch404", "CatchUnabled", "CatchTimedout", "CatchConnerr"})
        settings.Write("Tarnwick", "Preferences", {{key, "1"}});
}

// One availability check; the report is left as a person leaves it.
void RunOnce(Scenario& scenario, const Site& site) {
    scenario.RunAvailability();
    Expect(site.ReportIsExact(), "the report isn't that of the links");
    Form5.Unload();
}

void ProveLinks() {
    const Site site(30000);
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
    RunOnce(scenario, site);
    Expect(links == 30000 && OpenDescriptors() == before, "descriptors aren't flat");
    Expect(std::ranges::max(descriptors) <= before + 2, "more than one connection at a time");
}

void ProveRuns() {
    const Site site(66);
    PosixMachine machine;
    CatchAll(machine.Settings);
    Scenario scenario(machine.Windows);
    scenario.Start();
    std::vector<long> memory;
    std::set<long> descriptors;
    for (int run = 1; run <= 300; ++run) {
        RunOnce(scenario, site);
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
    return Form3.IsLoaded() && Form3->IsVisible() && Preferences.Timeout == std::stoi(timeout) ? 0 : 1;
}

void ProveKills() {
    constexpr int Removed = 2; // by the scenario
    Site site(110);
    std::mt19937 random(1);  // NOLINT: the same times each run
    std::int64_t length = 0; // of the whole scenario, in microseconds
    for (const char* timeout : {"11", "10"}) {
        const auto start = std::chrono::steady_clock::now();
        Expect(PlayInChild(timeout, -1) == 0 && site.Restore(Removed), "the scenario fails by itself");
        length =
            std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - start).count();
    }
    std::uniform_int_distribution<int> moment(0, static_cast<int>(length));
    std::string stored = "10";
    int killed = 0, changed = 0;
    for (int attempt = 0; attempt < 1000 && killed < 200; ++attempt) {
        const std::string timeout = stored == "10" ? "11" : "10";
        const bool wasKilled = WIFSIGNALED(PlayInChild(timeout, moment(random)));
        Expect(site.Restore(Removed), "a favorite is neither whole nor removed");
        const std::string now = PosixSettings().Read("Tarnwick", "Preferences", "Timeout", "none");
        Expect(now == stored || now == timeout, "the settings are neither old nor new: " + now);
        killed += wasKilled ? 1 : 0;
        changed += wasKilled && now == timeout ? 1 : 0;
        stored = now;
    }
    Expect(killed == 200, "not killed 200 times");
    Expect(PlayInChild("10", -1) == 0 && site.Restore(Removed), "the next start isn't clean");
    int files = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(site.SettingsFolder()))
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

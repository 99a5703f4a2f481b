// The check of duplicates: gathering beside a bare read of the same files, the whole beside what a shell offers.

#include "Figures.h"
#include "Program.h"
#include "Sections.h"
#include "duplicates/Form7.h"
#include "shell/Form3.h"

#include <algorithm>
#include <cstdlib>
#include <stdexcept>

namespace tarnwick::bench {

namespace {

// As long as links in people's Favorites are.
std::string LinkOf(int number) {
    return "http://www.site-" + std::to_string(number % 977) + ".example/articles/" + std::to_string(number) + ".html";
}

struct Times {
    std::vector<double> Whole, Gathering, Reading, Shell; // seconds
};

// A whole check, all but without the pause between the click and the work. Leaves its window open.
void Check(Program& program, Times& times) {
    if (!Form3.IsLoaded())
        Form3.Show();
    Form3->Option1.Value = false;
    Form3->Option2.Value = true;
    program.Press(*Form3, Form3->Command1);
    Form7->Timer1.SetInterval(1);
    double compared = 0;
    program.EachPass() = [&, look = program.EachPass()] {
        if (look)
            look();
        if (compared == 0 && Form7->Label1.Caption.starts_with('C'))
            compared = WallSeconds();
    };
    const double clicked = WallSeconds();
    program.Press(*Form7, Form7->Command1);
    const double listed = WallSeconds();
    while (Form7->Command1.Caption != "&Finish")
        program.Wait();
    times.Whole.push_back(WallSeconds() - clicked);
    times.Gathering.push_back(compared - listed);
    program.EachPass() = nullptr;
}

void RunShell(const std::string& root) {
    const std::string command = "find '" + root +
                                "' -name '*.url' -print0 | xargs -0 grep -h '^URL=' | "
                                "tr '[:lower:]' '[:upper:]' | sort | uniq -d > /dev/null";
    if (std::system(command.c_str()) != 0) // NOLINT: the command is ours
        throw std::runtime_error("failed: " + command);
}

// Gives the cost of a shortcut in us.
double MeasureCount(Program& program, int count, double gatheringLimit) {
    // Every hundredth link is there twice.
    const FavoritesFolder favorites(count, true, [](int number) { return LinkOf(number - (number % 100) / 99); });
    Times times;
    for (int round = 0; round < 7; ++round) {
        times.Reading.push_back(Measure([&] { favorites.ReadAll(); }).Wall);
        times.Shell.push_back(Measure([&] { RunShell(favorites.Root); }).Wall);
        Check(program, times);
        if (Form7->Grid1.RowCount() != count / 100)
            throw std::runtime_error("wrong number of pairs");
        program.Press(*Form7, Form7->Command1);
    }
    const std::string heading = std::to_string(count) + ": ";
    const double whole = std::ranges::min(times.Whole);
    Show(heading + "the whole, a shortcut", whole / count * 1e6, "us");
    Show(heading + "open, read and close, a file", std::ranges::min(times.Reading) / count * 1e6, "us");
    AtLeast(heading + "speed of gathering beside open, read, close",
            std::ranges::min(times.Reading) / std::ranges::min(times.Gathering), gatheringLimit, "times");
    AtMost(heading + "the whole beside find, grep, sort, uniq", whole / std::ranges::min(times.Shell), 1, "times");
    return whole / count * 1e6;
}

} // namespace

void Duplicates() {
    Program program;
    Title("Duplicates, headless");
    const double few = MeasureCount(program, 10000, 0.8);
    MeasureCount(program, 30000, 0.8);
    AtMost("cost of a shortcut at 100,000 beside 10,000", MeasureCount(program, 100000, 0.8) / few, 1.2, "times");
}

void DuplicatesOnQt() {
    const auto program = OnQt();
    Title("Duplicates, Qt");
    for (const int count : {10000, 30000, 100000})
        MeasureCount(*program, count, 0.7);
}

void ManyRows() {
    // 1,471 shortcuts of one link and 3 of another make 1,081,185 and 3 pairs.
    constexpr int equal = 1471;
    constexpr int wanted = equal * (equal - 1) / 2 + 3;
    const auto program = OnQt();
    const FavoritesFolder favorites(3000, true, [](int number) {
        return LinkOf(number < equal ? 0 : number < equal + 3 ? 1 : number);
    });
    double last = WallSeconds();
    double longest = 0;
    program->EachPass() = [&] { longest = std::max(longest, WallSeconds() - std::exchange(last, WallSeconds())); };
    Times times;
    Check(*program, times);
    program->Draw(*Form7);
    longest = std::max(longest, WallSeconds() - last);
    if (Form7->Grid1.RowCount() != wanted)
        throw std::runtime_error("wrong number of rows");
    Title("Many pairs, Qt: 3,000 shortcuts that make 1,081,188 rows");
    Show("the whole", times.Whole[0], "s");
    AtMost("longest stall until they are drawn", longest, 0.03, "s");
    const Cost sort = Measure([&] {
        Form7->Raise(Form7->Grid1.HeaderClick, PairColumn::Link2);
        program->Draw(*Form7);
    });
    AtMost("a sort by a header, until it is drawn", sort.Wall, 0.1, "s");
    AtMost("most memory resident", PeakResidentMiB(), 64, "MiB");
}

} // namespace tarnwick::bench

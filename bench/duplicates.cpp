// The check of duplicates: gathering beside a bare read of the same files, comparing beside a bare double loop, and the
// whole beside what else finds duplicates in such files.

#include "Figures.h"
#include "Files.h"
#include "FrontEnd.h"
#include "Sections.h"
#include "duplicates/Form7.h"

#include <cstdlib>

namespace tarnwick::bench {

namespace {

// Every hundredth link is there twice. As long as links in people's Favorites are.
std::string LinkOf(int number) {
    const int shown = number % 100 == 99 ? number - 1 : number;
    return "http://www.site-" + std::to_string(shown % 977) + ".example/articles/" + std::to_string(shown) + ".html";
}

struct Parts {
    double Reading = 0; // seconds; the floor of gathering
    double Gathering = 0;
    double Comparing = 0;
    double HeapBytes = 0; // of the shortcuts
    std::size_t Pairs = 0;
};

// Without the pause between the click and the work.
Parts CheckOnce(FrontEnd& program) {
    double last = 0;
    double work = 0;
    double compare = 0;
    std::size_t before = 0;
    std::size_t gathered = 0;
    bool paused = false;
    program.Watch([&] {
        if (compare != 0 || !Form7.IsLoaded())
            return;
        paused = paused || Form7->Timer1.Enabled();
        if (work == 0 && paused && !Form7->Timer1.Enabled()) {
            work = WallSeconds();
            before = HeapBytes();
        } else if (work != 0 && Form7->Label1.Caption.starts_with('C')) {
            compare = last; // what comes in front of the first pass belongs to it
            gathered = HeapBytes();
        }
        last = WallSeconds();
    });
    CheckDuplicates(program);
    const double end = WallSeconds();
    program.Watch(nullptr);
    const Parts parts = {0, compare - work, end - compare, static_cast<double>(gathered) - static_cast<double>(before),
                         static_cast<std::size_t>(Form7->Grid1.RowCount())};
    program.Press(*Form7, Form7->Command1);
    return parts;
}

Parts MedianCheck(FrontEnd& program, const std::vector<std::string>& files, int rounds) {
    std::vector<double> reading;
    std::vector<double> gathering;
    std::vector<double> comparing;
    Parts parts;
    for (int round = 0; round < rounds; ++round) {
        reading.push_back(Measure([&] { ReadAll(files); }).Wall);
        parts = CheckOnce(program);
        gathering.push_back(parts.Gathering);
        comparing.push_back(parts.Comparing);
    }
    parts.Reading = Median(reading);
    parts.Gathering = Median(gathering);
    parts.Comparing = Median(comparing);
    return parts;
}

// Every link's text against every later one's, and nothing else.
double BareComparing(int count) {
    std::vector<std::string> links;
    links.reserve(static_cast<std::size_t>(count));
    for (int number = 0; number < count; ++number)
        links.push_back(LinkOf(number));
    volatile std::size_t pairs = 0;
    return Measure([&] {
               for (std::size_t i = 0; i < links.size(); ++i)
                   for (std::size_t j = i + 1; j < links.size(); ++j)
                       if (links[i] == links[j])
                           pairs = pairs + 1;
           })
        .Wall;
}

double ShellSeconds(const std::string& command) {
    return Measure([&] {
               if (std::system((command + " > /dev/null").c_str()) != 0) // NOLINT: the command is ours
                   throw std::runtime_error("failed: " + command);
           })
        .Wall;
}

// Windows on the screen are drawn meanwhile; that share is shown, and not judged.
void ShowGathering(const std::string& what, double speed, bool judged) {
    if (judged)
        AtLeast(what, speed, 0.5, "times");
    else
        Show(what, speed, "times");
}

void MeasureCount(FrontEnd& program, int count) {
    const FavoritesFolder favorites;
    favorites.Fill(count, true, LinkOf);
    const std::vector<std::string> files = AllFiles(favorites.Root());
    const int rounds = count > 10000 ? 5 : 9;
    const Parts own = MedianCheck(program, files, rounds);
    if (own.Pairs != static_cast<std::size_t>(count) / 100)
        throw std::runtime_error("wrong number of pairs");
    const double steps = 0.5 * count * (count - 1);
    const std::string heading = std::to_string(count) + ": ";

    ShowGathering(heading + "speed of gathering beside open, read, close", own.Reading / own.Gathering,
                  program.Name() == "headless");
    const std::string comparing = heading + "comparing, a step";
    if (count == 10000)
        AtMost(comparing, own.Comparing / steps * 1e9, 2.5, "ns");
    else
        Show(comparing, own.Comparing / steps * 1e9, "ns");
    Show(heading + "bare double loop over the texts, a step", BareComparing(count) / steps * 1e9, "ns");
    Show(heading + "the whole", (own.Gathering + own.Comparing) * 1e3, "ms");
    if (count < 10000)
        return;
    AtMost(heading + "memory a shortcut beside the grid", own.HeapBytes / count, 300, "bytes");
    Show(heading + "find, grep, sort, uniq",
         ShellSeconds("find '" + favorites.Root() +
                      "' -name '*.url' -print0 | xargs -0 grep -h '^URL=' | "
                      "tr '[:lower:]' '[:upper:]' | sort | uniq -d") *
             1e3,
         "ms");
    Show(heading + "a Python dictionary",
         ShellSeconds("python3 '" BENCH_FOLDER "/duplicates.py' '" + favorites.Root() + "'") * 1e3, "ms");
}

} // namespace

void Duplicates() {
    Title("Duplicates, headless");
    const auto program = Headless();
    for (const int count : {1000, 10000, 30000})
        MeasureCount(*program, count);
}

void DuplicatesOnQt() {
    constexpr int count = 10000;
    Title("Duplicates, Qt");
    const auto program = OnQt();
    MeasureCount(*program, count);
}

namespace {

double LongestScroll(FrontEnd& program) {
    constexpr int places = 100;
    double longest = 0;
    for (int place = 1; place <= places; ++place)
        longest = std::max(longest, Measure([&] {
                                        program.ScrollTo(*Form7, Form7->Grid1, static_cast<double>(place) / places);
                                    }).Wall);
    return longest;
}

} // namespace

void ManyRows() {
    // 1,471 shortcuts of one link and 3 of another make 1,081,185 and 3 pairs.
    constexpr int count = 3000;
    constexpr int equal = 1471;
    constexpr int wanted = equal * (equal - 1) / 2 + 3;
    const auto program = OnQt();
    const FavoritesFolder favorites;
    favorites.Fill(count, true, [](int number) {
        return number < equal ? LinkOf(0) : number < equal + 3 ? LinkOf(1) : LinkOf(10000 + number * 100);
    });
    double last = WallSeconds();
    double longest = 0;
    const auto beat = [&] {
        longest = std::max(longest, WallSeconds() - last);
        last = WallSeconds();
    };
    program->Watch(beat);
    const double listed = Measure([&] { CheckDuplicates(*program); }).Wall;
    program->Draw(*Form7);
    beat();
    program->Watch(nullptr);
    if (Form7->Grid1.RowCount() != wanted)
        throw std::runtime_error("wrong number of rows");
    Title("Many pairs, Qt: 3,000 shortcuts that make 1,081,188 rows");
    Show("the whole check, its pause of 300 ms included", listed, "s");
    AtMost("longest stall while they are listed", longest, 1, "s");
    const double sorted = Measure([&] {
                              program->PressHeader(*Form7, Form7->Grid1, PairColumn::Link2);
                              program->Draw(*Form7);
                          }).Wall;
    AtMost("a sort by a header, until it is drawn", sorted, 1, "s");
    AtMost("the longest of 100 scrolls through all rows", LongestScroll(*program), 1, "s");
    AtMost("most memory resident", static_cast<double>(PeakResidentBytes()) / (1 << 20), 256, "MiB");
}

} // namespace tarnwick::bench

// The walk over many folders whose links are passed over, beside opening, reading and closing the same files.

#include "Figures.h"
#include "Files.h"
#include "FrontEnd.h"
#include "Sections.h"

namespace tarnwick::bench {

void Walk() {
    constexpr int shortcuts = 30000;
    constexpr int rounds = 5;
    const auto program = Headless();
    const FavoritesFolder favorites;
    favorites.Fill(shortcuts, true, [](int number) { return "ftp://files.example/" + std::to_string(number); });
    const std::vector<std::string> files = AllFiles(favorites.Root());
    const Pair cost = MeasureInTurn(
        rounds,
        [&] {
            CheckAvailability(*program);
            Finish(*program);
        },
        [&] { ReadAll(files); });
    Title("Walk, headless: 30,000 shortcuts in 300 folders beside open, read, close");
    Show("floor, a file", cost.Floor.Wall / shortcuts * 1e6, "us");
    Show("a shortcut", cost.Own.Wall / shortcuts * 1e6, "us");
    AtLeast("speed beside the floor's", cost.Floor.Wall / cost.Own.Wall, 0.5, "times");
}

} // namespace tarnwick::bench

// The pattern of a listing, the rest of the input's first line, over a folder with the second line in it.

#include "favorites/Folders.h"
#include "fuzz/Targets.h"
#include "platform/headless/HeadlessPlatform.h"
#include "platform/posix/PosixText.h"

namespace tarnwick::fuzz {

void Listing(std::string_view input) {
    const std::string pattern(input.substr(0, input.find('\n')));
    const std::string name(input.substr(std::min(pattern.size() + 1, input.size())));
    HeadlessPlatform machine;
    machine.Favorites.AddFile("other.url", "");
    machine.Favorites.AddFile(name, "");
    Favorites::ListingHandle listing = 0;
    std::string found = Favorites::FindFirst(machine.Favorites.Root + pattern, listing);
    Require(found.empty() == (listing == 0), "a listing without a name is open, or the other way round");
    for (int count = 0; !found.empty(); found = Favorites::FindNext(listing)) {
        Require(++count <= 4, "a listing doesn't end");
        Require(found.size() + pattern.rfind('\\') + 2 >= pattern.size(),
                "a name is shorter than the ending that it was asked for");
    }
    Favorites::FindEnd(listing);
    Require(listing <= 1, "a listing stays open");
    Require(FolderOrderKey(name + "\\" + pattern) == FolderOrderKey(name) + "\\" + FolderOrderKey(pattern),
            "the place of a text in the order depends on what comes after it");
}

} // namespace tarnwick::fuzz

#include "favorites/Folders.h"

#include <algorithm>
#include <utility>

namespace tarnwick::Favorites {

namespace {

constexpr std::size_t MaxPath = 260; // the buffer that a Windows path call takes

bool IsFolderCandidate(const std::string& name) {
    const std::string upper = services().Text.Upper(name);
    return upper.find(".URL") == std::string::npos && name != ".." && upper != "DESKTOP.INI";
}

struct Listing {
    std::vector<ListedName> Names; // empty: the place is free
    std::size_t Next = 0;
};
std::vector<Listing> listings; // by handle, from 1

Listing* ListingOf(ListingHandle handle) {
    return handle < 1 || static_cast<std::size_t>(handle) > listings.size()
               ? nullptr
               : &listings[static_cast<std::size_t>(handle) - 1];
}

// A machine that can't name the Favorites folder leaves a lone "\", which some systems take for the root of a drive.
bool ListNames(const std::string& folder, std::string_view ending, std::vector<ListedName>& names) {
    return folder.find_first_not_of('\\') != std::string::npos && services().Files.List(folder, ending, names);
}

} // namespace

std::string SpecialFolderPath(WindowHandle /*window*/, std::int32_t folder) {
    if (folder != FavoritesFolderNumber)
        return {};
    std::string path = services().Files.FavoritesFolder();
    if (!path.empty())
        path.resize(std::max(MaxPath, path.size() + 1), '\0');
    return path;
}

std::string FavoritesRoot() {
    std::string path = SpecialFolderPath(0, FavoritesFolderNumber);
    path = path.substr(0, path.find('\0'));
    if (!path.ends_with('\\'))
        path += '\\';
    return path;
}

std::string FindFirst(const std::string& szPattern, ListingHandle& lngFind) {
    const std::size_t star = szPattern.rfind('\\') + 1;
    if (szPattern.substr(star, 1) != "*")
        return {};
    Listing found;
    const std::string ending = szPattern.substr(star + 1);
    if (!ListNames(szPattern.substr(0, star), ending, found.Names))
        return {};
    if (ending.empty())
        found.Names.insert(found.Names.begin(), {{"."}, {".."}});
    if (found.Names.empty())
        return {};
    const auto place = std::ranges::find_if(listings, [](const Listing& listing) { return listing.Names.empty(); });
    lngFind = static_cast<ListingHandle>(place - listings.begin()) + 1;
    if (place == listings.end())
        listings.push_back(std::move(found));
    else
        *place = std::move(found);
    return FindNext(lngFind);
}

std::string FindNext(ListingHandle lngFind) {
    Listing* listing = ListingOf(lngFind);
    return listing == nullptr || listing->Next == listing->Names.size() ? "" : listing->Names[listing->Next++].Text;
}

void FindEnd(ListingHandle lngFind) {
    if (Listing* listing = ListingOf(lngFind))
        *listing = {};
}

void ListFirstLevel(const std::function<bool()>& goOn, const std::function<void(const std::string& name)>& take) {
    ListingHandle find = 0;
    // The first name is the folder's own ".".
    if (FindFirst(FavoritesRoot() + "*", find).empty())
        return;
    while (goOn()) {
        const std::string name = FindNext(find);
        if (name.empty())
            break;
        if (IsFolderCandidate(name))
            take(name);
    }
    FindEnd(find);
}

bool WalkShortcuts(const std::string& szMainPath, Visits& visits,
                   const std::function<void(const std::string& name)>& take, const std::function<bool()>& stopped) {
    if (!visits.Enter(szMainPath))
        return false;
    std::vector<ListedName> names;
    if (!ListNames(szMainPath, ".url", names))
        return true;
    visits.TakeFiles(szMainPath, names);
    for (const ListedName& name : names) {
        take(name.Text);
        const bool ended = !services().Windows.PumpEvents();
        if (stopped() || ended)
            break;
    }
    return true;
}

std::string UpperExtension(const std::string& name) {
    return services().Text.Upper(std::string_view(name).substr(name.size() - std::min<std::size_t>(4, name.size())));
}

bool IsShortcut(const std::string& name) { return UpperExtension(name) == ".URL"; }

} // namespace tarnwick::Favorites

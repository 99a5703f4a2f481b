#include "favorites/Folders.h"

#include <algorithm>

namespace tarnwick::Favorites {

namespace {

constexpr std::size_t MaxPath = 260; // the buffer that a Windows path call takes

bool IsFolderCandidate(const std::string& name) {
    const std::string upper = services().Text.Upper(name);
    return upper.find(".URL") == std::string::npos && name != ".." && upper != "DESKTOP.INI";
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
    return services().Files.OpenListing(szPattern, lngFind);
}

std::string FindNext(ListingHandle lngFind) { return services().Files.StepListing(lngFind); }

void FindEnd(ListingHandle lngFind) { services().Files.CloseListing(lngFind); }

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

void WalkShortcuts(const std::string& szMainPath, const std::function<void(const std::string& name)>& take,
                   const std::function<bool()>& stopped) {
    ListingHandle find = 0;
    std::string name = FindFirst(szMainPath + "*.url", find);
    if (name.empty())
        return;
    while (!name.empty()) {
        take(name);
        const bool ended = !services().Windows.PumpEvents();
        if (stopped() || ended)
            break;
        name = FindNext(find);
    }
    FindEnd(find);
}

std::string UpperExtension(const std::string& name) {
    return services().Text.Upper(std::string_view(name).substr(name.size() - std::min<std::size_t>(4, name.size())));
}

} // namespace tarnwick::Favorites

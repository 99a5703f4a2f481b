#include "favorites/Folders.h"

#include <algorithm>

namespace tarnwick::Favorites {

namespace {
constexpr std::size_t MaxPath = 260; // the buffer that a Windows path call takes
}

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

bool IsFolderCandidate(const std::string& name) {
    const std::string upper = services().Text.Upper(name);
    return upper.find(".URL") == std::string::npos && name != ".." && upper != "DESKTOP.INI";
}

std::string UpperExtension(const std::string& name) {
    return services().Text.Upper(std::string_view(name).substr(name.size() - std::min<std::size_t>(4, name.size())));
}

} // namespace tarnwick::Favorites

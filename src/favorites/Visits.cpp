#include "favorites/Visits.h"

#include "favorites/Folders.h"

#include <algorithm>
#include <utility>

namespace tarnwick::Favorites {

// The Favorites folder may be reached by a link, and then has other folders above it than its path says.
Visits::Visits(const std::string& root) : root_(root) {
    StayBelow(root);
    StayBelow(services().Files.RealFolder(root) + "\\");
}

void Visits::StayBelow(const std::string& root) {
    for (std::size_t slash = root.find('\\'); slash != std::string::npos; slash = root.find('\\', slash + 1))
        above_.insert(services().Files.FolderIdentity(root.substr(0, slash + 1)));
}

bool Visits::Enter(const std::string& folder) {
    current_ = services().Files.FolderIdentity(folder);
    if (folder == root_) {
        entered_.emplace(current_, folder);
        return !std::exchange(rootEntered_, true);
    }
    return current_.empty() || (!above_.contains(current_) && entered_.emplace(current_, folder).second);
}

// A file that no link leads to is met in its own folder alone, and that is walked once. So files are only kept in mind
// from the first link on, and in a folder that holds one.
void Visits::TakeFiles(const std::string& folder, std::vector<ListedName>& names) {
    if (!taken_.empty() || std::ranges::any_of(names, &ListedName::IsLink))
        std::erase_if(names, [&](const ListedName& name) { return !Take(folder, name); });
}

// In the walk of another folder. A folder that was walked may hold files that no listing of it shows.
bool Visits::WasListed(const FilePlace& place) const {
    const auto walked = entered_.find(place.Folder);
    if (place.Folder == current_ || walked == entered_.end() || !IsShortcut(place.Name))
        return false;
    std::vector<ListedName> names;
    services().Files.List(walked->second, ".url", names);
    return std::ranges::find(names, place.Name, &ListedName::Text) != names.end();
}

bool Visits::Take(const std::string& folder, const ListedName& name) {
    const FilePlace place = name.IsLink ? services().Files.PlaceOf(folder + name.Text) : FilePlace{current_, name.Text};
    if (place.Folder.empty())
        return true;
    if (WasListed(place))
        return false;
    return taken_.insert(place.Folder + "\\" + place.Name).second;
}

} // namespace tarnwick::Favorites

#include "favorites/Visits.h"

#include "favorites/Folders.h"

#include <algorithm>
#include <utility>

namespace tarnwick::Favorites {

Visits::Visits(const std::string& root) : root_(root) {
    for (std::size_t slash = root.find('\\'); slash != std::string::npos; slash = root.find('\\', slash + 1))
        above_.insert(services().Files.FolderIdentity(root.substr(0, slash + 1)));
    above_.erase("");
}

bool Visits::Enter(const std::string& folder) {
    current_ = services().Files.FolderIdentity(folder);
    if (folder == root_) {
        entered_.insert(current_);
        return !std::exchange(rootEntered_, true);
    }
    return current_.empty() || (!above_.contains(current_) && entered_.insert(current_).second);
}

// A file that no link leads to is met in its own folder alone, and that is walked once. So files are only kept in mind
// from the first link on, and in a folder that holds one.
void Visits::TakeFiles(const std::string& folder, std::vector<ListedName>& names) {
    if (!taken_.empty() || std::ranges::any_of(names, &ListedName::IsLink))
        std::erase_if(names, [&](const ListedName& name) { return !Take(folder, name); });
}

bool Visits::Take(const std::string& folder, const ListedName& name) {
    const FilePlace place = name.IsLink ? services().Files.PlaceOf(folder + name.Text) : FilePlace{current_, name.Text};
    if (place.Folder.empty())
        return true;
    const bool walkedBefore = place.Folder != current_ && entered_.contains(place.Folder);
    if (walkedBefore && IsShortcut(place.Name))
        return false;
    return taken_.insert(place.Folder + "\\" + place.Name).second;
}

} // namespace tarnwick::Favorites

#pragma once

#include "services/Services.h"

#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace tarnwick::Favorites {

// Where a run has been: each real folder is walked once and each real file is taken once, under the first path that
// leads to it. A folder or file that the machine can't identify counts as a new one.
class Visits {
public:
    Visits() = default;
    // `root` is the Favorites folder, ended by "\".
    explicit Visits(const std::string& root);

    const std::string& Root() const { return root_; }

    // False for a folder that the run has been in, and for a link to one above the Favorites folder. `folder` ends with
    // "\".
    bool Enter(const std::string& folder);

    // Takes the files of the folder that was entered last, and drops the names of those that were taken before.
    void TakeFiles(const std::string& folder, std::vector<ListedName>& names);

private:
    void StayBelow(const std::string& root);
    bool Take(const std::string& folder, const ListedName& name);
    bool WasListed(const FilePlace& place) const;

    std::string root_;
    bool rootEntered_ = false;
    std::unordered_set<std::string> above_;                // identities: the Favorites folder and those above it
    std::unordered_map<std::string, std::string> entered_; // the paths of the folders, by their identities
    std::string current_;                                  // the identity of the folder that was entered last
    std::unordered_set<std::string> taken_;
};

} // namespace tarnwick::Favorites

#pragma once

#include <string>
#include <string_view>

namespace tarnwick {

// The user's own folders as the XDG conventions name them: absolute, with "/" between the pieces and none at the end;
// the empty text when no home folder can be named.
std::string HomeFolder();
std::string ConfigurationFolder();
std::string FavoritesFolderOfUser();

// The Favorites folder by the text of a user-dirs.dirs.
std::string FavoritesFolderIn(std::string_view userDirs, const std::string& home);

} // namespace tarnwick

#pragma once

#include <string>

namespace tarnwick {

// The user's own folders as the XDG conventions name them: absolute, with "/" between the pieces and none at the end;
// the empty text when no home folder can be named.
std::string HomeFolder();
std::string ConfigurationFolder();
std::string FavoritesFolderOfUser();

} // namespace tarnwick

// The file that names the user's folders.

#include "fuzz/Targets.h"
#include "platform/posix/UserFolders.h"

namespace tarnwick::fuzz {

void Folders(std::string_view input) {
    const std::string folder = FavoritesFolderIn(input, "/home/u");
    Require(folder.starts_with('/') && folder != "/home/u", "the folder isn't absolute, or the home folder");
    Require(folder == "/" || !folder.ends_with('/'), "the folder ends with a slash");
    Require(folder.find('\0') == std::string::npos && ("/" + folder + "/").find("/../") == std::string::npos &&
                folder.find("//") == std::string::npos,
            "the folder isn't written in the shortest way");
    Require(FavoritesFolderIn(std::string(input) + "\nXDG_FAVORITES_DIR=\"/last\"\n", "/home/u") == "/last",
            "the last line doesn't count");
}

} // namespace tarnwick::fuzz

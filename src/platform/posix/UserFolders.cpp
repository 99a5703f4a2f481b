#include "platform/posix/UserFolders.h"

#include "platform/posix/RegularFile.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <pwd.h>
#include <string_view>
#include <unistd.h>
#include <vector>

namespace tarnwick {

namespace {

constexpr std::size_t UserDirsLimit = 1U << 20U; // bytes

std::string AbsoluteFromEnvironment(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr && value[0] == '/' ? value : "";
}

std::string Normal(const std::string& path) {
    std::string normal = std::filesystem::path(path).lexically_normal().string();
    while (normal.size() > 1 && normal.back() == '/')
        normal.pop_back();
    return normal;
}

std::string HomeFromPasswd() {
    std::vector<char> buffer(1U << 16U);
    passwd entry = {};
    passwd* found = nullptr;
    if (getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &found) != 0 || found == nullptr)
        return {};
    return found->pw_dir != nullptr && found->pw_dir[0] == '/' ? found->pw_dir : "";
}

std::string_view WithoutLeadingBlanks(std::string_view text) {
    const std::size_t start = text.find_first_not_of(" \t");
    return start == std::string_view::npos ? std::string_view() : text.substr(start);
}

// The text between double quotes, with "\" taking away the meaning of the next character.
std::optional<std::string> Unquoted(std::string_view text) {
    if (!text.starts_with('"'))
        return std::nullopt;
    std::string inner;
    for (std::size_t i = 1; i < text.size() && text[i] != '"'; ++i) {
        if (text[i] == '\\' && i + 1 < text.size())
            ++i;
        inner += text[i];
    }
    return inner;
}

// The path that a line of user-dirs.dirs sets for the Favorites folder: XDG_FAVORITES_DIR="$HOME/yyy" or ="/yyy".
std::optional<std::string> FavoritesOfLine(std::string_view line, const std::string& home) {
    constexpr std::string_view Name = "XDG_FAVORITES_DIR";
    constexpr std::string_view HomeVariable = "$HOME";
    line = WithoutLeadingBlanks(line);
    if (!line.starts_with(Name))
        return std::nullopt;
    line = WithoutLeadingBlanks(line.substr(Name.size()));
    if (!line.starts_with('='))
        return std::nullopt;
    line = WithoutLeadingBlanks(line.substr(1));
    const std::optional<std::string> value = Unquoted(line);
    if (!value || value->find('\0') != std::string::npos)
        return std::nullopt;
    if (value->starts_with('/'))
        return Normal(*value);
    if (value->starts_with("$HOME/") || *value == HomeVariable)
        return Normal(home + value->substr(HomeVariable.size()));
    return std::nullopt;
}

} // namespace

std::string HomeFolder() {
    const std::string home = AbsoluteFromEnvironment("HOME");
    const std::string path = home.empty() ? HomeFromPasswd() : home;
    return path.empty() ? path : Normal(path);
}

std::string ConfigurationFolder() {
    if (const std::string folder = AbsoluteFromEnvironment("XDG_CONFIG_HOME"); !folder.empty())
        return Normal(folder);
    const std::string home = HomeFolder();
    return home.empty() ? home : home + "/.config";
}

std::string FavoritesFolderIn(std::string_view userDirs, const std::string& home) {
    std::string folder;
    for (std::size_t start = 0; start < userDirs.size();) {
        const std::size_t end = std::min(userDirs.find('\n', start), userDirs.size());
        // As in the shell that may read the file too, the last assignment counts.
        if (const auto value = FavoritesOfLine(userDirs.substr(start, end - start), home))
            folder = *value;
        start = end + 1;
    }
    // A folder that is set to the home folder is switched off, as everywhere in that file.
    return folder.empty() || folder == home ? (home == "/" ? home : home + "/") + "Favorites" : folder;
}

std::string FavoritesFolderOfUser() {
    const std::string home = HomeFolder();
    if (home.empty())
        return {};
    std::string text;
    ReadRegularFile(ConfigurationFolder() + "/user-dirs.dirs", UserDirsLimit, text);
    return FavoritesFolderIn(text, home);
}

} // namespace tarnwick

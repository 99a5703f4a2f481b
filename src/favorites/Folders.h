#pragma once

// Finding the Favorites folder and listing folders. A failure reads as the empty text.

#include "favorites/Visits.h"

#include <cstdint>
#include <functional>
#include <string>

namespace tarnwick::Favorites {

// The shell's number of the Favorites folder (CSIDL_FAVORITES).
inline constexpr std::int32_t FavoritesFolderNumber = 6;

// The path of a special folder in a text of at least 260 characters: path, NUL, filling. Only the Favorites folder is
// known; another number, or a machine that can't name it, yields the empty text.
std::string SpecialFolderPath(WindowHandle window, std::int32_t folder);

// The user's Favorites folder, always ended by "\"; a lone "\" when the machine can't name it.
std::string FavoritesRoot();

// An open listing, 0 for none.
using ListingHandle = std::int32_t;

// Opens a listing by pattern, a folder's path with "*" and an ending after it, such as "C:\Favorites\*.url". Nothing
// else in it is a wildcard. Gives the first name and the listing; the empty text when nothing matches, and then no
// listing is open. "*" alone also finds "." and "..", in front of all others. A lone "\" is no folder.
std::string FindFirst(const std::string& szPattern, ListingHandle& lngFind);
// The next name, the empty text after the last one.
std::string FindNext(ListingHandle lngFind);
void FindEnd(ListingHandle lngFind);

// Hands to `take` what the first level of the Favorites folder offers as a folder: every name but "..", desktop.ini and
// what looks like a shortcut. Files and folders look alike here; a listing below them just finds nothing. `goOn` is
// asked before each name.
void ListFirstLevel(const std::function<bool()>& goOn, const std::function<void(const std::string& name)>& take);

// Hands the names of a folder's shortcuts to `take`, with one pump pass after each, and ends early when `stopped` says
// so after the pass. `szMainPath` ends with a backslash. False for a folder that `visits` doesn't let in.
bool WalkShortcuts(const std::string& szMainPath, Visits& visits,
                   const std::function<void(const std::string& name)>& take, const std::function<bool()>& stopped);

// The last four characters of `name`, upper-cased: its extension.
std::string UpperExtension(const std::string& name);
bool IsShortcut(const std::string& name);

} // namespace tarnwick::Favorites

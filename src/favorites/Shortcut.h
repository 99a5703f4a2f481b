#pragma once

// Reading the link out of a shortcut file and splitting it into what the probe needs.

#include <string>

namespace tarnwick::Favorites {

// The URL of the shortcut `szFile` (a full path), at most 9,999 bytes; the empty text if it has none or can't be read.
// Records the path in CurrentLink.File.
std::string ReadShortcutUrl(const std::string& szFile);

// Splits `szUrl` and stores it in CurrentLink.UrlShown. A URL that doesn't begin with HTTP only empties `szHost`.
// Nothing is looked up, decoded or checked; the port stays text.
void SplitUrl(const std::string& szUrl, std::string& szHost, std::string& szTarget, std::string& szUser,
              std::string& szPassword, std::string& szPort);

// The name that a favorite is shown under: its file name without the four characters of ".url".
std::string DisplayName(const std::string& szFile);

} // namespace tarnwick::Favorites

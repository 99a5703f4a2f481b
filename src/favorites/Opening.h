#pragma once

// Handing a site to the user's browser.

#include "services/Services.h"

#include <string>
#include <string_view>

namespace tarnwick::Favorites {

// Opens a site in the user's program for it. A text that may not be handed over opens nothing.
void OpenSite(WindowHandle owner, const std::string& url);

// The URL as it is handed over: nothing in it ends an argument or is broken text. Empty for a text that may not be: one
// of another scheme than the few that lead to sites and news, or with a control character.
std::string UrlToOpen(std::string_view url);

} // namespace tarnwick::Favorites

#pragma once

#include "favorites/Favorites.h"

#include <string>

namespace tarnwick {

// The HTTP/1.0 request for a link (RFC 1945), whole, each line ended by CR LF. The Authorization line goes out only if
// `withCredentials` is set and the link has both a user and a password.
std::string BuildRequest(const LinkRecord& link, bool keepAlive, bool withCredentials);

} // namespace tarnwick

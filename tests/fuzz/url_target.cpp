// The split of a URL: the pieces, put together, are the URL again.

#include "favorites/Favorites.h"
#include "favorites/Shortcut.h"
#include "fuzz/Targets.h"

#include <array>
#include <string>

namespace tarnwick::fuzz {

namespace {

struct Pieces {
    std::string Host, Target, User, Password, Port;
    bool operator==(const Pieces&) const = default;
};

Pieces Split(const std::string& url, const std::string& before) {
    Pieces pieces = {before, before, before, before, before};
    Favorites::SplitUrl(url, pieces.Host, pieces.Target, pieces.User, pieces.Password, pieces.Port);
    return pieces;
}

bool IsHttp(std::string_view url) {
    constexpr std::string_view scheme = "HTTP";
    if (url.size() < scheme.size())
        return false;
    for (std::size_t at = 0; at < scheme.size(); ++at)
        if (url[at] != scheme[at] && url[at] != scheme[at] + ('a' - 'A'))
            return false;
    return true;
}

bool Has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }
bool HasAny(const std::string& text, const char* set) { return text.find_first_of(set) != std::string::npos; }

// Behind the host, and its port, the URL has the target; or, without a path, its query and a fragment.
bool EndsWithHostAndTarget(const std::string& url, const Pieces& pieces) {
    const std::string asked = pieces.Target.substr(1);
    for (const std::string& authority : {pieces.Host + ":" + pieces.Port, pieces.Host}) {
        if (authority == pieces.Host && pieces.Port != "80")
            continue;
        if (url.ends_with(authority + pieces.Target) || url.ends_with(authority + asked) ||
            Has(url, authority + asked + "#"))
            return true;
    }
    return false;
}

} // namespace

void Url(std::string_view input) {
    const std::string url(input);
    const Pieces pieces = Split(url, "kept");
    if (!IsHttp(url)) {
        Require(pieces == Pieces{"", "kept", "kept", "kept", "kept"},
                "a link of another scheme writes more than the host");
        return;
    }
    Require(pieces == Split(url, "other"), "the split depends on an earlier link");
    Require(Favorites::CurrentLink.UrlShown == url, "the URL shown is not the URL");
    Require(!HasAny(pieces.Host, "/?#:"), "the host runs into the target or the port");
    Require(!HasAny(pieces.Port, "/?#"), "the port runs into the target");
    Require(pieces.Target.starts_with('/'), "the target doesn't begin at the slash");
    Require(EndsWithHostAndTarget(url, pieces), "host, port and target are not the end of the URL");
    for (const std::string& credential : {pieces.User, pieces.Password})
        Require(!HasAny(credential, ":@"), "a credential holds a separator");
    if (!pieces.User.empty() || !pieces.Password.empty()) {
        // An "@" may stand in what is dropped as the scheme too: "https:/@user@host".
        const std::size_t at = url.find(pieces.Password.empty() ? pieces.User : ":" + pieces.Password);
        Require(at != std::string::npos && url.find('@', at) != std::string::npos,
                "credentials that do not stand in front of an @");
    }
}

} // namespace tarnwick::fuzz

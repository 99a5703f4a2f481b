#include "favorites/Favorites.h"
#include "favorites/Shortcut.h"
#include "fuzz/Targets.h"

#include <string>
#include <vector>

namespace tarnwick::fuzz {

namespace {

// Host, target, user, password, port.
using Pieces = std::vector<std::string>;

Pieces Split(const std::string& url, const std::string& before) {
    Pieces pieces(5, before);
    Favorites::SplitUrl(url, pieces[0], pieces[1], pieces[2], pieces[3], pieces[4]);
    return pieces;
}

void RequireNone(const std::string& piece, const char* separators) {
    Require(piece.find_first_of(separators) == std::string::npos, "a piece holds a separator");
}

} // namespace

void Url(std::string_view input) {
    const std::string url(input);
    const Pieces pieces = Split(url, "kept");
    if (pieces == Pieces{"", "kept", "kept", "kept", "kept"})
        return; // a link of another scheme
    Require(pieces == Split(url, "other"), "the split depends on an earlier link");
    Require(Favorites::CurrentLink.UrlShown == url, "the URL shown is not the URL");
    RequireNone(pieces[0], "/?#:");
    RequireNone(pieces[4], "/?#");
    RequireNone(pieces[2], ":@");
    RequireNone(pieces[3], ":@");
    Require(pieces[1].starts_with('/'), "the target doesn't begin at the slash");
    for (const std::string& piece : {pieces[0], pieces[1].substr(1), pieces[2], pieces[3]})
        Require(url.find(piece) != std::string::npos, "a piece is not of the URL");
}

} // namespace tarnwick::fuzz

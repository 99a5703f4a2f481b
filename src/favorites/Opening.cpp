#include "favorites/Opening.h"

#include "text/Ascii.h"
#include "text/Utf8.h"

#include <algorithm>
#include <array>

namespace tarnwick::Favorites {

namespace {

// Any other may lead to files, settings and programs of this machine, or run a script.
constexpr std::array<std::string_view, 7> Schemes = {"http", "https", "ftp", "mailto", "news", "nntp", "gopher"};

bool MayBeOpened(std::string_view url) {
    const std::string_view scheme = url.substr(0, url.find(':'));
    const auto isScheme = [scheme](std::string_view allowed) { return EqualRegardlessOfCase(scheme, allowed); };
    return std::ranges::any_of(Schemes, isScheme) && scheme.size() + 1 < url.size() &&
           std::ranges::none_of(url, IsAsciiControl);
}

} // namespace

std::string UrlToOpen(std::string_view url) {
    std::string opened;
    if (!MayBeOpened(url))
        return opened;
    for (std::size_t at = 0; at < url.size();) {
        const Utf8Character character = DecodeUtf8(url, at);
        if (!character.Valid || url[at] == ' ' || url[at] == '"')
            opened += '%' + HexOf(url[at]);
        else
            opened += url.substr(at, character.Bytes);
        at += character.Bytes;
    }
    return opened;
}

void OpenSite(WindowHandle owner, const std::string& url) {
    if (const std::string opened = UrlToOpen(url); !opened.empty())
        services().Shell.OpenUrl(owner, opened);
}

} // namespace tarnwick::Favorites

#include "favorites/Opening.h"

#include "window/Utf8.h"

#include <algorithm>
#include <array>

namespace tarnwick::Favorites {

namespace {

// Any other may lead to files, settings and programs of this machine, or run a script.
constexpr std::array<std::string_view, 7> Schemes = {"http", "https", "ftp", "mailto", "news", "nntp", "gopher"};

bool IsControl(char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7F'; }

char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool MayBeOpened(std::string_view url) {
    const std::string_view scheme = url.substr(0, url.find(':'));
    const auto isScheme = [scheme](std::string_view allowed) { return std::ranges::equal(scheme, allowed, {}, Lower); };
    return std::ranges::any_of(Schemes, isScheme) && scheme.size() + 1 < url.size() &&
           std::ranges::none_of(url, IsControl);
}

std::string Escaped(char c) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    const auto byte = static_cast<unsigned char>(c);
    return {'%', digits[byte >> 4U], digits[byte & 15U]};
}

} // namespace

std::string UrlToOpen(std::string_view url) {
    std::string opened;
    if (!MayBeOpened(url))
        return opened;
    for (std::size_t at = 0; at < url.size();) {
        const Utf8Character character = DecodeUtf8(url, at);
        if (!character.Valid || url[at] == ' ' || url[at] == '"')
            opened += Escaped(url[at]);
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

#include "favorites/Shortcut.h"

#include "favorites/Favorites.h"
#include "services/Services.h"
#include "text/Ascii.h"
#include "text/IniFile.h"
#include "text/Utf8.h"

#include <algorithm>
#include <string_view>

namespace tarnwick::Favorites {

namespace {

constexpr std::size_t ValueBufferSize = 10000; // characters, the closing NUL included
constexpr std::size_t ReadLimit = 16U << 20U;  // bytes of a file; what comes after them is not looked for
constexpr std::size_t CredentialSpan = 22;     // characters; an "@" further on belongs to the host or target

// Where the first `count` characters end.
std::size_t BytesOf(std::string_view text, std::size_t count) {
    std::size_t bytes = 0;
    for (; count > 0 && bytes < text.size(); --count)
        bytes += DecodeUtf8(text, bytes).Bytes;
    return bytes;
}

void DropScheme(std::string_view& rest) {
    if (BeginsWithRegardlessOfCase(rest, "HTTP://"))
        rest.remove_prefix(7);
    else if (BeginsWithRegardlessOfCase(rest, "HTTPS:/"))
        rest.remove_prefix(BytesOf(rest, 8)); // characters: the second "/" may be any
}

// Without a path the query is asked of the root; a fragment is the browser's alone.
std::string TargetOf(std::string_view rest) {
    if (rest.starts_with('/'))
        return std::string(rest);
    return "/" + std::string(rest.substr(0, rest.find('#')));
}

void TakeCredentials(std::string_view& rest, std::string& szUser, std::string& szPassword) {
    szUser.clear();
    szPassword.clear();
    const std::size_t at = rest.substr(0, BytesOf(rest, CredentialSpan)).find('@');
    if (at == std::string_view::npos)
        return;
    const std::string_view credentials = rest.substr(0, at);
    const std::size_t colon = credentials.find(':');
    szUser = credentials.substr(0, colon);
    if (colon != std::string_view::npos) {
        const std::string_view password = credentials.substr(colon + 1);
        szPassword = password.substr(0, password.find(':')); // a further colon ends it
    }
    rest.remove_prefix(at + 1);
}

} // namespace

std::string ReadShortcutUrl(const std::string& szFile) {
    CurrentLink.File = szFile;
    std::string bytes;
    services().Files.Read(szFile, ReadLimit, bytes);
    return FindIniValue(bytes, "InternetShortcut", "URL", ValueBufferSize);
}

void SplitUrl(const std::string& szUrl, std::string& szHost, std::string& szTarget, std::string& szUser,
              std::string& szPassword, std::string& szPort) {
    if (!BeginsWithRegardlessOfCase(szUrl, "HTTP")) {
        szHost.clear();
        return;
    }
    CurrentLink.UrlShown = szUrl;
    std::string_view rest = CurrentLink.UrlShown;
    DropScheme(rest);
    TakeCredentials(rest, szUser, szPassword);

    const std::string_view host = rest.substr(0, rest.find_first_of("/?#"));
    szTarget = TargetOf(rest.substr(host.size()));
    const std::size_t colon = host.find(':');
    szHost = host.substr(0, colon);
    szPort = colon == std::string_view::npos ? "80" : host.substr(colon + 1);
}

std::string DisplayName(const std::string& szFile) {
    return szFile.substr(0, szFile.size() - std::min<std::size_t>(4, szFile.size()));
}

} // namespace tarnwick::Favorites

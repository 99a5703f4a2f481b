#include "Driver.h"

#include "favorites/Folders.h"
#include "favorites/Opening.h"
#include "favorites/Shortcut.h"

namespace tarnwick {
namespace {

using FavoritesTest = Program;

TEST_F(FavoritesTest, SplitsUrls) {
    struct Case {
        const char *url, *host, *target, *port, *user, *password;
    };
    const std::string keep = "kept";
    const Case cases[] = {
        {"http://a.example/", "a.example", "/", "80", "", ""},
        {"HTTP://A.Example/Dir/Page.html?x=1#top", "A.Example", "/Dir/Page.html?x=1#top", "80", "", ""},
        {"https://a.example/x", "a.example", "/x", "80", "", ""},
        {"hTTps://a.example:443/x", "a.example", "/x", "443", "", ""},
        {"http://a.example/b@c/d", "c", "/d", "80", "a.example/b", ""},
        {"http://u:p:q@a.example/x", "a.example", "/x", "80", "u", "p"},
        {"http://@a.example/x", "a.example", "/x", "80", "", ""},
        {"http://abcdefghijklmnopqrstu@b.example/x", "b.example", "/x", "80", "abcdefghijklmnopqrstu", ""},
        {"http://abcdefghijklmnopqrstuv@b.example/x", "abcdefghijklmnopqrstuv@b.example", "/x", "80", "", ""},
        // Characters, not bytes.
        {"http://\u00E4\u00F6\u00FC\u00E4\u00F6\u00FC\u00E4\u00F6\u00FC\u00E4\u00F6\u00FC@b.example/", "b.example", "/",
         "80", "\u00E4\u00F6\u00FC\u00E4\u00F6\u00FC\u00E4\u00F6\u00FC\u00E4\u00F6\u00FC", ""},
        {"http://a.example", "a.example", "/", "80", "", ""},
        {"http://a.example:81", "a.example", "/", "81", "", ""},
        {"http://a.example?x=/b:c#top", "a.example", "/?x=/b:c", "80", "", ""},
        {"http://a.example:81#a/b?c", "a.example", "/", "81", "", ""},
        {"http://a.example:/x", "a.example", "/x", "", "", ""},
        {"http:/a.example/x", "http", "/a.example/x", "", "", ""}, // no scheme to drop, and a ":" in front of the "/"
        {"https:/", "", "/", "80", "", ""},
        {"http", "http", "/", "80", "", ""},
        {"ftp://a.example/x", "", "kept", "kept", "kept", "kept"},
        {"", "", "kept", "kept", "kept", "kept"},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.url);
        std::string host = keep, target = keep, user = keep, password = keep, port = keep;
        tarnwick::Favorites::SplitUrl(row.url, host, target, user, password, port);
        EXPECT_EQ((Strings{host, target, port, user, password}),
                  (Strings{row.host, row.target, row.port, row.user, row.password}));
    }
}

TEST_F(FavoritesTest, OnlySitesAreOpenedAndAsOneArgument) {
    const std::pair<std::string, std::string> cases[] = {
        {"http://a/?x=1&y=$(touch z);'`id`", "http://a/?x=1&y=$(touch%20z);'`id`"},
        {"HttpS://a/b \"c", "HttpS://a/b%20%22c"},
        {"http://a/caf\xE9/\u00E9\xC3", "http://a/caf%E9/\u00E9%C3"},
        {"ftp://a", "ftp://a"},
        {"mailto:x@a", "mailto:x@a"},
        {"news:a", "news:a"},
        {"nntp://a", "nntp://a"},
        {"gopher://a", "gopher://a"},
        {"", ""},
        {"http", ""},
        {"http:", ""},
        {" http://a", ""},
        {"C:\\x", ""},
        {"/etc/passwd", ""},
        {"--help", ""},
        {"file:///etc/passwd", ""},
        {"javascript:a", ""},
        {"httpx:a", ""},
        {"http://a/\nb", ""},
        {std::string("http://a/\0b", 11), ""},
        {"http://a/\x7F", ""},
    };
    for (const auto& [url, opened] : cases)
        EXPECT_EQ(tarnwick::Favorites::UrlToOpen(url), opened) << url;
}

TEST_F(FavoritesTest, RootEndsWithOneBackslash) {
    EXPECT_EQ(tarnwick::Favorites::FavoritesRoot(), "C:\\Users\\u\\Favorites\\");
    machine.Favorites.Root = "C:\\";
    EXPECT_EQ(tarnwick::Favorites::FavoritesRoot(), "C:\\");
    machine.Favorites.Root = "";
    EXPECT_EQ(tarnwick::Favorites::FavoritesRoot(), "\\");
    machine.Favorites.Root = "C:\\" + std::string(400, 'x');
    EXPECT_EQ(tarnwick::Favorites::FavoritesRoot(), "C:\\" + std::string(400, 'x') + "\\");
}

TEST_F(FavoritesTest, ReadsAtMostTheBuffer) {
    machine.Favorites.AddShortcut("Long.url", "http://" + std::string(20000, 'x'));
    const std::string file = machine.Favorites.Full("Long.url");
    EXPECT_EQ(tarnwick::Favorites::ReadShortcutUrl(file).size(), 9999U);
    EXPECT_EQ(tarnwick::Favorites::CurrentLink.File, file);
}

} // namespace
} // namespace tarnwick

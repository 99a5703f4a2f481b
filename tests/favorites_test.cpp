#include "Driver.h"

#include "favorites/Folders.h"
#include "favorites/Opening.h"
#include "favorites/Shortcut.h"

namespace tarnwick {
namespace {

using namespace std::string_literals;
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

TEST_F(FavoritesTest, ReadsOddShortcutsAsWindowsDoes) {
    const std::pair<std::string, std::string> rows[] = {
        // case, blanks and tabs
        {"[InternetShortcut]\r\nURL=http://a/\r\n", "http://a/"},
        {" \t[ \tInternetShortcut\t ] junk\n \tURL\t = \thttp://a/b c \t\n", "http://a/b c"},
        {"[internetshortcut]\nurl=\v\f\tx\f\v", "x"},
        // quotes
        {"[InternetShortcut]\nURL=\"x\"", "x"},
        {"[InternetShortcut]\nURL= ' x ' ", " x "},
        {"[InternetShortcut]\nURL=\"\"x\"\"", "\"x\""},
        {"[InternetShortcut]\nURL=\"x'", "\"x'"},
        // comments, and characters that mean something elsewhere
        {"[InternetShortcut]\n;URL=x\nURL=y;#=z", "y;#=z"},
        {";[InternetShortcut]\nURL=x", ""},
        // repetition
        {"[InternetShortcut]\nURL=1\nURL=2\n[Other]\nURL=3\n[InternetShortcut]\nURL=4", "1"},
        {"[InternetShortcut]\nA=1\n[Other]\nURL=3\n[InternetShortcut]\nURL=4", ""},
        {"URL=0\n[Other]\nURL=1\n[InternetShortcut]\nURL=2", "2"},
        // line ends
        {"[InternetShortcut]\rURL=x\rA=y", "x"},
        // marks
        {"\xEF\xBB\xBF[InternetShortcut]\nURL=\xC3\xA9", "\xC3\xA9"},
        {"\xFF\xFE[\0I\0n\0t\0e\0r\0n\0e\0t\0S\0h\0o\0r\0t\0c\0u\0t\0]\0\r\0\n\0U\0R\0L\0=\0\xE9\0=\xD8\x00\xDE\0\xD8\0\xDC\0\xD8x\0\n\0\n"s,
         "\xC3\xA9\xF0\x9F\x98\x80\xF0\x90\x80\x80\xEF\xBF\xBDx"},
        // bytes that are no text; a NUL ends the value
        {"[InternetShortcut]\nURL=caf\xe9\x1A z\x80\xFF"s, "caf\xe9\x1A z\x80\xFF"s},
        {"[InternetShortcut]\nURL=\"a\" \0b\n"s, "a"},
        // 9,999 bytes at most, cut in front of a character that doesn't fit whole
        {"[InternetShortcut]\nURL=" + std::string(20000, 'x'), std::string(9999, 'x')},
        {"[InternetShortcut]\nURL=" + std::string(9997, 'x') + "\xC3\xA9z", std::string(9997, 'x') + "\xC3\xA9"},
        {"[InternetShortcut]\nURL=" + std::string(9998, 'x') + "\xC3\xA9z", std::string(9998, 'x')},
        {"[InternetShortcut]\nURL=" + std::string(9997, 'x') + "\xF0\x9F\x98\x80", std::string(9997, 'x')},
        {"[InternetShortcut]\nURL=" + std::string(9997, 'x') + "\x80\x80\x80", std::string(9997, 'x') + "\x80\x80"},
    };
    for (const auto& [bytes, url] : rows) {
        machine.Favorites.AddFile("x.url", bytes);
        EXPECT_EQ(tarnwick::Favorites::ReadShortcutUrl(machine.Favorites.Full("x.url")), url)
            << ::testing::PrintToString(bytes.substr(0, 100));
    }
    EXPECT_EQ(tarnwick::Favorites::CurrentLink.File, machine.Favorites.Full("x.url"));
    EXPECT_EQ(tarnwick::Favorites::ReadShortcutUrl(machine.Favorites.Full("missing.url")), "");
}

TEST_F(FavoritesTest, ListingsStandSideBySideAndAreClosedOnce) {
    using namespace tarnwick::Favorites;
    for (const char* name : {"b.url", "a.url", "c.txt"})
        machine.Favorites.AddShortcut(name, "");
    const std::string root = FavoritesRoot();
    ListingHandle first = 0, second = 0, none = 7;
    EXPECT_EQ(FindFirst(root + "*.URL", first), "a.url");
    EXPECT_EQ(FindFirst(root + "*", second), ".");
    for (const char* name : {"..", "a.url", "b.url"})
        EXPECT_EQ(FindNext(second), name);
    for (const ListingHandle closed : {first, first, 0, -1, 99})
        FindEnd(closed);
    EXPECT_EQ(FindNext(first) + FindNext(0) + FindNext(-1) + FindNext(99), "");
    for (const char* name : {"c.txt", "", ""})
        EXPECT_EQ(FindNext(second), name);
    FindEnd(second);
    // A lone "\" is what is left of a folder that the machine can't name: never the root of a drive.
    machine.Favorites.Root = "";
    machine.Favorites.AddFolder("x");
    for (const std::string& pattern : {root + "*.none", root + "missing\\*", root, "*"s, "\\*"s, "\\\\*"s, ""s})
        EXPECT_EQ(FindFirst(pattern, none), "") << pattern;
    EXPECT_EQ(none, 7);
}

// Work is reached by three roads and the shortcut in it by five; two folders lead into each other and above the root.
class RoadsTest : public Program {
protected:
    RoadsTest() {
        MemoryFavorites& favorites = machine.Favorites;
        for (const char* path : {"own.url", "Work\\x.url", "Work\\Inner\\y.url", "Zoo\\z.url"})
            favorites.AddShortcut(path, "ftp://a.example/");
        favorites.AddFolder("- Favorites root -");
        favorites.AddShortcut("- Favorites Root -\\lost.url", "ftp://a.example/");
        const std::pair<const char*, std::string> links[] = {
            {"Arbeit", favorites.Full("Work")},
            {"Work\\Inner\\Up", favorites.Full("Work")},
            {"Zoo\\Work", favorites.Full("Work")},
            {"Zoo\\Root", favorites.Root},
            {"Zoo\\All", "C:\\Users"},
            {"first.url", favorites.Full("Work\\x.url")},
            {"second.url", favorites.Full("first.url")},
            {"Zoo\\last.url", favorites.Full("own.url")},
            {"Zoo\\zz.url", favorites.Full("Zoo\\z.url")},
            {"Zoo\\gone.url", favorites.Full("gone.url")},
        };
        for (const auto& [path, target] : links)
            favorites.AddLink(path, target);
    }

    Strings Taken() {
        Strings taken;
        for (const std::string& file : machine.Favorites.ReadIn)
            taken.push_back(file.substr(machine.Favorites.Root.size() + 1));
        return taken;
    }
};

TEST_F(RoadsTest, ACheckTakesEachFileOnceUnderItsFirstRoad) {
    StartProgram();
    CheckNodes({"- Favorites Root -"});
    EXPECT_EQ(Taken(), (Strings{"first.url", "own.url", "- Favorites Root -\\lost.url", "Arbeit\\Inner\\y.url",
                                "Zoo\\gone.url", "Zoo\\z.url"}));
}

TEST_F(RoadsTest, ACheckOfOneFolderStaysOutOfThoseAbove) {
    StartProgram();
    CheckNodes({"Zoo", "Work"});
    EXPECT_EQ(Taken(), (Strings{"Work\\x.url", "Work\\Inner\\y.url", "Zoo\\gone.url", "Zoo\\last.url", "Zoo\\z.url"}));
}

TEST_F(RoadsTest, TheDuplicateCheckTakesEachFileOnceUnderItsFirstRoad) {
    StartProgram();
    Click(Form3->Option2);
    for (const bool identities : {true, false}) { // without any, every folder and file is a new one
        machine.Favorites.Identifies = identities;
        machine.Favorites.ReadIn.clear();
        Click(Form3->Command1);
        Click(Form7->Command1);
        machine.Windows.WaitForEvents();
        if (identities)
            EXPECT_EQ(Taken(),
                      (Strings{"first.url", "own.url", "- Favorites Root -\\lost.url", "Zoo\\gone.url", "Zoo\\z.url"}));
        else
            EXPECT_EQ(Taken().size(), 10U);
        Form7.Unload();
        Click(Form3->Option2);
    }
}

} // namespace
} // namespace tarnwick

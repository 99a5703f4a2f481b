#include "Driver.h"

#include "favorites/Folders.h"
#include "favorites/Opening.h"
#include "favorites/Shortcut.h"

namespace tarnwick {
namespace {

using namespace std::string_literals;
using namespace tarnwick::Favorites;
using FavoritesTest = Program;

TEST_F(FavoritesTest, SplitsUrls) {
    const std::pair<const char*, Strings> cases[] = {
        // host, target, port, user, password
        {"HTTP://A.Example/Dir/Page.html?x=1#top", {"A.Example", "/Dir/Page.html?x=1#top", "80", "", ""}},
        {"hTTps://a.example/x", {"a.example", "/x", "80", "", ""}},
        {"http://a.example/b@c/d", {"c", "/d", "80", "a.example/b", ""}},
        {"http://u:p:q@a.example/x", {"a.example", "/x", "80", "u", "p"}},
        {"http://@a.example/x", {"a.example", "/x", "80", "", ""}},
        // 21 characters, not bytes, are credentials, 22 are none.
        {"http://\u00E4bcdefghijklmnopqrstu@b/x", {"b", "/x", "80", "\u00E4bcdefghijklmnopqrstu", ""}},
        {"http://abcdefghijklmnopqrstuv@b/x", {"abcdefghijklmnopqrstuv@b", "/x", "80", "", ""}},
        {"http://a.example?x=/b:c#top", {"a.example", "/?x=/b:c", "80", "", ""}},
        {"http://a.example:81#a/b?c", {"a.example", "/", "81", "", ""}},
        {"http://a.example:/x", {"a.example", "/x", "", "", ""}},
        {"http:/a.example/x", {"http", "/a.example/x", "", "", ""}}, // no scheme to drop, and a ":" in front of the "/"
        {"https:/", {"", "/", "80", "", ""}},
        {"https:/\u00E9a/b", {"a", "/b", "80", "", ""}},
        {"http", {"http", "/", "80", "", ""}},
        {"ftp://a.example/x", {"", "kept", "kept", "kept", "kept"}}};
    for (const auto& [url, pieces] : cases) {
        Strings split(5, "kept");
        SplitUrl(url, split[0], split[1], split[3], split[4], split[2]);
        EXPECT_EQ(split, pieces) << url;
    }
}

TEST_F(FavoritesTest, OnlySitesAreOpenedAndAsOneArgument) {
    EXPECT_EQ(UrlToOpen("http://a/?x=1&y=$(touch z);'`id`"), "http://a/?x=1&y=$(touch%20z);'`id`");
    EXPECT_EQ(UrlToOpen("HttpS://a/b \"c/caf\xE9/\u00E9\xC3"), "HttpS://a/b%20%22c/caf%E9/\u00E9%C3");
    for (const char* url : {"ftp://a", "MAILTO:x@a", "news:a", "nntp://a", "gopher://a"})
        EXPECT_EQ(UrlToOpen(url), url);
    for (const std::string& url :
         {"http"s, "http:"s, " http://a"s, "C:\\x"s, "/etc/passwd"s, "--help"s, "file:///etc/passwd"s, "javascript:a"s,
          "httpx:a"s, "http://a/\nb"s, "http://a/\0b"s, "http://a/\x7F"s})
        EXPECT_EQ(UrlToOpen(url), "") << url;
}

TEST_F(FavoritesTest, RootEndsWithOneBackslash) {
    for (const std::string& folder : {"C:\\Favorites"s, ""s, std::string(400, 'x')}) {
        machine.Favorites.Root = folder;
        EXPECT_EQ(FavoritesRoot(), folder + "\\");
        machine.Favorites.Root = folder + "\\";
        EXPECT_EQ(FavoritesRoot(), folder + "\\");
    }
}

TEST_F(FavoritesTest, ReadsOddShortcutsAsWindowsDoes) {
    const std::string name = "[InternetShortcut]\n";
    const std::pair<std::string, std::string> rows[] = {
        // case, blanks and tabs
        {" \t[ \tinternetshortcut\t ] junk\n \turl\t = \t\v\fhttp://a/b c\f\v \t\n", "http://a/b c"},
        // quotes
        {name + "URL= ' x ' ", " x "},
        {name + "URL=\"\"x\"\"", "\"x\""},
        {name + "URL=\"x'", "\"x'"},
        // comments, and characters that mean something elsewhere
        {name + "[Other\n;URL=x\nURL=y];#=z", "y];#=z"},
        {";" + name + "URL=x", ""},
        // repetition
        {"URL=0\n[Other]\nURL=1\n" + name + "URL=2\nURL=3\n[Other]\nURL=4\n" + name + "URL=5", "2"},
        {name + "A=1\n[Other]\nURL=3\n" + name + "URL=4", ""},
        // line ends
        {"[InternetShortcut]\rURL=x\rA=y", "x"},
        // marks
        {"\xEF\xBB\xBF" + name + "URL=\xC3\xA9", "\xC3\xA9"},
        {"\xFF\xFE[\0I\0n\0t\0e\0r\0n\0e\0t\0S\0h\0o\0r\0t\0c\0u\0t\0]\0\r\0\n\0U\0R\0L\0=\0\xE9\0=\xD8\x00\xDE\0\xD8\0\xDC\0\xDC\0\xDC\0\xD8\0\xE0x\0\n\0\n"s,
         "\xC3\xA9\xF0\x9F\x98\x80\xF0\x90\x80\x80\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\uE000x"},
        // bytes that are no text; a NUL ends the value
        {name + "URL=caf\xe9\x1A z\x80\xFF", "caf\xe9\x1A z\x80\xFF"},
        {name + "URL=\"a\" \0b\n"s, "a"},
        // 9,999 bytes at most, cut in front of a character that doesn't fit whole
        {name + "URL=" + std::string(9997, 'x') + "\xC3\xA9z", std::string(9997, 'x') + "\xC3\xA9"},
        {name + "URL=" + std::string(9998, 'x') + "\xC3\xA9z", std::string(9998, 'x')},
        {name + "URL=" + std::string(9997, 'x') + "\xF0\x9F\x98\x80", std::string(9997, 'x')},
        {name + "URL=" + std::string(9997, 'x') + "\x80\x80\x80", std::string(9997, 'x') + "\x80\x80"}};
    for (const auto& [bytes, url] : rows) {
        machine.Favorites.AddFile("x.url", bytes);
        EXPECT_EQ(ReadShortcutUrl(machine.Favorites.Full("x.url")), url)
            << ::testing::PrintToString(bytes.substr(0, 100));
    }
}

TEST_F(FavoritesTest, ListingsStandSideBySideAndAreClosedOnce) {
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

// Work is reached in three ways and the shortcut in it in five; two folders lead into each other and above the root.
class WalkTest : public Program {
protected:
    void SetUp() override {
        MemoryFavorites& favorites = machine.Favorites;
        machine.Sockets.Hosts["gone"] = {.Reply = "x 404 y"};
        for (const char* path : {"own.url", "Work\\x.url", "Work\\Inner\\y.url", "Work\\Inner\\Last\\l.url",
                                 "Work\\My.URLs\\m.url", "Work\\q.ini\\no.url", "Work\\w.url\\no.url", "Zoo\\z.url",
                                 "- Favorites Root -\\lost.url", "Scan subfolders\\s.url"})
            favorites.AddShortcut(path, "http://gone/");
        favorites.AddFolder("- Favorites root -");
        favorites.AddFile("Work\\file.txt", "");
        for (const char* link : {"Arbeit", "Work\\Inner\\Up", "Zoo\\Work"})
            favorites.AddLink(link, favorites.Full("Work"));
        favorites.AddLink("Zoo\\Root", favorites.Root);
        favorites.AddLink("Zoo\\All", "C:\\Users");
        favorites.AddLink("Album\\first.url", favorites.Full("Work\\x.url"));
        favorites.AddLink("Album\\second.url", favorites.Full("Album\\first.url"));
        favorites.AddLink("Zoo\\last.url", favorites.Full("own.url"));
        favorites.AddLink("Zoo\\zz.url", favorites.Full("Zoo\\z.url"));
        favorites.AddLink("Zoo\\gone.url", favorites.Full("gone.url"));
        favorites.AddUnlisted("Work\\hidden.url");
        favorites.AddLink("Zoo\\hidden.url", favorites.Full("Work\\hidden.url"));
        StartProgram();
    }

    Strings TakenBy(const Strings& nodes) {
        Form4.Unload();
        CheckNodes(nodes);
        EXPECT_TRUE(NoListingIsOpen());
        return Taken();
    }

    // The files that were read since the last call.
    Strings Taken() {
        Strings taken;
        for (const std::string& file : std::exchange(machine.Favorites.ReadIn, {}))
            taken.push_back(file.substr(machine.Favorites.Root.size() + 1));
        return taken;
    }
};

TEST_F(WalkTest, ACheckTakesEachFileOnceUnderItsFirstPath) {
    // "w.url" is read as the shortcut that it is listed as, and not walked.
    EXPECT_EQ(TakenBy({"- Favorites Root -"}),
              (Strings{"own.url", "- Favorites Root -\\lost.url", "Album\\first.url", "Arbeit\\w.url",
                       "Arbeit\\Inner\\y.url", "Arbeit\\Inner\\Last\\l.url", "Arbeit\\My.URLs\\m.url",
                       "Scan subfolders\\s.url", "Zoo\\gone.url", "Zoo\\hidden.url", "Zoo\\z.url"}));
    EXPECT_EQ(Cells(Form5->Grid1, ReportColumn::Folder),
              (Strings{"Favorites root", "- Favorites Root -", "Album", "Inner", "Last", "My.URLs", "Scan subfolders",
                       "Zoo"}));
}

TEST_F(WalkTest, ALinkedFavoritesFolderKeepsACheckOutOfTheFoldersAboveTheRealOne) {
    MemoryFavorites& favorites = machine.Favorites;
    favorites.AddFolder("Real\\Favorites");
    favorites.AddLink("Mine", favorites.Full("Real\\Favorites"));
    favorites.AddLink("Real\\Favorites\\Up", favorites.Full("Real"));
    EXPECT_FALSE(Visits(favorites.Full("Mine\\")).Enter(favorites.Full("Mine\\Up\\")));
}

TEST_F(WalkTest, ACheckStaysOutOfTheFoldersAboveAndCanBeStoppedBetweenTwoFolders) {
    EXPECT_EQ(TakenBy({"Zoo", "Work"}),
              (Strings{"Work\\w.url", "Work\\x.url", "Work\\Inner\\y.url", "Work\\Inner\\Last\\l.url",
                       "Work\\My.URLs\\m.url", "Zoo\\gone.url", "Zoo\\hidden.url", "Zoo\\last.url", "Zoo\\z.url"}));
    const Strings own = {"Work\\w.url", "Work\\x.url"};
    EXPECT_EQ(TakenBy({"Scan subfolders", "Work"}), own);
    // A pass for each node, shortcut and entry, and two for the wait for a link.
    machine.Windows.InPass(13, [this] { Click(Form4->Command1); });
    EXPECT_EQ(TakenBy({"Work"}), own);
    EXPECT_EQ(Form4->Label6.Caption, "file.txt");
}

TEST_F(WalkTest, TheDuplicateCheckTakesEachFileOnceUnderItsFirstPath) {
    const Strings once = {"own.url",
                          "- Favorites Root -\\lost.url",
                          "Album\\first.url",
                          "Arbeit\\w.url",
                          "Scan subfolders\\s.url",
                          "Zoo\\gone.url",
                          "Zoo\\hidden.url",
                          "Zoo\\z.url"};
    for (const bool identities : {true, false}) { // without any, every folder and file is a new one
        machine.Favorites.Identifies = identities;
        CheckDuplicates();
        const Strings taken = Taken();
        EXPECT_EQ(taken.size(), identities ? 8U : 14U);
        EXPECT_TRUE(!identities || taken == once) << ::testing::PrintToString(taken);
        Form7.Unload();
    }
}

} // namespace
} // namespace tarnwick

#include "platform/posix/PosixFiles.h"
#include "platform/posix/PosixShortcuts.h"
#include "posix_support.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ctime>
#include <vector>

namespace tarnwick::test {
namespace {

using namespace std::string_literals;
using Names = std::vector<std::string>;

class PosixFilesTest : public testing::Test {
protected:
    // The names that a listing gives for a pattern in a folder of the home; the listing is closed behind it.
    Names List(const std::string& pattern) {
        ListingHandle listing = -1;
        Names names;
        for (std::string name = files_.OpenListing(Backslashed(home_ / pattern), listing); !name.empty();
             name = files_.StepListing(listing))
            names.push_back(name);
        EXPECT_EQ(listing == 0, names.empty());
        files_.CloseListing(listing);
        return names;
    }

    void MakeFolder(const std::string& path) { std::filesystem::create_directories(home_ / path); }
    void MakeFile(const std::string& path) { WriteFile(home_ / path, "[InternetShortcut]\nURL=http://a/\n"); }
    void Link(const std::string& target, const std::string& path) {
        std::filesystem::create_directory_symlink(target, home_ / path);
    }

    bool Remove(const std::string& path) { return files_.Remove(Backslashed(home_ / path)); }

    TemporaryHome home_;
    PosixFiles files_;
};

TEST_F(PosixFilesTest, NamesComeInTheOrderOfUpperCasedUtf16Units) {
    const std::string musical = "\xF0\x9D\x84\x9E"; // U+1D11E: as UTF-16 in front of U+FF21, as bytes behind it
    const std::string wide = "\xEF\xBC\xA1";
    for (const std::string& name : Names{"b", "A", "_x", "[x", "z", "É", "è", "!x", "a-", musical, wide, "\xFF"})
        MakeFile("order/" + name);
    EXPECT_EQ(List("order/*"),
              (Names{".", "..", "!x", "A", "a-", "b", "z", "[x", "_x", "è", "É", musical, "\xFF", wide}));
}

TEST_F(PosixFilesTest, OnlyTheLastPieceIsAPattern) {
    const std::string longest = std::string(251, 'n').append(".url");
    for (const std::string& folder :
         Names{"a*b", "[a]", "100%", " blank ", ".hidden", "Zoë", "a?", std::string(255, 'f')}) {
        MakeFile(folder + "/" + longest);
        MakeFile(folder + "/[a].url");
        EXPECT_EQ(List(folder + "/*.url"), (Names{longest, "[a].url"})) << folder;
    }
    MakeFile("axb/wrong.url");
    EXPECT_EQ(List("a*b/*.url").size(), 2U);
}

TEST_F(PosixFilesTest, PatternMatchesRegardlessOfCase) {
    for (const char* name : {"a.url", "B.URL", "c.Url", ".url", "d.urlx", "e.url.txt", "URL", "gurl", "ë.uRL"})
        MakeFile(std::string("match/") + name);
    MakeFolder("match/x.url");
    MakeFile("match/a\\b.url"); // a name that no path can hold is left out
    EXPECT_EQ(List("match/*.url"), (Names{".url", "a.url", "B.URL", "c.Url", "x.url", "ë.uRL"}));
    EXPECT_EQ(List("match/Ë.*"), Names{"ë.uRL"});
}

TEST_F(PosixFilesTest, WhatCanNotBeListedIsNotOpen) {
    MakeFile("folder/file.url");
    MakeFolder("empty");
    for (const char* pattern : {"missing/*", "folder/file.url/*", "empty/*.url", "folder/"})
        EXPECT_EQ(List(pattern), Names{}) << pattern;
    ListingHandle listing = -1;
    EXPECT_EQ(files_.OpenListing(Backslashed(home_ / "folder") + std::string("\0\\*", 3), listing), "");
    EXPECT_EQ(listing, 0);
}

TEST_F(PosixFilesTest, FolderWithoutReadPermissionListsNothing) {
    MakeFile("closed/a.url");
    chmod(home_.Path().c_str(), 0755);
    EXPECT_EQ(List("closed/*.url"), Names{"a.url"});
    chmod((home_ / "closed").c_str(), 0);
    EXPECT_EQ(InChild([this] { return BecomeNobody() ? static_cast<int>(List("closed/*").size()) : 99; }), 0);
}

TEST_F(PosixFilesTest, LinksInACircleAreNotWalkedBelowThemselves) {
    MakeFile("top/a/b/x.url");
    MakeFile("other/y.url");
    Link(home_ / "other", "top/a/other");
    for (const auto& [link, target] :
         {std::pair{"b/back", home_ / "top/a"}, {"up", ".."}, {"root", "/"}, {"self", "."}}) {
        Link(target, std::string("top/a/") + link);
        EXPECT_EQ(List(std::string("top/a/") + link + "/*"), Names{}) << link;
    }
    EXPECT_EQ(List("top/a/other/*.url"), Names{"y.url"});
    EXPECT_EQ(List("top/a/b//*.url"), Names{"x.url"});
}

TEST_F(PosixFilesTest, ListingsStandSideBySide) {
    MakeFile("one/a.url");
    MakeFile("one/b.url");
    ListingHandle first = 0;
    ListingHandle second = 0;
    EXPECT_EQ(files_.OpenListing(Backslashed(home_ / "one/*.url"), first), "a.url");
    EXPECT_EQ(files_.OpenListing(Backslashed(home_ / "one/*.url"), second), "a.url");
    EXPECT_NE(first, second);
    for (const ListingHandle closed : {first, first, ListingHandle{0}})
        files_.CloseListing(closed);
    EXPECT_EQ(files_.StepListing(first) + files_.StepListing(-1), "");
    EXPECT_EQ(files_.StepListing(second), "b.url");
    EXPECT_EQ(files_.StepListing(second) + files_.StepListing(second), "");
}

TEST_F(PosixFilesTest, LargeFolderIsListedInOrder) {
    MakeFolder("large");
    for (int i = 0; i < 30000; ++i)
        std::ofstream(home_ / "large/" + std::to_string(100000 + i * 7919 % 30000) + ".URL");
    const std::clock_t start = std::clock(); // processor time: a busy machine or disk doesn't count
    const Names names = List("large/*.url");
    // Loose enough for a sanitizer; comparing every name with every other takes minutes.
    EXPECT_LT((std::clock() - start) / CLOCKS_PER_SEC, 10);
    ASSERT_EQ(names.size(), 30000U);
    EXPECT_TRUE(std::is_sorted(names.begin(), names.end()));
}

TEST_F(PosixFilesTest, FileThatVanishesWhileListedReadsAsNothing) {
    MakeFile("going/a.url");
    MakeFile("going/b.url");
    ListingHandle listing = 0;
    PosixShortcuts shortcuts;
    EXPECT_EQ(files_.OpenListing(Backslashed(home_ / "going/*.url"), listing), "a.url");
    std::filesystem::remove_all(home_ / "going");
    const std::string name = files_.StepListing(listing);
    EXPECT_EQ(name, "b.url");
    EXPECT_EQ(shortcuts.ReadValue("InternetShortcut", "URL", "", 100, Backslashed(home_ / "going/" + name)), "");
    files_.CloseListing(listing);
}

TEST_F(PosixFilesTest, RemovesExactlyTheOneFile) {
    for (const char* name : {"d/x.url", "d/y.url", "d/a*b/z.url", "d/*.url", "d/?.url", "d/readonly.url", "target.url"})
        MakeFile(name);
    MakeFolder("d/folder.url");
    chmod((home_ / "d/readonly.url").c_str(), 0444);
    Link(home_ / "target.url", "d/link.url");
    Link(home_ / "target.url/nowhere", "d/dangling.url");
    Link("folder.url", "d/folderlink.url");
    mkfifo((home_ / "d/pipe.url").c_str(), 0600);

    for (const std::string& kept :
         Names{"*.url", "?.url", "folder.url", "folderlink.url", "readonly.url", "pipe.url", "missing.url", ".", "..",
               "", "folder.url/", "x.url/", "x.url/.", "x.url\0.bak"s})
        EXPECT_FALSE(Remove("d/" + kept)) << kept;
    EXPECT_FALSE(files_.Remove(""));
    EXPECT_EQ(List("d/*"), (Names{".", "..", "*.url", "?.url", "a*b", "dangling.url", "folder.url", "folderlink.url",
                                  "link.url", "pipe.url", "readonly.url", "x.url", "y.url"}));

    for (const char* removed : {"x.url", "a*b/z.url", "link.url", "dangling.url"})
        EXPECT_TRUE(Remove(std::string("d/") + removed)) << removed;
    EXPECT_EQ(List("d/*.url"),
              (Names{"*.url", "?.url", "folder.url", "folderlink.url", "pipe.url", "readonly.url", "y.url"}));
    EXPECT_EQ(List("target.url"), Names{"target.url"});
}

TEST_F(PosixFilesTest, FileOfSomebodyElseStays) {
    MakeFile("d/x.url");
    chmod(home_.Path().c_str(), 0755);
    chmod((home_ / "d").c_str(), 0777);
    chmod((home_ / "d/x.url").c_str(), 0644);
    if (geteuid() != 0)
        GTEST_SKIP() << "needs a second user";
    EXPECT_EQ(InChild([this] { return BecomeNobody() && !Remove("d/x.url") ? 0 : 1; }), 0);
    EXPECT_EQ(List("d/*.url"), Names{"x.url"});
}

TEST_F(PosixFilesTest, FavoritesFolderFollowsUserDirs) {
    const std::string home = Backslashed(home_.Path());
    const std::pair<const char*, std::string> rows[] = {
        {"", home + "\\Favorites"},
        {"XDG_FAVORITES_DIR=\"$HOME/My Links\"\n", home + "\\My Links"},
        {"# XDG_FAVORITES_DIR=\"$HOME/x\"\n  XDG_FAVORITES_DIR = \"/srv/links/\" # mine\nXDG_DESKTOP_DIR=\"$HOME/y\"",
         "\\srv\\links"},
        {"XDG_FAVORITES_DIR=\"$HOME/a \\\"b\\\" \\$c\"", home + "\\a \"b\" $c"},
        {"XDG_FAVORITES_DIR=\"/srv/./a//b/.\"", "\\srv\\a\\b"},
        {"XDG_FAVORITES_DIR=\"/one\"\nXDG_FAVORITES_DIR=\"/two\"\n", "\\two"},
        {"XDG_FAVORITES_DIR=\"/one\"\nXDG_FAVORITES_DIR=\"relative\"\n", "\\one"},
        {"XDG_FAVORITES_DIR=\"$HOMEWARD/x\"", home + "\\Favorites"},
        {"XDG_FAVORITES_DIR_TWO=\"/x\"", home + "\\Favorites"},
        {"XDG_FAVORITES_DIR=\"/a\\\\b\"", ""},
        {"XDG_FAVORITES_DIR=\"", home + "\\Favorites"},
    };
    for (const auto& [userDirs, folder] : rows) {
        WriteFile(home_ / "config/user-dirs.dirs", userDirs);
        EXPECT_EQ(files_.FavoritesFolder(), folder) << userDirs;
    }
}

TEST_F(PosixFilesTest, FavoritesFolderWithoutAUsableEnvironment) {
    TemporaryHome::Set("XDG_CONFIG_HOME", "config"); // relative: not looked at
    WriteFile(home_ / ".config/user-dirs.dirs", "XDG_FAVORITES_DIR=\"$HOME/here\"\n");
    EXPECT_EQ(files_.FavoritesFolder(), Backslashed(home_ / "here"));
    std::filesystem::remove(home_ / ".config/user-dirs.dirs");
    mkfifo((home_ / ".config/user-dirs.dirs").c_str(), 0600); // must not be waited for
    EXPECT_EQ(files_.FavoritesFolder(), Backslashed(home_ / "Favorites"));
}

} // namespace
} // namespace tarnwick::test

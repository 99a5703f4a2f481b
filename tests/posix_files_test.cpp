#include "contract_files.h"

#include <algorithm>

#include <pwd.h>

namespace tarnwick::test {
namespace {

using PosixFilesTest = FilesContract;

TEST_F(PosixFilesTest, WhatIsListedCanBeRemoved) {
    const Names names = {"*.url", "?.url", "a*b", "other.url", "\xFF.url"};
    for (const std::string& name : names)
        MakeFile("d\\" + name);
    WriteFile(home / "d" + "/no\\path.url", ""); // no path of the program can hold it
    EXPECT_EQ(List("d"), names);
    home.Link("d\\dangling.url", "d\\missing.url", false);
    EXPECT_EQ(files.PlaceOf(Path("d\\dangling.url")).Folder, "");
    for (const std::string& name : names)
        EXPECT_TRUE(files.Remove(Path("d\\" + name))) << name;
    EXPECT_TRUE(files.Remove(Path("d\\dangling.url")));
}

TEST_F(PosixFilesTest, WhatIsNoFileOrNotTheUsersIsNeitherReadNorRemoved) {
    for (const char* name : {"closed\\x.url", "d\\secret.url"})
        MakeFile(name, "x");
    mkfifo((home / "d\\pipe.url").c_str(), 0600); // must not be waited for
    std::filesystem::create_symlink("/dev/zero", home / "d\\zero.url");
    std::filesystem::create_symlink("loop.url", home / "d\\loop.url");
    std::string bytes;
    for (const char* name : {"pipe.url", "zero.url", "loop.url"})
        EXPECT_FALSE(files.Read(Path("d\\"s + name), 100, bytes)) << name;
    EXPECT_FALSE(files.Remove(Path("d\\pipe.url")));
    EXPECT_EQ(List("closed"), Names{"x.url"});

    for (const auto& [name, mode] : {std::pair{"", 0777}, {"d", 0777}, {"closed", 0}, {"d\\secret.url", 0600}})
        chmod((home / name).c_str(), static_cast<mode_t>(mode));
    if (geteuid() != 0)
        GTEST_SKIP() << "needs a second user";
    const int status = InChild([&] {
        constexpr unsigned Nobody = 65534; // permissions don't stop root
        std::vector<ListedName> names;
        const bool open = setgid(Nobody) != 0 || setuid(Nobody) != 0 || files.List(Path("closed"), "", names) ||
                          files.Remove(Path("d\\secret.url")) || files.Read(Path("d\\secret.url"), 9, bytes);
        return open ? 1 : 0;
    });
    EXPECT_EQ(status, 0);
}

TEST_F(PosixFilesTest, FavoritesFolderFollowsUserDirs) {
    std::string root = Path("");
    std::ranges::replace(root, '/', '\\');
    const std::string usual = root + "Favorites";
    const std::pair<std::string, std::string> rows[] = {
        {"# XDG_FAVORITES_DIR=\"$HOME/x\"\n  XDG_FAVORITES_DIR = \"/srv/./a//b/.\" # mine\nXDG_DESKTOP_DIR=\"$HOME/y\"",
         "\\srv\\a\\b"},
        {"XDG_FAVORITES_DIR=\"$HOME/a \\\"b\\\" \\$c\"", root + "a \"b\" $c"},
        {"XDG_FAVORITES_DIR=\"/one\"\nXDG_FAVORITES_DIR=\"/two\"\n", "\\two"},
        {"XDG_FAVORITES_DIR=\"/one\"\nXDG_FAVORITES_DIR=\"relative\"\n", "\\one"},
        {"XDG_FAVORITES_DIR=\"$HOMEWARD/x\"", usual},
        {"XDG_FAVORITES_DIR=\"$HOME\"", usual},
        {"XDG_FAVORITES_DIR_TWO=\"/x\"", usual},
        {"~XDG_FAVORITES_DIR=\"/x\"", usual},
        {"XDG_FAVORITES_DIR=\"/a\\\\b\"", ""},
        {"XDG_FAVORITES_DIR=\"/unclosed", "\\unclosed"},
        {"XDG_FAVORITES_DIR=/bare", usual},
        {"XDG_FAVORITES_DIR=\"/a\0b\""s, usual},
    };
    for (const auto& [userDirs, folder] : rows) {
        MakeFile("config\\user-dirs.dirs", userDirs);
        EXPECT_EQ(files.FavoritesFolder(), folder) << userDirs;
    }
    setenv("XDG_CONFIG_HOME", "config", 1); // relative: not looked at
    MakeFile(".config\\user-dirs.dirs", "XDG_FAVORITES_DIR=\"$HOME/here\"\n");
    EXPECT_EQ(files.FavoritesFolder(), root + "here");
    std::filesystem::remove(home / ".config\\user-dirs.dirs");
    mkfifo((home / ".config\\user-dirs.dirs").c_str(), 0600); // must not be waited for
    EXPECT_EQ(files.FavoritesFolder(), usual);
    unsetenv("HOME");
    setenv("XDG_CONFIG_HOME", home.Path().c_str(), 1);
    EXPECT_EQ(SystemPath(files.FavoritesFolder()), getpwuid(getuid())->pw_dir + "/Favorites"s);
}

} // namespace
} // namespace tarnwick::test

// What Linux alone asks of its files, settings and browser, beside the contracts; and the readers over the fuzzer's
// corpus.

#include "contract_storage.h"
#include "fuzz/Targets.h"
#include "platform/posix/PosixShell.h"

#include <algorithm>
#include <csignal>

#include <fcntl.h>
#include <pwd.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <thread>

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

TEST_F(PosixFilesTest, WhatIsNoFileIsNeitherReadNorRemoved) {
    MakeFile("d\\x.url", "x");
    mkfifo((home / "d\\pipe.url").c_str(), 0600); // must not be waited for
    std::filesystem::create_symlink("/dev/zero", home / "d\\zero.url");
    std::filesystem::create_symlink("loop.url", home / "d\\loop.url");
    std::string bytes;
    for (const char* name : {"pipe.url", "zero.url", "loop.url"})
        EXPECT_FALSE(files.Read(Path("d\\"s + name), 100, bytes)) << name;
    EXPECT_FALSE(files.Remove(Path("d\\pipe.url")));
    EXPECT_EQ(List("d"), (Names{"loop.url (link)", "pipe.url", "x.url", "zero.url (link)"}));
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
        {"XDG_FAVORITES_DIR=\"/unended\\", ""},
        {"XDG_FAVORITES_DIR=/bare", usual},
        {"XDG_FAVORITES_DIR=\"/a\0b\""s, usual}};
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

class PosixSettingsTest : public SettingsContract {
protected:
    const std::string file_ = home / "config/Tarnwick/settings.ini";
};

TEST_F(PosixSettingsTest, EveryByteComesBackAndNobodyElseReadsIt) {
    std::string text;
    for (int i = 0; i < 256; ++i)
        text += static_cast<char>(i);
    for (const std::string& key : {text, std::string("[a=b;c]"), std::string(";x"), std::string(" x ")}) {
        EXPECT_TRUE(Write({{key, text}}));
        EXPECT_EQ(Read(key), text);
    }
    EXPECT_EQ(std::filesystem::status(file_).permissions(), std::filesystem::perms(0600));
}

TEST_F(PosixSettingsTest, HandEditedFileIsReadAndItsOtherLinesStay) {
    WriteFile(file_, "\xEF\xBB\xBF; mine\r\n[preferences]\r\n timeout = 30 \r\nProxyAddress=\"a "
                     "b\"\r\nbroken\r\nPath=C:\\xyz\\x4\r\n\r\n[Other]\r\nA=1\r\n[Hex]\r\nA=\\x4A\\x4a\\x4f\\x5F\\xag");
    EXPECT_EQ(Read("A", "Hex"), "JJO_\\xag");
    EXPECT_EQ(Read("Timeout") + Read("ProxyAddress") + Read("Path"), "30a bC:\\xyz\\x4");
    EXPECT_TRUE(Write({{"Timeout", "5"}, {"New", "n"}}));
    EXPECT_TRUE(Write({{"B", "2"}}, "Other"));
    EXPECT_TRUE(Write({{"C", "3"}}, "Third"));
    EXPECT_EQ(FileBytes(file_),
              "; mine\r\n[preferences]\r\nTimeout=5\nProxyAddress=\"a b\"\r\nbroken\r\nPath=C:\\xyz\\x4\r\nNew=n\n\r\n"
              "[Other]\r\nA=1\r\nB=2\n[Hex]\r\nA=\\x4A\\x4a\\x4f\\x5F\\xag\n[Third]\nC=3\n");
}

TEST_F(PosixSettingsTest, NothingIsWrittenUnderANameThatLeadsElsewhere) {
    for (const std::string& name : Names{"", ".", "..", "a/b", "a\\b", "a\0"s}) {
        EXPECT_FALSE(home.Settings().Write(name, "Preferences", {{"Timeout", "5"}})) << name;
        std::vector<Setting> settings = {{"Timeout", "none"}};
        home.Settings().Read(name, "Preferences", settings);
        EXPECT_EQ(settings[0].Value, "none") << name;
    }
    EXPECT_FALSE(Write({{"Timeout", "5"}}, "") || Write({{"", "5"}}));
    EXPECT_FALSE(std::filesystem::exists(home / "config"));
}

TEST_F(PosixSettingsTest, WhatCanNotBeReadIsNotReplaced) {
    WriteFile(file_, "[Preferences]\nTimeout=30\n" + std::string(2U << 20U, 'x'));
    EXPECT_EQ(Read("Timeout") + Read("Missing"), "30(default)");
    EXPECT_FALSE(Write({{"Timeout", "5"}}));
    EXPECT_EQ(Read("Timeout"), "30");
    for (const bool pipe : {true, false}) {
        std::filesystem::remove(file_);
        EXPECT_TRUE(pipe ? mkfifo(file_.c_str(), 0600) == 0 : std::filesystem::create_directories(file_));
        EXPECT_EQ(Read("Timeout"), "(default)");
        EXPECT_FALSE(Write({{"Timeout", "5"}}));
    }
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(home / "config/Tarnwick"), {}), 1);
}

TEST_F(PosixSettingsTest, ASaveReplacesTheFileOrLeavesIt) {
    WriteFile(home / "real.ini", "[Preferences]\nTimeout=30\nKept=1\n");
    WriteFile(home / "real.ini.new", "[Preferences]\nTim"); // of a save that was killed
    std::filesystem::create_directories(home / "config/Tarnwick");
    std::filesystem::create_symlink(home / "real.ini", file_);
    const int status = InChild([this] { // a program that was started without standard files, and then meets a full disk
        for (const int standard : {0, 1, 2})
            close(standard);
        const bool saved = Write({{"Timeout", "5"}}) && fcntl(0, F_GETFD) < 0;
        signal(SIGXFSZ, SIG_IGN);
        const rlimit room = {1000, 1000}; // bytes
        setrlimit(RLIMIT_FSIZE, &room);
        return saved && !Write({{"Timeout", std::string(100000, 'x')}}) ? 0 : 1;
    });
    EXPECT_EQ(status, 0);
    EXPECT_TRUE(std::filesystem::is_symlink(file_));
    const int other = open(home.Path().c_str(), O_RDONLY | O_DIRECTORY); // another program's save
    flock(other, LOCK_EX);
    EXPECT_FALSE(Write({{"Timeout", "6"}}));
    close(other);
    EXPECT_EQ(FileBytes(home / "real.ini"), "[Preferences]\nTimeout=5\nKept=1\n");
    EXPECT_FALSE(std::filesystem::exists(home / "real.ini.new"));
}

TEST_F(PosixSettingsTest, ASaveFollowsALinkThatLeadsToNothingYet) {
    std::filesystem::create_directories(home / "config/Tarnwick");
    std::filesystem::create_symlink("../../elsewhere.ini", file_);
    EXPECT_TRUE(Write({{"Timeout", "5"}}));
    EXPECT_TRUE(std::filesystem::is_symlink(file_));
    EXPECT_EQ(FileBytes(home / "elsewhere.ini"), "[Preferences]\nTimeout=5\n");
    std::filesystem::remove(file_);
    std::filesystem::create_symlink("settings.ini", file_); // to itself
    EXPECT_FALSE(Write({{"Timeout", "6"}}));
    EXPECT_TRUE(std::filesystem::is_symlink(file_));
}

TEST_F(PosixSettingsTest, ASaveKeepsTheModeAndLeavesAReadOnlyFile) {
    WriteFile(file_, "[Preferences]\nTimeout=30\n");
    chmod(file_.c_str(), 0664);
    EXPECT_TRUE(Write({{"Timeout", "5"}}));
    EXPECT_EQ(std::filesystem::status(file_).permissions(), std::filesystem::perms(0664));
    chmod(file_.c_str(), 0444);
    EXPECT_FALSE(Write({{"Timeout", "6"}}));
    EXPECT_EQ(Read("Timeout"), "5");
}

TEST_F(PosixSettingsTest, AReadingIsOfOneMoment) {
    WriteFile(file_, "[Preferences]\nA=1\nB=1\n");
    std::vector<Setting> settings(2000, {"A", ""});
    settings.back().Key = "B";
    std::thread other([this] {
        for (int save = 2; save < 200; ++save)
            Write({{"A", std::to_string(save)}, {"B", std::to_string(save)}});
    });
    for (int reading = 0; reading < 100; ++reading) {
        home.Settings().Read("Tarnwick", "Preferences", settings);
        EXPECT_EQ(settings.front().Value, settings.back().Value);
    }
    other.join();
}

TEST(PosixShellTest, AUrlIsOneArgumentAndNothingIsInherited) {
    const TemporaryHome home;
    const std::string opener = home / "bin/xdg-open", started = home / "started";
    // A program of this name replaces the desktop's: it writes down what it was started with.
    WriteFile(opener, "#!/bin/sh\nprintf '%s\\n' \"$#\" \"$@\" \"$PWD\" \"$(ls /proc/self/fd | tr '\\n' ' ')\" "
                      "\"$(readlink /proc/self/fd/2)\" \"$(cut -d ' ' -f 6 /proc/$$/stat)\" . > '" +
                          started + "'\n");
    chmod(opener.c_str(), 0755);
    setenv("PATH", (home / "bin:" + std::getenv("PATH")).c_str(), 1);
    const int inherited = open("/dev/null", O_RDONLY); // without close-on-exec
    std::filesystem::current_path("/");
    const std::string folder = std::filesystem::read_symlink("/proc/self/exe").parent_path();
    for (const std::string url : {"http://a/?x=1&y=$(touch gone);z='#`id`", "mailto:x@a"}) {
        std::filesystem::remove(started);
        PosixShell().OpenUrl(0, url);
        for (int wait = 0; wait < 1000 && !FileBytes(started).ends_with("\n.\n"); ++wait)
            usleep(10000);
        // Standard input, output and error, and the one that ls lists with.
        const std::string inheritance = "1\n" + url + "\n" + folder + "\n0 1 2 3 \n/dev/null\n";
        EXPECT_TRUE(FileBytes(started).starts_with(inheritance)) << FileBytes(started);
        EXPECT_NE(FileBytes(started), inheritance + std::to_string(getsid(0)) + "\n.\n")
            << "it would end with our terminal";
        EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "a child is left to wait for";
    }
    close(inherited);
}

// Seeds, and every input that once brought out a fault.
TEST(FuzzTargets, EveryKeptInputIsAnsweredRightly) {
    for (const auto& [name, target] : fuzz::Targets) {
        EXPECT_FALSE(std::filesystem::is_empty(FUZZ_CORPUS + name));
        for (const auto& entry : std::filesystem::directory_iterator(FUZZ_CORPUS + name))
            EXPECT_NO_THROW(target(FileBytes(entry.path().string()))) << entry.path();
    }
}

} // namespace
} // namespace tarnwick::test

#include "contract_files.h"
#include "platform/posix/PosixFiles.h"
#include "posix_support.h"

#include <algorithm>

namespace tarnwick::test {
namespace {

class LinuxFiles : public FilesMachine {
public:
    FileService& Files() override { return files_; }
    std::string Path(const std::string& name) override { return Backslashed(home_ / name); }
    void MakeFile(const std::string& name, const std::string& bytes) override { WriteFile(Real(name), bytes); }
    void MakeFolder(const std::string& name) override { std::filesystem::create_directories(Real(name)); }
    void MakeReadOnly(const std::string& name) override { chmod(Real(name).c_str(), 0444); }
    bool Link(const std::string& name, const std::string& target, bool) override {
        std::filesystem::create_symlink(Real(target), Real(name));
        return true;
    }

    std::string Real(std::string name) const {
        std::ranges::replace(name, '\\', '/');
        return home_ / name;
    }

private:
    TemporaryHome home_;
    PosixFiles files_;
};

INSTANTIATE_TEST_SUITE_P(Linux, FilesContract, testing::Values(FilesPlatform{[]() -> std::unique_ptr<FilesMachine> {
                             return std::make_unique<LinuxFiles>();
                         }}));

class PosixFilesTest : public testing::Test {
protected:
    void MakeFile(const std::string& name) { machine_.MakeFile(name, "[InternetShortcut]\nURL=http://a/\n"); }
    bool Remove(const std::string& name) { return machine_.Files().Remove(machine_.Path(name)); }
    Names List(const std::string& folder) {
        std::vector<ListedName> names;
        machine_.Files().List(machine_.Path(folder), "", names);
        Names texts;
        for (const ListedName& name : names)
            texts.push_back(name.Text);
        return texts;
    }

    LinuxFiles machine_;
};

TEST_F(PosixFilesTest, WhatIsListedCanBeRemoved) {
    WriteFile(machine_.Real("d") + "/no\\path.url", ""); // no path of the program can hold it
    Names names = {"*.url", "?.url", "a*b", "\xFF.url"};
    for (const std::string& name : names)
        MakeFile("d\\" + name);
    MakeFile("d\\other.url");
    names.emplace_back("dangling.url");
    machine_.Link("d\\dangling.url", "d\\missing.url", false);
    EXPECT_EQ(machine_.Files().PlaceOf(machine_.Path("d\\dangling.url")).Folder, "");
    for (const std::string& name : names)
        EXPECT_TRUE(Remove("d\\" + name)) << name;
    EXPECT_EQ(List("d"), Names{"other.url"});
}

TEST_F(PosixFilesTest, WhatIsNoFileIsNeitherReadNorRemoved) {
    MakeFile("d\\x.url");
    mkfifo(machine_.Real("d\\pipe.url").c_str(), 0600); // must not be waited for
    std::filesystem::create_symlink("/dev/zero", machine_.Real("d\\zero.url"));
    std::filesystem::create_symlink("loop.url", machine_.Real("d\\loop.url"));
    std::string bytes;
    for (const char* name : {"pipe.url", "zero.url", "loop.url"})
        EXPECT_FALSE(machine_.Files().Read(machine_.Path("d\\"s + name), 100, bytes)) << name;
    EXPECT_FALSE(Remove("d\\pipe.url"));
}

TEST_F(PosixFilesTest, WhatBelongsToSomebodyElseStaysClosed) {
    if (geteuid() != 0)
        GTEST_SKIP() << "needs a second user";
    for (const char* name : {"closed\\x.url", "d\\theirs.url", "d\\secret.url"})
        MakeFile(name);
    std::filesystem::permissions(machine_.Real(""), std::filesystem::perms::all);
    chmod(machine_.Real("closed").c_str(), 0);
    chmod(machine_.Real("d").c_str(), 0777);
    chmod(machine_.Real("d\\secret.url").c_str(), 0);
    EXPECT_EQ(List("closed"), Names{"x.url"});
    EXPECT_EQ(InChild([this] {
                  std::string bytes;
                  return BecomeNobody() && List("closed").empty() && !Remove("d\\theirs.url") &&
                                 !machine_.Files().Read(machine_.Path("d\\secret.url"), 9, bytes)
                             ? 0
                             : 1;
              }),
              0);
    EXPECT_EQ(List("d"), (Names{"secret.url", "theirs.url"}));
}

TEST_F(PosixFilesTest, FavoritesFolderFollowsUserDirs) {
    const std::string home = machine_.Path("");
    const std::pair<const char*, std::string> rows[] = {
        {"", home + "Favorites"},
        {"XDG_FAVORITES_DIR=\"$HOME/My Links\"\n", home + "My Links"},
        {"# XDG_FAVORITES_DIR=\"$HOME/x\"\n  XDG_FAVORITES_DIR = \"/srv/links/\" # mine\nXDG_DESKTOP_DIR=\"$HOME/y\"",
         "\\srv\\links"},
        {"XDG_FAVORITES_DIR=\"$HOME/a \\\"b\\\" \\$c\"", home + "a \"b\" $c"},
        {"XDG_FAVORITES_DIR=\"/srv/./a//b/.\"", "\\srv\\a\\b"},
        {"XDG_FAVORITES_DIR=\"/one\"\nXDG_FAVORITES_DIR=\"/two\"\n", "\\two"},
        {"XDG_FAVORITES_DIR=\"/one\"\nXDG_FAVORITES_DIR=\"relative\"\n", "\\one"},
        {"XDG_FAVORITES_DIR=\"$HOMEWARD/x\"", home + "Favorites"},
        {"XDG_FAVORITES_DIR=\"$HOME\"", home + "Favorites"},
        {"XDG_FAVORITES_DIR_TWO=\"/x\"", home + "Favorites"},
        {"XDG_FAVORITES_DIR=\"/a\\\\b\"", ""},
        {"XDG_FAVORITES_DIR=\"", home + "Favorites"},
    };
    for (const auto& [userDirs, folder] : rows) {
        machine_.MakeFile("config\\user-dirs.dirs", userDirs);
        EXPECT_EQ(machine_.Files().FavoritesFolder(), folder) << userDirs;
    }
    TemporaryHome::Set("XDG_CONFIG_HOME", "config"); // relative: not looked at
    machine_.MakeFile(".config\\user-dirs.dirs", "XDG_FAVORITES_DIR=\"$HOME/here\"\n");
    EXPECT_EQ(machine_.Files().FavoritesFolder(), home + "here");
    std::filesystem::remove(machine_.Real(".config\\user-dirs.dirs"));
    mkfifo(machine_.Real(".config\\user-dirs.dirs").c_str(), 0600); // must not be waited for
    EXPECT_EQ(machine_.Files().FavoritesFolder(), home + "Favorites");
}

} // namespace
} // namespace tarnwick::test

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

} // namespace

std::unique_ptr<FilesMachine> MakeFilesMachine() { return std::make_unique<LinuxFiles>(); }

namespace {

class PosixFilesTest : public FilesContract {
protected:
    std::string Real(const std::string& name) { return dynamic_cast<LinuxFiles&>(*machine).Real(name); }
    bool Remove(const std::string& name) { return files.Remove(machine->Path(name)); }
};

TEST_F(PosixFilesTest, WhatIsListedCanBeRemoved) {
    WriteFile(Real("d") + "/no\\path.url", ""); // no path of the program can hold it
    for (const char* name : {"*.url", "?.url", "a*b", "\xFF.url", "other.url"})
        machine->MakeFile("d\\"s + name, "");
    machine->Link("d\\dangling.url", "d\\missing.url", false);
    EXPECT_EQ(files.PlaceOf(machine->Path("d\\dangling.url")).Folder, "");
    for (const std::string& name : List("d"))
        EXPECT_EQ(Remove("d\\" + name), true) << name;
    EXPECT_EQ(List("d"), Names{});
}

TEST_F(PosixFilesTest, WhatIsNoFileOrNotTheUsersIsNeitherReadNorRemoved) {
    for (const char* name : {"closed\\x.url", "d\\secret.url"})
        machine->MakeFile(name, "x");
    mkfifo(Real("d\\pipe.url").c_str(), 0600); // must not be waited for
    std::filesystem::create_symlink("/dev/zero", Real("d\\zero.url"));
    std::filesystem::create_symlink("loop.url", Real("d\\loop.url"));
    std::string bytes;
    for (const char* name : {"pipe.url", "zero.url", "loop.url"})
        EXPECT_FALSE(files.Read(machine->Path("d\\"s + name), 100, bytes)) << name;
    EXPECT_FALSE(Remove("d\\pipe.url"));
    EXPECT_EQ(List("closed"), Names{"x.url"});

    for (const auto& [name, mode] : {std::pair{"", 0777}, {"d", 0777}, {"closed", 0}, {"d\\secret.url", 0600}})
        chmod(Real(name).c_str(), static_cast<mode_t>(mode));
    if (geteuid() != 0)
        GTEST_SKIP() << "needs a second user";
    EXPECT_EQ(InChild([&] {
                  std::vector<ListedName> names;
                  const bool open = !BecomeNobody() || files.List(machine->Path("closed"), "", names) ||
                                    Remove("d\\secret.url") || files.Read(machine->Path("d\\secret.url"), 9, bytes);
                  return open ? 1 : 0;
              }),
              0);
}

TEST_F(PosixFilesTest, FavoritesFolderFollowsUserDirs) {
    const std::string home = machine->Path("");
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
        machine->MakeFile("config\\user-dirs.dirs", userDirs);
        EXPECT_EQ(files.FavoritesFolder(), folder) << userDirs;
    }
    TemporaryHome::Set("XDG_CONFIG_HOME", "config"); // relative: not looked at
    machine->MakeFile(".config\\user-dirs.dirs", "XDG_FAVORITES_DIR=\"$HOME/here\"\n");
    EXPECT_EQ(files.FavoritesFolder(), home + "here");
    std::filesystem::remove(Real(".config\\user-dirs.dirs"));
    mkfifo(Real(".config\\user-dirs.dirs").c_str(), 0600); // must not be waited for
    EXPECT_EQ(files.FavoritesFolder(), home + "Favorites");
}

} // namespace
} // namespace tarnwick::test

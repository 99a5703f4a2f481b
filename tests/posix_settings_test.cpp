#include "contract_settings.h"

#include <csignal>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/resource.h>

namespace tarnwick::test {
namespace {

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
    for (const std::string& name : {std::string(), std::string("."), std::string(".."), std::string("a/b"),
                                    std::string("a\\b"), std::string("a\0", 2)}) {
        EXPECT_FALSE(home.Settings().Write(name, "Preferences", {{"Timeout", "5"}})) << name;
        EXPECT_EQ(home.Settings().Read(name, "Preferences", "Timeout", "none"), "none") << name;
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

} // namespace
} // namespace tarnwick::test

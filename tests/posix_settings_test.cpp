#include "contract_settings.h"
#include "platform/posix/PosixSettings.h"
#include "posix_support.h"

#include <csignal>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/resource.h>

namespace tarnwick::test {
namespace {

using namespace std::string_literals;

class SettingsFile : public SettingsMachine {
public:
    SettingsService& Settings() override { return settings_; }
    Setting TooMuch() override { return {"Key", std::string(PosixSettings::SizeLimit, 'v')}; }

private:
    TemporaryHome home_;
    PosixSettings settings_;
};

} // namespace

std::unique_ptr<SettingsMachine> MakeSettingsMachine() { return std::make_unique<SettingsFile>(); }

namespace {

class PosixSettingsTest : public testing::Test {
protected:
    static std::string Read(const std::string& key) {
        return PosixSettings().Read("Tarnwick", "Preferences", key, "(default)");
    }
    static bool Write(const std::string& key, const std::string& value, const std::string& section = "Preferences") {
        return PosixSettings().Write("Tarnwick", section, {{key, value}});
    }
    std::size_t FilesBeside() const {
        const std::filesystem::directory_iterator folder(home_ / "config/Tarnwick");
        return static_cast<std::size_t>(std::distance(begin(folder), end(folder)));
    }

    TemporaryHome home_;
    const std::string file_ = home_ / "config/Tarnwick/settings.ini";
};

TEST_F(PosixSettingsTest, EveryByteComesBackAndNobodyElseReadsIt) {
    std::string text;
    for (int i = 0; i < 256; ++i)
        text += static_cast<char>(i);
    for (const std::string& key : {text, "[a=b;c]"s, ";x"s, " x "s}) {
        EXPECT_TRUE(Write(key, text));
        EXPECT_EQ(Read(key), text);
    }
    EXPECT_EQ(std::filesystem::status(file_).permissions(), std::filesystem::perms(0600));
}

TEST_F(PosixSettingsTest, HandEditedFileIsReadAndItsOtherLinesStay) {
    WriteFile(file_, "\xEF\xBB\xBF; mine\r\n[preferences]\r\n timeout = 30 \r\nProxyAddress=\"a "
                     "b\"\r\nbroken\r\nPath=C:\\xyz\\x4\r\n\r\n[Other]\r\nA=1\r\n[Hex]\r\nA=\\x4A\\x4a\\x4f\\x5F\\xag");
    EXPECT_EQ(PosixSettings().Read("Tarnwick", "Hex", "A", ""), "JJO_\\xag");
    EXPECT_EQ(Read("Timeout"), "30");
    EXPECT_EQ(Read("ProxyAddress"), "a b");
    EXPECT_EQ(Read("Path"), "C:\\xyz\\x4");
    EXPECT_TRUE(Write("Timeout", "5"));
    EXPECT_TRUE(Write("New", "n"));
    EXPECT_TRUE(Write("B", "2", "Other"));
    EXPECT_TRUE(Write("C", "3", "Third"));
    EXPECT_EQ(FileBytes(file_),
              "; mine\r\n[preferences]\r\nTimeout=5\nProxyAddress=\"a b\"\r\nbroken\r\nPath=C:\\xyz\\x4\r\nNew=n\n\r\n"
              "[Other]\r\nA=1\r\nB=2\n[Hex]\r\nA=\\x4A\\x4a\\x4f\\x5F\\xag\n[Third]\nC=3\n");
}

TEST_F(PosixSettingsTest, WhatCanNotBeReadIsNotReplaced) {
    WriteFile(file_, "[Preferences]\nTimeout=30\n" + std::string(2U << 20U, 'x'));
    EXPECT_EQ(Read("Timeout") + Read("Missing"), "30(default)");
    EXPECT_FALSE(Write("Timeout", "5"));
    EXPECT_EQ(Read("Timeout"), "30");
    for (const bool pipe : {true, false}) {
        std::filesystem::remove(file_);
        EXPECT_TRUE(pipe ? mkfifo(file_.c_str(), 0600) == 0 : std::filesystem::create_directories(file_));
        EXPECT_EQ(Read("Timeout"), "(default)");
        EXPECT_FALSE(Write("Timeout", "5"));
    }
    EXPECT_EQ(FilesBeside(), 1U);
}

TEST_F(PosixSettingsTest, ASaveReplacesTheFileOrLeavesIt) {
    WriteFile(home_ / "real.ini", "[Preferences]\nTimeout=30\n");
    std::filesystem::create_directories(home_ / "config/Tarnwick");
    std::filesystem::create_symlink(home_ / "real.ini", file_);
    WriteFile(home_ / "real.ini.new", "[Preferences]\nTim"); // of a save that was killed
    EXPECT_TRUE(Write("Timeout", "5"));
    EXPECT_TRUE(std::filesystem::is_symlink(file_));
    EXPECT_FALSE(std::filesystem::exists(home_ / "real.ini.new"));
    EXPECT_EQ(InChild([] {
                  signal(SIGXFSZ, SIG_IGN);
                  const rlimit room = {1000, 1000}; // bytes: the disk is full after a few
                  setrlimit(RLIMIT_FSIZE, &room);
                  return Write("Timeout", std::string(100000, 'x')) ? 1 : 0;
              }),
              0);
    const int other = open(home_.Path().c_str(), O_RDONLY | O_DIRECTORY); // another program's save
    flock(other, LOCK_EX);
    EXPECT_FALSE(Write("Timeout", "6"));
    close(other);
    EXPECT_EQ(FileBytes(home_ / "real.ini"), "[Preferences]\nTimeout=5\n");
    EXPECT_FALSE(std::filesystem::exists(home_ / "real.ini.new"));
}

} // namespace
} // namespace tarnwick::test

#include "contract_settings.h"
#include "platform/posix/PosixSettings.h"
#include "posix_support.h"

#include <csignal>
#include <cstddef>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>

namespace tarnwick::test {
namespace {

class SettingsFile : public SettingsMachine {
public:
    SettingsService& Settings() override { return settings_; }
    Setting TooMuch() override { return {"Key", std::string(PosixSettings::SizeLimit, 'v')}; }

private:
    TemporaryHome home_;
    PosixSettings settings_;
};

INSTANTIATE_TEST_SUITE_P(Linux, SettingsContract,
                         testing::Values(SettingsPlatform{
                             []() -> std::unique_ptr<SettingsMachine> { return std::make_unique<SettingsFile>(); }}));

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
    std::string everyByte;
    for (int i = 0; i < 256; ++i)
        everyByte += static_cast<char>(i);
    EXPECT_TRUE(Write("Key", everyByte));
    EXPECT_EQ(Read("Key"), everyByte);
    EXPECT_TRUE(Write(" =[k];\t", "v"));
    EXPECT_EQ(Read(" =[k];\t") + Read("k"), "v(default)");
    struct stat status = {};
    ASSERT_EQ(stat(file_.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0600U);
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

TEST_F(PosixSettingsTest, FileThatCanNotBeReadGivesDefaultsAndIsNotReplaced) {
    WriteFile(file_, "[Preferences]\nTimeout=30\n" + std::string(2U << 20U, 'x'));
    EXPECT_EQ(Read("Timeout"), "30");
    EXPECT_EQ(Read("Missing"), "(default)");
    const std::string before = FileBytes(file_);
    EXPECT_FALSE(Write("Timeout", "5"));
    EXPECT_EQ(FileBytes(file_), before);

    for (const bool pipe : {true, false}) {
        std::filesystem::remove(file_);
        EXPECT_TRUE(pipe ? mkfifo(file_.c_str(), 0600) == 0 : std::filesystem::create_directories(file_));
        EXPECT_EQ(Read("Timeout"), "(default)");
        EXPECT_FALSE(Write("Timeout", "5"));
    }
    EXPECT_EQ(FilesBeside(), 1U);
}

TEST_F(PosixSettingsTest, LinkStaysALink) {
    WriteFile(home_ / "real.ini", "[Preferences]\nTimeout=30\n");
    std::filesystem::create_directories(home_ / "config/Tarnwick");
    std::filesystem::create_symlink(home_ / "real.ini", file_);
    EXPECT_TRUE(Write("Timeout", "5"));
    EXPECT_TRUE(std::filesystem::is_symlink(file_));
    EXPECT_EQ(FileBytes(home_ / "real.ini"), "[Preferences]\nTimeout=5\n");
}

TEST_F(PosixSettingsTest, SaveThatFailsLeavesTheOldFileAlone) {
    ASSERT_TRUE(Write("Timeout", "10"));
    const std::string before = FileBytes(file_);
    const std::string large(100000, 'x');
    const int status = InChild([&large] {
        signal(SIGXFSZ, SIG_IGN);
        const rlimit room = {1000, 1000}; // bytes: the disk is full after a few
        setrlimit(RLIMIT_FSIZE, &room);
        return Write("Timeout", large) ? 1 : 0;
    });
    EXPECT_EQ(status, 0);
    EXPECT_EQ(FileBytes(file_), before);
    EXPECT_EQ(FilesBeside(), 1U);
}

// Ends this process at its next call of `number`, as a crash at that moment would.
void DieAt(unsigned number) {
    sock_filter steps[] = {
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, number, 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_KILL_PROCESS),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    };
    const sock_fprog program = {4, steps};
    prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
    if (prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) != 0)
        _exit(99);
}

TEST_F(PosixSettingsTest, SaveThatIsCutOffLeavesTheOldFileWhole) {
    ASSERT_TRUE(Write("Timeout", "10"));
    const std::string before = FileBytes(file_);
    for (const unsigned step : {SYS_write, SYS_fsync, SYS_rename}) {
        const int status = InChild([step] {
            DieAt(step);
            return Write("Timeout", "20") ? 1 : 0;
        });
        EXPECT_EQ(status, 128 + SIGSYS) << "the save must write, bring to the disk, and rename: " << step;
        EXPECT_EQ(FileBytes(file_), before) << step;
    }
    EXPECT_TRUE(Write("Timeout", "20"));
    EXPECT_EQ(Read("Timeout"), "20");
    EXPECT_EQ(FilesBeside(), 1U) << "the next save takes away what the one that was cut off left";
}

} // namespace
} // namespace tarnwick::test

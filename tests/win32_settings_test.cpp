#include "win32_support.h"

namespace tarnwick::test {
namespace {

class Win32SettingsTest : public testing::Test {
protected:
    ~Win32SettingsTest() override { RegDeleteTreeA(HKEY_CURRENT_USER, root_.c_str()); }

    std::string Read(const std::string& key) { return settings_.Read("Tarnwick", "Preferences", key, "(default)"); }

    const std::string root_ = "Software\\Tarnwick tests\\" + std::to_string(GetCurrentProcessId());
    Win32Settings settings_{root_};
};

TEST_F(Win32SettingsTest, ValuesComeBackAsTheyWere) {
    EXPECT_EQ(Read("Key"), "(default)");
    for (const std::string& value : {std::string("5"), std::string(), std::string(" 5 "), std::string("Zoë Привет"),
                                     std::string("\"'=;[x]\\"), std::string(100000, 'v')}) {
        EXPECT_TRUE(settings_.Write("Tarnwick", "Preferences", "Key", value));
        EXPECT_EQ(Read("Key"), value);
        EXPECT_EQ(Win32Settings(root_).Read("Tarnwick", "Preferences", "Key", ""), value);
    }
    EXPECT_EQ(settings_.Read("Tarnwick", "Other", "Key", "none"), "none");
}

TEST_F(Win32SettingsTest, ValueThatIsNoTextReadsAsTheDefault) {
    const std::string path = root_ + "\\Tarnwick\\Preferences";
    const DWORD number = 5;
    RegSetKeyValueA(HKEY_CURRENT_USER, path.c_str(), "Number", REG_DWORD, &number, sizeof number);
    EXPECT_EQ(Read("Number"), "(default)");
    RegSetKeyValueA(HKEY_CURRENT_USER, path.c_str(), "Unended", REG_SZ, "12", 2);
    EXPECT_EQ(Read("Unended"), "12");
}

} // namespace
} // namespace tarnwick::test

#include "contract_settings.h"

namespace tarnwick::test {

TEST_F(SettingsContract, ValueThatIsNoTextReadsAsTheDefault) {
    const std::string path = home.Key + "\\Tarnwick\\Preferences";
    const DWORD number = 5;
    RegSetKeyValueA(HKEY_CURRENT_USER, path.c_str(), "Number", REG_DWORD, &number, sizeof number);
    RegSetKeyValueA(HKEY_CURRENT_USER, path.c_str(), "Unended", REG_SZ, "12", 2);
    EXPECT_EQ(Read("Number") + Read("Unended"), "(default)12");
}

} // namespace tarnwick::test

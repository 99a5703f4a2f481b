#include "contract_settings.h"
#include "win32_support.h"

namespace tarnwick::test {
namespace {

class Registry : public SettingsMachine {
public:
    ~Registry() override { RegDeleteTreeA(HKEY_CURRENT_USER, Root.c_str()); }
    SettingsService& Settings() override { return settings_.emplace(Root); }
    Setting TooMuch() override { return {std::string(20000, 'n'), "x"}; }

    const std::string Root = "Software\\Tarnwick tests\\" + std::to_string(GetCurrentProcessId());

private:
    std::optional<Win32Settings> settings_;
};

} // namespace

std::unique_ptr<SettingsMachine> MakeSettingsMachine() { return std::make_unique<Registry>(); }

namespace {

TEST(Win32SettingsTest, ValueThatIsNoTextReadsAsTheDefault) {
    Registry registry;
    const std::string path = registry.Root + "\\Tarnwick\\Preferences";
    const DWORD number = 5;
    RegSetKeyValueA(HKEY_CURRENT_USER, path.c_str(), "Number", REG_DWORD, &number, sizeof number);
    RegSetKeyValueA(HKEY_CURRENT_USER, path.c_str(), "Unended", REG_SZ, "12", 2);
    EXPECT_EQ(registry.Settings().Read("Tarnwick", "Preferences", "Number", "(default)"), "(default)");
    EXPECT_EQ(registry.Settings().Read("Tarnwick", "Preferences", "Unended", "(default)"), "12");
}

} // namespace
} // namespace tarnwick::test

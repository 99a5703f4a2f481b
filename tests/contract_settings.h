#pragma once

// What every machine's settings must do.

#include "platform/Services.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace tarnwick::test {

class SettingsMachine {
public:
    virtual ~SettingsMachine() = default;
    // The service as a new start of the program finds it.
    virtual SettingsService& Settings() = 0;
    // What can't be stored here, for its size.
    virtual Setting TooMuch() = 0;
};

std::unique_ptr<SettingsMachine> MakeSettingsMachine(); // of the program's own platform

class SettingsContract : public testing::Test {
protected:
    std::string Read(const std::string& key, const std::string& section = "Preferences") {
        return machine->Settings().Read("Tarnwick", section, key, "(default)");
    }
    bool Write(const std::vector<Setting>& settings, const std::string& section = "Preferences") {
        return machine->Settings().Write("Tarnwick", section, settings);
    }

    const std::unique_ptr<SettingsMachine> machine = MakeSettingsMachine();
};

TEST_F(SettingsContract, TextsComeBackAsTheyWere) {
    EXPECT_EQ(Read("Key"), "(default)");
    for (const std::string value :
         {"5", "", " 5 ", "\t", "\"q\"", "'", "a=b", "; c", "[x]", "a\nb\r\nc", "\\x41", "\\", "Zoë Привет"}) {
        EXPECT_TRUE(Write({{"Key", value}}));
        EXPECT_EQ(Read("Key"), value);
    }
    EXPECT_TRUE(Write({{"Key", std::string(100000, 'v')}}));
    EXPECT_EQ(Read("Key").size(), 100000U);
}

TEST_F(SettingsContract, SectionsAndKeysStandApart) {
    EXPECT_TRUE(Write({{"Timeout", "10"}, {"ProxyPort", "8080"}}));
    EXPECT_TRUE(Write({{"Timeout", "20"}}, "Other"));
    EXPECT_TRUE(Write({{"timeout", "11"}}));
    EXPECT_EQ(Read("Timeout"), "11");
    EXPECT_EQ(Read("ProxyPort"), "8080");
    EXPECT_EQ(Read("TIMEOUT", "other"), "20");
}

TEST_F(SettingsContract, ASaveIsWholeOrNothing) {
    ASSERT_TRUE(Write({{"A", "old"}, {"B", "old"}}));
    EXPECT_FALSE(Write({{"A", "new"}, {"C", "new"}, machine->TooMuch(), {"B", "new"}}));
    EXPECT_EQ(Read("A") + Read("B") + Read("C"), "oldold(default)");
    EXPECT_TRUE(Write({{"B", "new"}}));
    EXPECT_EQ(Read("A") + Read("B"), "oldnew");
}

} // namespace tarnwick::test

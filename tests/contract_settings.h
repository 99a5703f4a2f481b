#pragma once

// What every system's settings must do.

#include "system_support.h"

#include <gtest/gtest.h>

namespace tarnwick::test {

class SettingsContract : public testing::Test {
protected:
    // Each as a new start of the program does it.
    std::string Read(const std::string& key, const std::string& section = "Preferences") const {
        return home.Settings().Read("Tarnwick", section, key, "(default)");
    }
    bool Write(const std::vector<Setting>& settings, const std::string& section = "Preferences") const {
        return home.Settings().Write("Tarnwick", section, settings);
    }

    const TemporaryHome home;
};

TEST_F(SettingsContract, TextsComeBackAsTheyWere) {
    EXPECT_EQ(Read("Key"), "(default)");
    for (const std::string& value :
         std::vector<std::string>{"5", "", " 5 ", "\t", "\"q\"", "'", "a=b", "; c", "[x]", "a\nb\r\nc", "\\x41", "\\",
                                  "Zoë Привет", std::string(100000, 'v')}) {
        EXPECT_TRUE(Write({{"Key", value}}));
        EXPECT_EQ(Read("Key"), value);
    }
}

TEST_F(SettingsContract, SectionsAndKeysStandApartAndASaveIsWholeOrNothing) {
    EXPECT_TRUE(Write({{"Timeout", "10"}, {"ProxyPort", "8080"}}));
    EXPECT_TRUE(Write({{"Timeout", "20"}}, "Other"));
    EXPECT_TRUE(Write({{"timeout", "11"}}));
    const Setting tooMuch = {std::string(20000, 'n'), std::string(1U << 20U, 'v')}; // for the registry, and for a file
    EXPECT_FALSE(Write({{"Timeout", "12"}, {"New", "12"}, tooMuch, {"ProxyPort", "12"}}));
    EXPECT_EQ(Read("Timeout") + Read("ProxyPort") + Read("TIMEOUT", "other") + Read("New"), "11808020(default)");
}

} // namespace tarnwick::test

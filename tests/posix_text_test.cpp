#include "platform/posix/PosixText.h"

#include <gtest/gtest.h>

namespace tarnwick::test {
namespace {

TEST(PosixText, UpperCaseReachesBeyondAsciiAndKeepsWhatIsNoText) {
    const std::pair<std::string, std::string> rows[] = {
        {"desktop.ini [x]", "DESKTOP.INI [X]"},
        {"é ÿ ж ω", "É Ÿ Ж Ω"},
        {"ß \xF0\x9F\x98\x80", "ß \xF0\x9F\x98\x80"},
        {"\xC4\xB1\xC5\xBF", "\xC4\xB1\xC5\xBF"}, // dotless i, long s: never an ASCII letter
        {"a\x80z\xC3", "A\x80Z\xC3"},
        {"\xED\xA0\x80\xC0\xAFx", "\xED\xA0\x80\xC0\xAFX"}, // a lone surrogate, an overlong "/"
        {std::string("a\0b", 3), std::string("A\0B", 3)},
    };
    for (const auto& [text, upper] : rows)
        EXPECT_EQ(PosixText().Upper(text), upper);
}

} // namespace
} // namespace tarnwick::test

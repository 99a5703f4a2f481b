#include "platform/posix/PosixText.h"

#include <gtest/gtest.h>

namespace tarnwick::test {
namespace {

TEST(PosixText, UpperCaseReachesBeyondAsciiAndKeepsWhatIsNoText) {
    const struct {
        std::string Text;
        std::string Upper;
    } rows[] = {
        {"desktop.ini [x]", "DESKTOP.INI [X]"},
        {"é ÿ ж ω", "É Ÿ Ж Ω"},
        {"ß \xF0\x9F\x98\x80", "ß \xF0\x9F\x98\x80"},
        {"\xC4\xB1\xC5\xBF", "\xC4\xB1\xC5\xBF"}, // dotless i, long s: never an ASCII letter
        {"a\x80"
         "b\xC3",
         "A\x80"
         "B\xC3"},
        {"\xED\xA0\x80\xC0\xAFx", "\xED\xA0\x80\xC0\xAFX"}, // a lone surrogate, an overlong "/"
        {std::string("a\0b", 3), std::string("A\0B", 3)},
    };
    for (const auto& row : rows)
        EXPECT_EQ(PosixText().Upper(row.Text), row.Upper);
}

} // namespace
} // namespace tarnwick::test

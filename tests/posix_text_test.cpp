#include "platform/posix/PosixText.h"

#include <gtest/gtest.h>

namespace tarnwick::test {

TEST(PosixText, UpperCaseReachesBeyondAsciiAndKeepsWhatIsNoText) {
    PosixText text;
    EXPECT_EQ(text.Upper("desktop.ini [x] \u0080é ÿ ж ω ß \xF0\x9F\x98\x80"),
              "DESKTOP.INI [X] \u0080É Ÿ Ж Ω ß \xF0\x9F\x98\x80");
    EXPECT_EQ(text.Upper("\xC4\xB1\xC5\xBF"), "\xC4\xB1\xC5\xBF") << "dotless i, long s: never an ASCII letter";
    // A lone surrogate, an overlong "/", a last character that is cut.
    EXPECT_EQ(text.Upper("x\xED\xA0\x80\xC0\xAFx a\x80z\xC3"), "X\xED\xA0\x80\xC0\xAFX A\x80Z\xC3");
    EXPECT_EQ(text.Upper(std::string_view("a\0b", 3)), std::string("A\0B", 3));
}

} // namespace tarnwick::test

#include "win32_support.h"

namespace tarnwick::test {
namespace {

TEST(Win32TextTest, UpperCaseOfTheSystemsCodePage) {
    Win32Text text;
    EXPECT_EQ(text.Upper("http://a/Zoë-привет-ß"), "HTTP://A/ZOË-ПРИВЕТ-ß");
    EXPECT_EQ(text.Upper("abc\xFF"), "ABC\xFF") << "bytes that are no text stay apart from each other";
    EXPECT_EQ(text.Upper(std::string_view("a\0b", 3)), std::string("A\0B", 3));
}

} // namespace
} // namespace tarnwick::test

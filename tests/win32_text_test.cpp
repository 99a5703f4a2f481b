#include "win32_support.h"

namespace tarnwick::test {
namespace {

TEST(Win32TextTest, UpperCaseOfTheSystemsCodePage) {
    Win32Text text;
    EXPECT_EQ(text.Upper("http://a/Zoë-привет-ß"), "HTTP://A/ZOË-ПРИВЕТ-ß");
    EXPECT_EQ(text.Upper("abc\xFF"), "ABC\xFF") << "bytes that are no text stay apart from each other";
    EXPECT_EQ(text.Upper(std::string_view("a\0b", 3)), std::string("A\0B", 3));
    EXPECT_EQ(text.Upper(""), "");
}

TEST(Win32TextTest, ShownTextsAreData) {
    EXPECT_EQ(LiteralCaption("R&D <b>\t&&\r\nx"), L"R&&D <b> &&&& x");
    EXPECT_EQ(LinesOf("one\r\ntwo\nthree\rfour\x7F"), L"one\r\ntwo three four ");
    EXPECT_EQ(SingleLineOf("\xC2\xA9 one\r\ntwo"), L"\u00A9 one two");
}

TEST(Win32ShellTest, OpensUrlsAndNothingElse) {
    for (const char* url : {"http://a/?x=1&y='", "HTTPS://a/b c", "ftp://a/", "mailto:x@a", "x-a+b.1:c"})
        EXPECT_TRUE(IsOpenableUrl(url)) << url;
    for (const std::string& text :
         {std::string(), std::string("a"), std::string("C:\\windows\\notepad.exe"), std::string("c:/x"),
          std::string("\\\\server\\share"), std::string("notepad.exe"), std::string(":x"), std::string("http:"),
          std::string("1a:b"), std::string("a b:c"), std::string("file:///c:/x"), std::string("FILE:x"),
          std::string("shell:startup"), std::string("ms-settings:"), std::string("Search-MS:query=x"),
          std::string("javascript:x"), std::string("http://a/\nb"), std::string("http://a/\0b", 11)})
        EXPECT_FALSE(IsOpenableUrl(text)) << text;
    EXPECT_EQ(AsOneArgument("http://a/\" --flag"), "http://a/%22%20--flag");
}

} // namespace
} // namespace tarnwick::test

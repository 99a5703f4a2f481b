#include "platform/posix/InitialisationFile.h"
#include "platform/posix/PosixShortcuts.h"
#include "posix_support.h"

#include <gtest/gtest.h>

#include <vector>

namespace tarnwick::test {
namespace {

using namespace std::string_literals;

std::string Value(const std::string& bytes) {
    return FindInitialisationValue(bytes, "InternetShortcut", "URL", "(none)", 10000);
}

TEST(InitialisationFile, ReadsOddFilesAsWindowsDoes) {
    const std::pair<std::string, std::string> rows[] = {
        // case, blanks and tabs
        {"[InternetShortcut]\r\nURL=http://a/\r\n", "http://a/"},
        {" \t[ \tInternetShortcut\t ] junk\n \tURL\t = \thttp://a/b c \t\n", "http://a/b c"},
        {"[InternetShortcut] URL=x\n", "(none)"},
        // quotes
        {"[InternetShortcut]\nURL=\"x\"", "x"},
        {"[InternetShortcut]\nURL= ' x ' ", " x "},
        {"[InternetShortcut]\nURL=\"\"x\"\"", "\"x\""},
        {"[InternetShortcut]\nURL=\"x'", "\"x'"},
        {"[InternetShortcut]\nURL=\"", "\""},
        {"[InternetShortcut]\nURL=\"\"", ""},
        // comments, and characters that mean something elsewhere
        {"[InternetShortcut]\n;URL=x\nURL=y;#=z", "y;#=z"},
        {";[InternetShortcut]\nURL=x", "(none)"},
        {"[InternetShortcut]\nURL\nURL=x", "x"},
        {"[InternetShortcut]\nURL=a\\nb%41\\", "a\\nb%41\\"},
        // repetition
        {"[InternetShortcut]\nURL=1\nURL=2\n[Other]\nURL=3\n[InternetShortcut]\nURL=4", "1"},
        {"[InternetShortcut]\nA=1\n[Other]\nURL=3\n[InternetShortcut]\nURL=4", "(none)"},
        {"URL=0\n[Other]\nURL=1\n[InternetShortcut]\nURL=2", "2"},
        {"[InternetShortcut\nURL=1", "(none)"},
        // line ends
        {"[InternetShortcut]\rURL=x\rA=y", "x"},
        {"\n\r\n\r[InternetShortcut]\n\rURL=x\n", "x"},
        // marks
        {"\xEF\xBB\xBF[InternetShortcut]\nURL=\xC3\xA9", "\xC3\xA9"},
        {"\xFF\xFE[\0I\0n\0t\0e\0r\0n\0e\0t\0S\0h\0o\0r\0t\0c\0u\0t\0]\0\r\0\n\0U\0R\0L\0=\0\xE9\0=\xD8\x00\xDE\0\xD8x\0\n\0\n"s,
         "\xC3\xA9\xF0\x9F\x98\x80\xEF\xBF\xBDx"},
        {"\xEF\xBB\xBF", "(none)"},
        // bytes that are no text
        {"[InternetShortcut]\nURL=a\0b\x1A z\x80\xFF"s, "a\0b\x1A z\x80\xFF"s},
        {"\x1A\0\n[InternetShortcut]\nURL=x\x1A"s, "x\x1A"},
        {"", "(none)"},
    };
    for (const auto& [bytes, value] : rows)
        EXPECT_EQ(Value(bytes), value) << testing::PrintToString(bytes);
}

TEST(InitialisationFile, CutsInFrontOfACharacterThatDoesNotFit) {
    const auto cut = [](const std::string& value, std::size_t size) {
        return FindInitialisationValue("[S]\nK=" + value, "S", "K", "fallback", size);
    };
    for (const std::size_t length : {9999U, 10000U})
        EXPECT_EQ(cut(std::string(length, 'x'), 10000), std::string(9999, 'x'));
    EXPECT_EQ(cut("ab\xC3\xA9", 5), "ab\xC3\xA9");
    EXPECT_EQ(cut("ab\xC3\xA9z", 4), "ab");
    EXPECT_EQ(cut("a\xF0\x9F\x98\x80z", 5), "a");
    EXPECT_EQ(cut("a\xF0\x9F\x98\x80z", 6), "a\xF0\x9F\x98\x80");
    EXPECT_EQ(cut("ab\x80\x80\x80\x80\x80", 5), "ab\x80\x80"); // no characters: nothing to keep whole
    EXPECT_EQ(cut("abc", 1), "");
    EXPECT_EQ(cut("abc", 0), "");
    EXPECT_EQ(FindInitialisationValue("", "S", "K", "fallback", 5), "fall");
}

class PosixShortcutsTest : public testing::Test {
protected:
    std::string Read(const std::string& name) {
        return shortcuts_.ReadValue("InternetShortcut", "URL", "(none)", 10000, Backslashed(home_ / name));
    }

    TemporaryHome home_;
    PosixShortcuts shortcuts_;
};

TEST_F(PosixShortcutsTest, WhatIsNoReadableFileGivesTheDefaultAtOnce) {
    WriteFile(home_ / "good.url", "[InternetShortcut]\nURL=x\n");
    std::filesystem::create_directories(home_ / "folder.url");
    mkfifo((home_ / "pipe.url").c_str(), 0600);
    std::filesystem::create_symlink("/dev/zero", home_ / "zero.url");
    std::filesystem::create_symlink("loop.url", home_ / "loop.url");
    for (const char* name : {"missing.url", "folder.url", "pipe.url", "zero.url", "loop.url", "good.url/x"})
        EXPECT_EQ(Read(name), "(none)") << name;
    EXPECT_EQ(Read("good.url"), "x");
    EXPECT_EQ(shortcuts_.ReadValue("InternetShortcut", "URL", "", 10000,
                                   Backslashed(home_ / "good.url") + std::string("\0", 1)),
              "");
    chmod((home_ / "good.url").c_str(), 0);
    chmod(home_.Path().c_str(), 0755);
    EXPECT_EQ(InChild([this] { return BecomeNobody() && Read("good.url") == "(none)" ? 0 : 1; }), 0);
}

TEST_F(PosixShortcutsTest, LargeFilesAreReadWithABound) {
    const std::string shortcut = "\n[InternetShortcut]\nURL=found\n";
    for (const std::size_t filling : {16000U, 16384U, 32768U, 1U << 20U}) { // longer than one read
        WriteFile(home_ / "long.url", std::string(filling, '\x01') + shortcut);
        EXPECT_EQ(Read("long.url"), "found") << filling;
    }
    for (const auto& [bytes, value] : {std::pair{"x"s, "(none)"}, {shortcut.substr(1), "found"}}) {
        WriteFile(home_ / "hole.url", bytes);
        std::filesystem::resize_file(home_ / "hole.url", std::uintmax_t{64} << 30U); // takes no room on the disk
        EXPECT_EQ(Read("hole.url"), value);
    }
}

} // namespace
} // namespace tarnwick::test

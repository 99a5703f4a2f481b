#pragma once

// What every system must do with files (listing, identities, reading, removal), with settings, and with the upper case
// by which names are compared.

#include "system_support.h"

#include <gtest/gtest.h>

#include <fstream>

namespace tarnwick::test {

using namespace std::string_literals;
using Names = std::vector<std::string>;

// In a folder of the test's own. Paths have "\" between their pieces.
class FilesContract : public testing::Test {
protected:
    std::string Path(const std::string& name) const { return home.Path() + "\\" + name; }
    void MakeFile(const std::string& name, const std::string& bytes = "") const {
        std::filesystem::create_directories(home / name.substr(0, name.rfind('\\')));
        std::ofstream(home / name, std::ios::binary) << bytes;
    }
    Names List(const std::string& folder, std::string_view ending = "") {
        std::vector<ListedName> names;
        EXPECT_TRUE(files.List(Path(folder), ending, names)) << folder;
        Names texts;
        for (const ListedName& name : names)
            texts.push_back(name.Text + (name.IsLink ? " (link)" : ""));
        return texts;
    }

    const TemporaryHome home;
    SystemFiles files;
};

TEST_F(FilesContract, ListsTheNamesThatEndSoInTheOrderOfTheirUpperCase) {
    for (const char* name :
         {"b.url", "_.url", "A.URL", ".url", "c.urlx", "[x.url", "url", "e.Url", "d.url.txt", "x.url\\inside"})
        MakeFile("folder\\"s + name);
    EXPECT_EQ(List("folder", ".url"), (Names{".url", "A.URL", "b.url", "e.Url", "x.url", "[x.url", "_.url"}));
    EXPECT_EQ(List("folder\\"),
              (Names{".url", "A.URL", "b.url", "c.urlx", "d.url.txt", "e.Url", "url", "x.url", "[x.url", "_.url"}));
    const std::string musical = "\xF0\x9D\x84\x9E"; // U+1D11E: as UTF-16 in front of U+FF21, as bytes after it
    const std::string wide = "\xEF\xBC\xA1";
    for (const std::string& name : Names{"É", "è", wide, musical, "Привет", "z"})
        MakeFile("letters\\" + name);
    EXPECT_EQ(List("letters"), (Names{"z", "è", "É", "Привет", musical, wide}));
}

TEST_F(FilesContract, NoNameIsAPatternOrTooLong) {
    const std::string longest = std::string(251, 'n') + ".url";
    for (const std::string& folder :
         Names{"[a]", "100%", " blank", ".hidden", "Zoë", std::string(255, 'f') + "\\" + longest}) {
        MakeFile(folder + "\\" + longest, "x");
        EXPECT_EQ(List(folder, ".url"), Names{longest}) << folder;
        std::string bytes;
        EXPECT_TRUE(files.Read(Path(folder + "\\" + longest), 10, bytes));
        EXPECT_EQ(bytes, "x");
        EXPECT_NE(files.FolderIdentity(Path(folder)), "");
        EXPECT_TRUE(files.Remove(Path(folder + "\\" + longest))) << folder;
        EXPECT_EQ(List(folder), Names{});
    }
}

TEST_F(FilesContract, WhatIsNoFolderIsNotListed) {
    MakeFile("folder\\file.url");
    std::vector<ListedName> names;
    for (const std::string& path : {Path("missing"), Path("folder\\file.url"), Path("folder\\file.url\\"),
                                    Path("fold*"), Path("folde?"), Path("folder"s + '\0'), ""s}) {
        EXPECT_FALSE(files.List(path, "", names)) << path;
        EXPECT_EQ(files.FolderIdentity(path), "") << path;
    }
}

TEST_F(FilesContract, ReadsTheBytesAsTheyAre) {
    const std::string odd = "\xEF\xBB\xBF\r\n\0\x1A caf\xe9\xFF\n"s;
    std::string read = "before";
    for (const std::string& bytes : {odd, ""s, std::string(100000, 'x') + odd, std::string(16384, 'y')}) {
        MakeFile("folder\\file", bytes);
        EXPECT_TRUE(files.Read(Path("folder\\file"), 1U << 20U, read));
        EXPECT_EQ(read, bytes);
        EXPECT_TRUE(files.Read(Path("folder\\file"), 5, read));
        EXPECT_EQ(read, bytes.substr(0, 5));
    }
    for (const std::string& path : {Path("missing"), Path("folder"), Path("folder\\file\\"), ""s}) {
        EXPECT_FALSE(files.Read(path, 10, read)) << path;
        EXPECT_EQ(std::exchange(read, "before"), "") << path;
    }
}

TEST_F(FilesContract, RemovesExactlyTheOneFile) {
    for (const char* name : {"x.url", "y.url", "readonly.url", "100% [x].url", "folder.url\\inner"})
        MakeFile("d\\"s + name);
    std::filesystem::permissions(home / "d\\readonly.url", std::filesystem::perms::owner_read);
    for (const std::string& kept : Names{"*.url", "?.url", "folder.url", "folder.url\\", "readonly.url", "missing.url",
                                         ".", "..", "", "x.url\\", "x.url.", "x.url ", "x.url\\.", "x.url\0.bak"s})
        EXPECT_FALSE(files.Remove(Path("d\\" + kept))) << kept;
    EXPECT_FALSE(files.Remove(""));
    EXPECT_EQ(List("d"), (Names{"100% [x].url", "folder.url", "readonly.url", "x.url", "y.url"}));
    for (const char* name : {"x.url", "100% [x].url"})
        EXPECT_TRUE(files.Remove(Path("d\\"s + name))) << name;
    EXPECT_EQ(List("d"), (Names{"folder.url", "readonly.url", "y.url"}));
    EXPECT_EQ(List("d\\folder.url"), Names{"inner"});
}

TEST_F(FilesContract, FoldersAndFilesAreTheSameByEveryPath) {
    MakeFile("a\\x.url");
    MakeFile("b\\y.url");
    const auto identity = [this](const std::string& folder) { return files.FolderIdentity(Path(folder)); };
    EXPECT_NE(identity("a"), "");
    EXPECT_EQ(identity("a"), identity("a\\"));
    EXPECT_NE(identity("a"), identity("b"));
    EXPECT_EQ(files.PlaceOf(Path("a\\missing.url")).Folder, "");
    const auto expectX = [&](const std::string& file) {
        const FilePlace place = files.PlaceOf(Path(file));
        EXPECT_EQ(place.Folder, identity("a")) << file;
        EXPECT_EQ(place.Name, "x.url") << file;
    };
    expectX("a\\x.url");
    if (home.Link("b\\to a", "a", true)) {
        EXPECT_EQ(identity("b\\to a"), identity("a"));
        expectX("b\\to a\\x.url");
        EXPECT_FALSE(files.Remove(Path("b\\to a")));
        EXPECT_EQ(List("b\\to a"), Names{"x.url"});
    }
    if (home.Link("b\\to x.url", "a\\x.url", false)) {
        expectX("b\\to x.url");
        EXPECT_EQ(List("b", ".url"), (Names{"to x.url (link)", "y.url"}));
        EXPECT_TRUE(files.Remove(Path("b\\to x.url")));
        EXPECT_EQ(List("a"), Names{"x.url"});
    }
}

class SettingsContract : public testing::Test {
protected:
    // Each as a new start of the program does it.
    std::string Read(const std::string& key, const std::string& section = "Preferences") const {
        std::vector<Setting> settings = {{key, "(default)"}};
        home.Settings().Read("Tarnwick", section, settings);
        return settings[0].Value;
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

TEST(SystemText, UpperCaseReachesBeyondAsciiAndKeepsWhatIsNoText) {
    SystemText text;
    EXPECT_EQ(text.Upper("desktop.ini [x] \u0080é ÿ ж ω ß \xF0\x9F\x98\x80"),
              "DESKTOP.INI [X] \u0080É Ÿ Ж Ω ß \xF0\x9F\x98\x80");
    EXPECT_EQ(text.Upper("\xC4\xB1\xC5\xBF"), "\xC4\xB1\xC5\xBF") << "dotless i, long s: never an ASCII letter";
    // A lone surrogate, an overlong "/", a last character that is cut.
    EXPECT_EQ(text.Upper("x\xED\xA0\x80\xC0\xAFx a\x80z\xC3"), "X\xED\xA0\x80\xC0\xAFX A\x80Z\xC3");
    EXPECT_EQ(text.Upper("a\0b"s), "A\0B"s);
}

} // namespace tarnwick::test

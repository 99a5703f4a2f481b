#pragma once

// What every machine's files must do: listing, identities, reading, removal.

#include "platform/Services.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace tarnwick::test {

using namespace std::string_literals;
using Names = std::vector<std::string>;

// A folder of a test's own on one machine. Paths have "\" between their pieces.
class FilesMachine {
public:
    virtual ~FilesMachine() = default;
    virtual FileService& Files() = 0;
    virtual std::string Path(const std::string& name) = 0; // the full path of a name in the folder
    virtual void MakeFile(const std::string& name, const std::string& bytes) = 0;
    virtual void MakeFolder(const std::string& name) = 0;
    virtual void MakeReadOnly(const std::string& name) = 0;
    // A link `name` to another path in the folder. False where the system has no way to make one.
    virtual bool Link(const std::string& name, const std::string& target, bool folder) = 0;
};

std::unique_ptr<FilesMachine> MakeFilesMachine(); // of the program's own platform

class FilesContract : public testing::Test {
protected:
    Names List(const std::string& folder, std::string_view ending = "") {
        std::vector<ListedName> names;
        EXPECT_TRUE(files.List(machine->Path(folder), ending, names)) << folder;
        Names texts;
        for (const ListedName& name : names)
            texts.push_back(name.Text);
        return texts;
    }

    const std::unique_ptr<FilesMachine> machine = MakeFilesMachine();
    FileService& files = machine->Files();
};

TEST_F(FilesContract, ListsTheNamesThatEndSoInTheOrderOfTheirUpperCase) {
    for (const char* name : {"b.url", "_.url", "A.URL", ".url", "c.urlx", "[x.url", "url", "e.Url", "d.url.txt"})
        machine->MakeFile("folder\\"s + name, "");
    machine->MakeFolder("folder\\x.url");
    EXPECT_EQ(List("folder", ".url"), (Names{".url", "A.URL", "b.url", "e.Url", "x.url", "[x.url", "_.url"}));
    EXPECT_EQ(List("folder\\"),
              (Names{".url", "A.URL", "b.url", "c.urlx", "d.url.txt", "e.Url", "url", "x.url", "[x.url", "_.url"}));
    EXPECT_EQ(List("folder\\x.url"), Names{});
    const std::string musical = "\xF0\x9D\x84\x9E"; // U+1D11E: as UTF-16 in front of U+FF21, as bytes after it
    const std::string wide = "\xEF\xBC\xA1";
    for (const std::string& name : Names{"É", "è", wide, musical, "Привет", "z"})
        machine->MakeFile("letters\\" + name, "");
    EXPECT_EQ(List("letters"), (Names{"z", "è", "É", "Привет", musical, wide}));
}

TEST_F(FilesContract, NoNameIsAPatternOrTooLong) {
    const std::string longest = std::string(251, 'n') + ".url";
    const Names folders = {"[a]", "100%", " blank", ".hidden", "Zoë", std::string(255, 'f') + "\\" + longest};
    for (const std::string& folder : folders) {
        machine->MakeFile(folder + "\\" + longest, "x");
        EXPECT_EQ(List(folder, ".url"), Names{longest}) << folder;
        std::string bytes;
        EXPECT_TRUE(files.Read(machine->Path(folder + "\\" + longest), 10, bytes));
        EXPECT_EQ(bytes, "x");
        EXPECT_NE(files.FolderIdentity(machine->Path(folder)), "");
        EXPECT_TRUE(files.Remove(machine->Path(folder + "\\" + longest))) << folder;
        EXPECT_EQ(List(folder), Names{});
    }
}

TEST_F(FilesContract, WhatIsNoFolderIsNotListed) {
    machine->MakeFile("folder\\file.url", "");
    std::vector<ListedName> names;
    for (const std::string& path :
         {machine->Path("missing"), machine->Path("folder\\file.url"), machine->Path("folder\\file.url\\"),
          machine->Path("fold*"), machine->Path("folde?"), machine->Path("folder"s + '\0'), ""s}) {
        EXPECT_FALSE(files.List(path, "", names)) << path;
        EXPECT_EQ(files.FolderIdentity(path), "") << path;
    }
}

TEST_F(FilesContract, ReadsTheBytesAsTheyAre) {
    const std::string odd = "\xEF\xBB\xBF\r\n\0\x1A caf\xe9\xFF\n"s;
    for (const std::string& bytes : {odd, ""s, std::string(100000, 'x') + odd, std::string(16384, 'y')}) {
        machine->MakeFile("file", bytes);
        std::string read = "before";
        EXPECT_TRUE(files.Read(machine->Path("file"), 1U << 20U, read));
        EXPECT_EQ(read, bytes);
        EXPECT_TRUE(files.Read(machine->Path("file"), 5, read));
        EXPECT_EQ(read, bytes.substr(0, 5));
    }
    machine->MakeFolder("folder");
    for (const std::string& path : {machine->Path("missing"), machine->Path("folder"), machine->Path("file\\"), ""s}) {
        std::string read = "before";
        EXPECT_FALSE(files.Read(path, 10, read)) << path;
        EXPECT_EQ(read, "");
    }
}

TEST_F(FilesContract, RemovesExactlyTheOneFile) {
    for (const char* name : {"d\\x.url", "d\\y.url", "d\\readonly.url", "d\\100% [x].url", "d\\folder.url\\inner"})
        machine->MakeFile(name, "");
    machine->MakeReadOnly("d\\readonly.url");
    const Names before = List("d");
    for (const std::string& kept : Names{"*.url", "?.url", "folder.url", "folder.url\\", "readonly.url", "missing.url",
                                         ".", "..", "", "x.url\\", "x.url.", "x.url ", "x.url\\.", "x.url\0.bak"s})
        EXPECT_FALSE(files.Remove(machine->Path("d\\" + kept))) << kept;
    EXPECT_FALSE(files.Remove(""));
    EXPECT_EQ(List("d"), before);
    for (const char* name : {"x.url", "100% [x].url"})
        EXPECT_TRUE(files.Remove(machine->Path("d\\"s + name))) << name;
    EXPECT_EQ(List("d"), (Names{"folder.url", "readonly.url", "y.url"}));
    EXPECT_EQ(List("d\\folder.url"), Names{"inner"});
}

TEST_F(FilesContract, FoldersAndFilesAreTheSameByEveryPath) {
    machine->MakeFile("a\\x.url", "x");
    machine->MakeFile("b\\y.url", "y");
    const auto identity = [this](const std::string& folder) { return files.FolderIdentity(machine->Path(folder)); };
    EXPECT_NE(identity("a"), "");
    EXPECT_EQ(identity("a"), identity("a\\"));
    EXPECT_NE(identity("a"), identity("b"));
    const auto isAt = [&](const std::string& file, const std::string& folder, const std::string& name) {
        const FilePlace place = files.PlaceOf(machine->Path(file));
        EXPECT_EQ(place.Folder, identity(folder)) << file;
        EXPECT_EQ(place.Name, name) << file;
    };
    isAt("a\\x.url", "a", "x.url");
    EXPECT_EQ(files.PlaceOf(machine->Path("a\\missing.url")).Folder, "");

    if (machine->Link("b\\to a", "a", true)) {
        EXPECT_EQ(identity("b\\to a"), identity("a"));
        isAt("b\\to a\\x.url", "a", "x.url");
        EXPECT_FALSE(files.Remove(machine->Path("b\\to a")));
        EXPECT_EQ(List("b\\to a"), Names{"x.url"});
    }
    if (!machine->Link("b\\to x.url", "a\\x.url", false))
        return;
    isAt("b\\to x.url", "a", "x.url");
    std::vector<ListedName> names;
    ASSERT_TRUE(files.List(machine->Path("b"), ".url", names));
    for (const ListedName& name : names)
        EXPECT_EQ(name.IsLink, name.Text != "y.url") << name.Text;

    EXPECT_TRUE(files.Remove(machine->Path("b\\to x.url")));
    EXPECT_EQ(List("a"), Names{"x.url"});
}

} // namespace tarnwick::test

#include "win32_support.h"

#include <algorithm>

namespace tarnwick::test {
namespace {

using Names = std::vector<std::string>;

class Win32FilesTest : public testing::Test {
protected:
    Names List(const std::string& pattern) {
        ListingHandle listing = 0;
        Names names;
        for (std::string name = files_.OpenListing(home_ / pattern, listing); !name.empty();
             name = files_.StepListing(listing))
            names.push_back(name);
        EXPECT_EQ(listing == 0, names.empty());
        files_.CloseListing(listing);
        return names;
    }

    // A link `name` to the folder `target` beside it. False where the system has no way to make one.
    bool Link(const std::string& folder, const std::string& target, const std::string& name) {
        const std::string path = home_ / folder;
        Run("cmd /c mklink /J " + name + " " + target, path);
        if (!home_.Has(folder + "\\" + name)) {
            std::string unixTarget = target; // under Wine, which knows no junctions
            std::ranges::replace(unixTarget, '\\', '/');
            Run("Z:\\bin\\ln -s " + unixTarget + " " + name, path);
            // Wine doesn't wait for a program of the system below it.
            for (int i = 0; i < 200 && !home_.Has(folder + "\\" + name); ++i)
                Sleep(10);
        }
        return home_.Has(folder + "\\" + name);
    }
    // The link alone goes: Wine shows it as a folder, and a clean-up would walk through it.
    void Unlink(const std::string& folder, const std::string& name) {
        if (!RemoveDirectoryA((home_ / (folder + "\\" + name)).c_str()))
            Run("Z:\\bin\\rm " + name, home_ / folder);
    }

    static void Run(std::string command, const std::string& folder) {
        STARTUPINFOA start = {};
        start.cb = sizeof start;
        PROCESS_INFORMATION process = {};
        if (!CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, CREATE_NO_WINDOW, nullptr, folder.c_str(),
                            &start, &process))
            return;
        WaitForSingleObject(process.hProcess, 10000);
        CloseHandle(process.hThread);
        CloseHandle(process.hProcess);
    }

    TemporaryFolder home_;
    Win32Files files_;
};

TEST_F(Win32FilesTest, ListsNamesOfAnyScriptInOrder) {
    const std::string longest = std::string(251, 'n') + ".url";
    for (const std::string& name : {std::string("b.url"), std::string("A.URL"), std::string("_.url"),
                                    std::string("Привет.url"), longest, std::string("c.urlx"), std::string("d.txt")})
        home_.MakeFile("list\\" + name);
    std::filesystem::create_directories(WideOf(home_ / "list\\folder.url"));
    EXPECT_EQ(List("list\\*.url"), (Names{"A.URL", "b.url", "folder.url", longest, "_.url", "Привет.url"}));
    const Names all = List("list\\*");
    ASSERT_EQ(all.size(), 10U);
    EXPECT_EQ(all[0] + all[1], "...");
}

TEST_F(Win32FilesTest, WhatCanNotBeListedIsNotOpen) {
    home_.MakeFile("folder\\file.txt");
    for (const char* pattern : {"missing\\*", "folder\\file.txt\\*", "folder\\*.url", "folder\\"})
        EXPECT_EQ(List(pattern), Names{}) << pattern;
    EXPECT_EQ(List(std::string(400, 'x') + "\\*"), Names{});
    ListingHandle listing = 0;
    EXPECT_EQ(files_.OpenListing("\\\\*", listing), "");
}

TEST_F(Win32FilesTest, FoldersInACircleAreNotWalkedBelowThemselves) {
    home_.MakeFile("top\\a\\x.url");
    home_.MakeFile("other\\y.url");
    if (!Link("top\\a", "..", "back") || !Link("top\\a", "..\\..\\other", "aside"))
        GTEST_SKIP() << "no links here";
    EXPECT_EQ(List("top\\a\\back\\*"), Names{});
    EXPECT_EQ(List("top\\a\\*.url"), Names{"x.url"});
    EXPECT_EQ(List("top\\a\\aside\\*.url"), Names{"y.url"});
    for (const char* name : {"back", "aside"})
        Unlink("top\\a", name);
}

TEST_F(Win32FilesTest, RemovesExactlyTheFile) {
    for (const char* name : {"plain.url", "kept.url", "locked.url"})
        home_.MakeFile(name);
    home_.MakeFile("Привет 100% [x].url");
    home_.MakeFile("folder.url\\inner");
    SetFileAttributesA((home_ / "locked.url").c_str(), FILE_ATTRIBUTE_READONLY);

    struct Row {
        const char* Name;
        bool Gone;
    };
    for (const Row& row :
         {Row{"plain.url", true}, Row{"Привет 100% [x].url", true}, Row{"missing.url", false}, Row{"folder.url", false},
          Row{"locked.url", false}, Row{"kept.*", false}, Row{"kep?.url", false}, Row{"kept.url.", false},
          Row{"kept.url ", false}, Row{"folder.url\\..\\kept.url\\", false}, Row{"", false}})
        EXPECT_EQ(files_.Remove(home_ / row.Name), row.Gone) << row.Name;
    EXPECT_FALSE(files_.Remove(""));
    for (const char* name : {"kept.url", "locked.url", "folder.url\\inner"})
        EXPECT_TRUE(home_.Has(name)) << name;
    for (const char* name : {"plain.url", "Привет 100% [x].url"})
        EXPECT_FALSE(home_.Has(name)) << name;
    SetFileAttributesA((home_ / "locked.url").c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(Win32FilesTest, NamesTheFavoritesFolder) {
    const std::string folder = files_.FavoritesFolder();
    EXPECT_TRUE(std::filesystem::is_directory(WideOf(folder))) << folder;
}

TEST_F(Win32FilesTest, ReadsAShortcutWhateverItsName) {
    const std::string long9999(9999, 'u');
    home_.MakeFile("Привет.url",
                   "; note\r\n[Other]\r\nURL=http://wrong/\r\n[internetshortcut]\r\nurl=\"http://a/?x=1;y#z\"\r\n");
    home_.MakeFile("long.url", "[InternetShortcut]\nURL=" + long9999 + "tail");
    home_.MakeFile("empty.url", "[InternetShortcut]\r\nURL=\r\n");
    Win32Shortcuts shortcuts;
    const auto read = [&](const char* name) {
        return shortcuts.ReadValue("InternetShortcut", "URL", "", 10000, home_ / name);
    };
    EXPECT_EQ(read("Привет.url"), "http://a/?x=1;y#z");
    EXPECT_EQ(read("long.url"), long9999);
    EXPECT_EQ(read("empty.url"), "");
    EXPECT_EQ(read("missing.url"), "");
    EXPECT_EQ(shortcuts.ReadValue("InternetShortcut", "None", "default", 10000, home_ / "long.url"), "default");
}

} // namespace
} // namespace tarnwick::test

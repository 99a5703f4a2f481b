// The run of the duplicate check: listing the folders in the click, then gathering and comparing in one tick of Timer1.

#include "duplicates/Form7.h"
#include "duplicates/LinkKey.h"
#include "favorites/Folders.h"
#include "favorites/Shortcut.h"

#include <algorithm>

namespace tarnwick {

using Favorites::CurrentLink;

namespace {

constexpr const char* RootEntry = "- Favorites root -";

// Steps of the comparison between two pump passes: a few microseconds, so that a click is acted on between any two
// steps as far as a person can tell, and the pass costs the steps next to nothing.
constexpr std::size_t StepsAPass = 4096;

} // namespace

void Form7Window::Start() {
    szLinks.clear();
    szFolders.clear();
    szNames.clear();
    szFiles.clear();
    Command1.Caption = "&Cancel";
    Command2.Enabled = false;
    Label3.Visible = false;
    Label1.Visible = true;
    Label2.Visible = true;
    List1.emplace_back(RootEntry);
    ListFolders();
    Timer1.Enable();
}

void Form7Window::ListFolders() {
    const auto goOn = [this] {
        services().Windows.PumpEvents();
        return !bCanceled && List1.size() < List1Capacity;
    };
    Favorites::ListFirstLevel(goOn, [this](const std::string& name) { List1.push_back(name); });
}

void Form7Window::Cancel() {
    bCanceled = true;
    Label2.Caption = "Operation canceled by user";
    Label1.Caption.clear();
    Command1.Caption = "&Finish";
}

void Form7Window::Timer1_Tick() {
    Timer1.Disable();
    Walk();
    if (!bCanceled && Compare())
        EndRun();
}

void Form7Window::Walk() {
    for (const std::string& entry : List1) {
        if (bCanceled)
            return;
        services().Windows.PumpEvents();
        const bool isRoot = entry == RootEntry;
        ScanFolder(Favorites::FavoritesRoot() + (isRoot ? "" : entry + "\\"), isRoot ? "Favorites root" : entry);
    }
}

void Form7Window::ScanFolder(std::string szMainPath, std::string szShow) {
    currentFolder_ = szShow;
    Favorites::WalkShortcuts(
        szMainPath, [&](const std::string& name) { ScanFile(szMainPath, name); },
        [this] { return static_cast<bool>(bCanceled); });
}

void Form7Window::ScanFile(std::string szPath, std::string szFile) {
    CurrentLink.RawUrl = Favorites::ReadShortcutUrl(szPath + szFile);
    CurrentLink.FolderShown = currentFolder_;
    CurrentLink.ShortcutName = Favorites::DisplayName(szFile);
    if (!bCanceled)
        Label2.Caption = CurrentLink.ShortcutName;
    szLinks.push_back(CurrentLink.RawUrl);
    szFolders.push_back(CurrentLink.FolderShown);
    szNames.push_back(CurrentLink.ShortcutName);
    szFiles.push_back(CurrentLink.File);
}

bool Form7Window::Compare() {
    Label1.Caption = "Comparing links...";
    Label2.Caption = "This can take some minutes";
    std::vector<std::uint64_t> keys;
    keys.reserve(szLinks.size());
    for (const std::string& link : szLinks)
        keys.push_back(LinkKey(link));

    for (std::size_t i = 0; i < keys.size(); ++i) {
        const std::uint64_t key = keys[i];
        for (std::size_t from = i + 1; from <= keys.size(); from += StepsAPass) {
            services().Windows.PumpEvents();
            if (bCanceled)
                return false;
            const std::size_t to = std::min(from + StepsAPass, keys.size());
            for (std::size_t j = from; j < to; ++j)
                if (keys[j] == key && EqualLinks(szLinks[i], szLinks[j]))
                    AddPair(i, j);
        }
    }
    return true;
}

void Form7Window::AddPair(std::size_t earlier, std::size_t later) {
    Grid1.AddRow();
    const int row = Grid1.RowCount();
    Grid1.SetCellText(row, PairColumn::Link1, szNames[earlier]);
    Grid1.SetCellText(row, PairColumn::Folder1, szFolders[earlier]);
    Grid1.SetCellText(row, PairColumn::Link2, szNames[later]);
    Grid1.SetCellText(row, PairColumn::Folder2, szFolders[later]);
    Grid1.SetCellText(row, PairColumn::File1, szFiles[earlier]);
    Grid1.SetCellText(row, PairColumn::File2, szFiles[later]);
}

void Form7Window::EndRun() {
    if (Grid1.RowCount() > 0) {
        Frame1.Visible = false;
    } else {
        Label1.Visible = false;
        Label2.Visible = false;
        Label3.Caption = "\r\nThe scan process is done.\r\n\r\nNo duplicated Favorites found at this time.\r\n\r\n\r\n"
                         "Click Finish button to return to the main window.";
        Label3.Visible = true;
    }
    Command2.Enabled = true;
    Command1.Caption = "&Finish";
}

} // namespace tarnwick

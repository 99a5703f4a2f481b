// The run of the duplicate check: listing the folders in the click, then gathering and comparing in one tick of Timer1.

#include "duplicates/Form7.h"
#include "favorites/Folders.h"
#include "favorites/Shortcut.h"

#include <unordered_map>
#include <utility>

namespace tarnwick {

using Favorites::CurrentLink;

namespace {

constexpr const char* RootEntry = "- Favorites root -";

// Steps of the comparison between two pump passes: some ten microseconds, so that a click is acted on between any two
// steps as far as a person can tell, and the passes cost next to nothing.
constexpr std::size_t StepsAPass = 64;

constexpr std::size_t NoLink = static_cast<std::size_t>(-1);

} // namespace

void Form7Window::Start() {
    Command1.Caption = "&Cancel";
    Command2.Enabled = false;
    Label3.Visible = false;
    Label1.Visible = true;
    Label2.Visible = true;
    Label1.Announce();
    List1.emplace_back(RootEntry);
    ListFolders();
    Timer1.Enable();
}

void Form7Window::ListFolders() {
    const auto goOn = [this] { return services().Windows.PumpEvents() && !bCanceled && List1.size() < List1Capacity; };
    Favorites::ListFirstLevel(goOn, [this](const std::string& name) { List1.push_back(name); });
}

void Form7Window::Cancel() {
    bCanceled = true;
    Label2.Caption = "Operation canceled by user";
    Label1.Caption.clear();
    Label2.Announce();
    Command1.Caption = "&Finish";
}

void Form7Window::Timer1_Tick() {
    Timer1.Disable();
    Walk();
    if (!bCanceled && Compare())
        EndRun();
}

void Form7Window::Walk() {
    visits_ = Favorites::Visits(Favorites::FavoritesRoot());
    for (const std::string& entry : List1) {
        if (bCanceled || !services().Windows.PumpEvents())
            return;
        const bool isRoot = entry == RootEntry;
        ScanFolder(visits_.Root() + (isRoot ? "" : entry + "\\"), isRoot ? "Favorites root" : entry);
    }
}

void Form7Window::ScanFolder(std::string szMainPath, std::string szShow) {
    currentFolder_ = szShow;
    Favorites::WalkShortcuts(
        szMainPath, visits_, [&](const std::string& name) { ScanFile(szMainPath, name); },
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

// The rows are in the order of a double loop over all links, later ones within earlier ones.
bool Form7Window::Compare() {
    Label1.Caption = "Comparing links...";
    Label2.Caption = "This can take some minutes";
    Label1.Announce();
    const std::vector<std::size_t> nextEqual = ChainEqualLinks();
    std::vector<Grid::Record> records(nextEqual.size());
    const auto recordOf = [&](std::size_t link) {
        if (records[link] == 0)
            records[link] = Grid1.AddRecord({szNames[link], szFolders[link], szFiles[link]});
        return records[link];
    };
    for (std::size_t earlier = 0; earlier < nextEqual.size(); ++earlier)
        for (std::size_t later = nextEqual[earlier]; later != NoLink; later = nextEqual[later]) {
            if (!StepOn())
                return false;
            Grid1.AddRow(recordOf(earlier), recordOf(later));
        }
    return StepOn();
}

// For each link the next one of the same text, letter case aside.
std::vector<std::size_t> Form7Window::ChainEqualLinks() {
    std::vector<std::size_t> next(szLinks.size(), NoLink);
    std::unordered_map<std::string, std::size_t> lastOf;
    lastOf.reserve(szLinks.size());
    for (std::size_t link = 0; link < szLinks.size() && StepOn(); ++link) {
        const auto [last, isNew] = lastOf.try_emplace(services().Text.Upper(szLinks[link]), link);
        if (!isNew)
            next[std::exchange(last->second, link)] = link;
    }
    return next;
}

bool Form7Window::StepOn() {
    if (!bCanceled && steps_++ % StepsAPass == 0 && !services().Windows.PumpEvents())
        bCanceled = true;
    return !bCanceled;
}

void Form7Window::EndRun() {
    if (Grid1.RowCount() > 0) {
        Frame1.Visible = false;
        Label4.Announce();
    } else {
        Label1.Visible = false;
        Label2.Visible = false;
        Label3.Caption = "\r\nThe scan process is done.\r\n\r\nNo duplicated Favorites found at this time.\r\n\r\n\r\n"
                         "Click Finish button to return to the main window.";
        Label3.Visible = true;
        Label3.Announce();
    }
    Command2.Enabled = true;
    Command1.Caption = "&Finish";
}

} // namespace tarnwick

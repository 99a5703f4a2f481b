#pragma once

#include "favorites/Favorites.h"
#include "favorites/Visits.h"
#include "window/Window.h"

#include <cstdint>
#include <deque>
#include <string>
#include <vector>

namespace tarnwick {

// The duplicate check: gathers the shortcuts of the Favorites folder and its first level, sets every link against every
// later one, and lets the user work the pairs.
class Form7Window : public Window {
public:
    Form7Window();

    PictureBox Picture1;
    Label Label4;
    GridControl Grid1;
    Frame Frame1; // over Label4 and Grid1
    Label Label3, Label1, Label2;
    Line Line4, Line3;
    CommandButton Command2, Command1;
    Timer Timer1; // starts the long work outside the click

    // The folder work list. Its count has 16 bits: what comes after the last place is left out.
    static constexpr std::size_t List1Capacity = 32767;
    std::vector<std::string> List1;

    // One entry a shortcut, in step with each other. Deques: they grow without room for as many again.
    std::deque<std::string> szLinks;
    std::deque<std::string> szFolders;
    std::deque<std::string> szNames;
    std::deque<std::string> szFiles;

    Flag bCanceled;

    // Gathers the shortcuts of one folder, without its subfolders. `szMainPath` ends with "\".
    void ScanFolder(std::string szMainPath, std::string szShow);
    void ScanFile(std::string szPath, std::string szFile);

private:
    void Layout();
    void OnLoad() override;
    void OnUnload() override;

    void Command1_Click();
    void Command2_Click();
    void Timer1_Tick();
    void Grid1_HeaderClick(int column);
    void Grid1_MouseButton(int button);

    void Start();
    void ListFolders();
    void Cancel();
    void Walk();
    bool Compare(); // false when it was canceled
    std::vector<std::size_t> ChainEqualLinks();
    bool StepOn(); // now and then with a pump pass; false when it was canceled
    void EndRun();

    Favorites::Visits visits_; // of the run
    std::string currentFolder_;
    std::size_t steps_ = 0; // of the comparison
};

extern WindowObject<Form7Window> Form7;

// The grid's columns.
namespace PairColumn {
inline constexpr int Link1 = 1;
inline constexpr int Folder1 = 2;
inline constexpr int Link2 = 3;
inline constexpr int Folder2 = 4;
inline constexpr int File1 = 5; // hidden
inline constexpr int File2 = 6; // hidden
} // namespace PairColumn

} // namespace tarnwick

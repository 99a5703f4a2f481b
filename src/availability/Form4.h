#pragma once

#include "favorites/Favorites.h"
#include "favorites/Visits.h"
#include "window/Window.h"

#include <string>

namespace tarnwick {

// The availability check: one button leads from the choice of folders through the run to its end text.
class Form4Window : public Window {
public:
    Form4Window();

    static const char* const HelpText;

    PictureBox Picture1;
    Label Label13;
    TreeControl Tree1;
    Frame Frame1, Frame2;                          // the progress of a run; a text. Frame2 lies in front of all else
    Label Label1, Label2, Label3, Label4, Label9;  // legends
    Label Label5, Label6, Label7, Label8, Label10; // folder, name, host, status, elapsed time
    Label Label11;                                 // the text in Frame2
    Line Line4, Line3;
    CommandButton Command2, Command1;
    Timer Timer1; // the time-out of the link under check
    Timer Timer2; // the elapsed time of the run

    Flag StopRequested;

    // Checks the shortcuts of one folder. `szMainPath` ends with "\"; `szShow` is the folder's name as shown. False for
    // a folder that the run has been in, and after a stop.
    bool ScanFolder(std::string szMainPath, std::string szShow);
    // Checks one shortcut and returns when its link has ended or a stop was requested.
    void ScanFile(std::string szPath, std::string szFile);
    // Walks everything below a folder, depth first. `valMain` is true for the run's own call.
    void FillFolders(std::string szMainPath, Flag valMain);
    // Puts the link under check into the report, with `url` as its link.
    void AddFinding(const std::string& url, const char* problem) const;

private:
    void Layout();
    void OnLoad() override;
    void OnUnload() override;
    void BuildTree();

    void Command1_Click();
    void Command2_Click();
    void Timer1_Tick();
    void Timer2_Tick();
    void Tree1_Check(int index, std::int32_t value);

    bool HasSelection() const;
    void Start();
    void RunSelection();
    void EndRun();
    void Stop();
    void LeaveRun();
    void ShowEnd(const char* opening, const char* span);

    void ConnectLink();
    void WaitForLink();
    bool Pump(); // false: a stop was requested

    Favorites::Visits visits_; // of the run
    bool runOnStack_ = false;  // from the start of a run until its last frame has gone
};

extern WindowObject<Form4Window> Form4;

} // namespace tarnwick

// The run: what the one button does in each of its states. The state is the button's caption.
//
// The order matters where a pump lies between two steps. Start() shows all of the run's fields before the first pass,
// so that a stop in that pass finds them. The run tests its stop flag after each pass and before each step that could
// be seen, and only then looks at what the pass has brought. Stop() does at once all that the user sees of it, its
// socket and its end text, since the frames of the run fall through only after the handler has returned; EndRun(),
// which comes last, therefore leaves what a stop has written, and looks first whether its window is still the loaded
// one.

#include "availability/Form4.h"
#include "favorites/Folders.h"
#include "report/Form5.h"
#include "shell/Form2.h"
#include "shell/Form3.h"
#include "window/Dialogs.h"

namespace tarnwick {

void Form4Window::Command1_Click() {
    const std::string caption = Command1.Caption;
    if (caption == "&Go") {
        Frame2.Visible = false;
        Label13.Announce();
        Command1.Caption = "&Start";
    } else if (caption == "&Start") {
        Start();
    } else if (caption == "&Stop") {
        Stop();
    } else if (caption == "&Report" && !runOnStack_) {
        LeaveRun();
        Form5.Show();
    } else if (caption == "&Finish" && !runOnStack_) {
        LeaveRun();
        Form3.Show();
    }
}

bool Form4Window::HasSelection() const {
    for (int index = 2; index < Tree1.Nodes().Count(); ++index)
        if (Tree1.NodeCheck(index) == 1)
            return true;
    return false;
}

void Form4Window::Start() {
    if (!HasSelection()) {
        Refuse("No folder(s) selected to scan");
        return;
    }
    Command2.Enabled = false;
    Command1.Caption = "&Stop";
    Frame1.Visible = true;
    Label5.Caption = Label6.Caption = Label7.Caption = Label8.Caption = "Waiting...";
    Label10.Caption = "00:00";
    Timer2.Enable();
    runOnStack_ = true;
    RunSelection();
    runOnStack_ = false;
    EndRun();
}

void Form4Window::RunSelection() {
    visits_ = Favorites::Visits(Favorites::FavoritesRoot());
    for (int index = 2; index < Tree1.Nodes().Count(); ++index) {
        if (!Pump())
            return;
        if (Tree1.NodeCheck(index) != 1)
            continue;
        const std::string text = Tree1.NodeAt(index).Text;
        const bool isRoot = text == "- Favorites Root -";
        const std::string path = visits_.Root() + (isRoot ? "" : text + "\\");
        if (ScanFolder(path, isRoot ? "Favorites root" : text))
            FillFolders(path, true);
    }
}

void Form4Window::EndRun() {
    // Closed meanwhile: nothing of this window shows any more, and the report may belong to another run by now.
    if (!IsLoaded())
        return;
    if (!StopRequested)
        Favorites::RunCompleted = true;
    Timer2.Disable();
    if (Favorites::RunCompleted)
        ShowEnd("The scan process is done.", " found at this time.");
    Command2.Enabled = true;
    Frame2.Visible = true;
}

// The socket is closed at once, so that the link under check gets no row after the text that counts the rows.
void Form4Window::Stop() {
    Favorites::RunCompleted = false;
    StopRequested = true;
    Form2->SOCKET->SOCKET_DISCONNECT(Form2->Handle());
    Timer2.Disable();
    ShowEnd("The scan process was interrupted by the user.", " found before the interruption.");
    Frame2.Visible = true;
    Command2.Enabled = true;
    Label10.Caption = "00:00";
}

void Form4Window::ShowEnd(const char* opening, const char* span) {
    Label11.Announce();
    const int rows = Form5->Grid1.RowCount();
    const bool findings = rows > 0;
    Command1.Caption = findings ? "&Report" : "&Finish";
    Label11.Caption = std::string(opening) + "\r\n\r\n" +
                      (findings ? std::to_string(rows) + " bad Favorite(s)" : "No bad Favorites") + span +
                      "\r\n\r\n\r\n" +
                      (findings ? "Click Report button to see and correct these problems."
                                : "Click Finish button to return to the main window.");
}

void Form4Window::LeaveRun() {
    StopRequested = false;
    Favorites::RunCompleted = false;
    Form4.Hide();
    Command1.Caption = "&Go";
    Command2.Enabled = true;
    Frame1.Visible = false;
    Frame2.Visible = false;
}

} // namespace tarnwick

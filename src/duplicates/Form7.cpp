#include "duplicates/Form7.h"

#include "report/Removal.h"
#include "shell/Form2.h"
#include "shell/Form3.h"
#include "shell/Form9.h"
#include "shell/Look.h"
#include "window/Dialogs.h"

namespace tarnwick {

WindowObject<Form7Window> Form7;

Form7Window::Form7Window() {
    Layout();
    Command1.Click = [this] { Command1_Click(); };
    Command2.Click = [this] { Command2_Click(); };
    Timer1.Tick = [this] { Timer1_Tick(); };
    Grid1.HeaderClick = [this](int column) { Grid1_HeaderClick(column); };
    Grid1.MouseButton = [this](int button, int, int, int) { Grid1_MouseButton(button); };
}

void Form7Window::OnLoad() {
    TakeSharedIcon(*this);
    TakeSharedPicture(Picture1);
    Label3.Caption = "The Duplicated Favorites Scan will find for "
                     "different Favorites, but that points to the same "
                     "internet link."
                     "\r\n\r\n"
                     "This is an offline process - the computer "
                     "don't need to be connected to the internet."
                     "\r\n\r\n\r\n"
                     "Click Start button to begin the process.";
    constexpr std::size_t name = 0, folder = 1, file = 2; // a favorite's record
    Grid1.AddColumn("Link 1", 105, true, {0, name});
    Grid1.AddColumn("Folder 1", 93, true, {0, folder});
    Grid1.AddColumn("Link 2", 105, true, {1, name});
    Grid1.AddColumn("Folder 2", 93, true, {1, folder});
    Grid1.AddColumn("File1", 20, false, {0, file});
    Grid1.AddColumn("File2", 20, false, {1, file});
}

// A close during a run is a cancel: its frames fall through and touch nothing of a window that has gone.
void Form7Window::OnUnload() {
    bCanceled = true;
    Form3.Show();
}

void Form7Window::Command1_Click() {
    const std::string caption = Command1.Caption;
    if (caption == "&Start")
        Start();
    else if (caption == "&Cancel")
        Cancel();
    else if (caption == "&Finish")
        Unload();
}

void Form7Window::Command2_Click() { Form9.ShowModal(); }

void Form7Window::Grid1_HeaderClick(int column) { Grid1.Sort(column); }

void Form7Window::Grid1_MouseButton(int button) {
    constexpr int right = 2;
    if (button == right)
        PopUp(Form2->mnuDup, *this);
}

void Form2Window::mnuDupK1_Click() {
    RemoveSelectedFavorite(Form7->Grid1, {{"Name: ", PairColumn::Link1}, {"Folder: ", PairColumn::Folder1}},
                           PairColumn::File1);
}

void Form2Window::mnuDupK2_Click() {
    RemoveSelectedFavorite(Form7->Grid1, {{"Name: ", PairColumn::Link2}, {"Folder: ", PairColumn::Folder2}},
                           PairColumn::File2);
}

} // namespace tarnwick

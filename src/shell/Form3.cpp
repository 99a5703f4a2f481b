#include "shell/Form3.h"

#include "availability/Form4.h"
#include "duplicates/Form7.h"
#include "favorites/Favorites.h"
#include "shell/Edges.h"
#include "shell/Form1.h"
#include "shell/Form2.h"
#include "shell/Form9.h"
#include "shell/Look.h"
#include "shell/Preferences.h"

namespace tarnwick {

WindowObject<Form3Window> Form3;

Form3Window::Form3Window() {
    Layout();
    Command1.Click = [this] { Command1_Click(); };
    Command2.Click = [this] { Command2_Click(); };
    Command3.Click = [this] { Command3_Click(); };
}

void Form3Window::OnLoad() {
    Edges::DrawFormEdge(*this, Edges::EdgeRaised);
    TakeSharedPicture(Picture1);
    Form2.Load();
    LoadPreferences();
    Favorites::EndOnMainClose = true;
}

void Form3Window::OnUnload() {
    if (Favorites::EndOnMainClose)
        services().Windows.End();
}

void Form3Window::Command1_Click() {
    Favorites::EndOnMainClose = false;
    // The check's window is loaded already and has just been filled: it shows before this one goes, so that the screen
    // is never empty. The duplicates' window is loaded by being shown, and no step of that load may find this one still
    // there with its unload to come.
    if (Option1.Value) {
        Form4->Label11.Caption = Form4Window::HelpText;
        Form4->Frame2.Visible = true;
        Form4.Show();
        Unload();
    } else {
        Unload();
        Form7.Show();
    }
}

void Form3Window::Command2_Click() { Form1.ShowModal(); }

void Form3Window::Command3_Click() { Form9.ShowModal(); }

} // namespace tarnwick

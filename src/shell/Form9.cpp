#include "shell/Form9.h"

#include "Version.h"
#include "availability/Form4.h"
#include "favorites/Favorites.h"
#include "shell/Form3.h"

#include <cstdio>

namespace tarnwick {

WindowObject<Form9Window> Form9;

Form9Window::Form9Window() {
    Layout();
    Timer1.Tick = [this] { Timer1_Tick(); };
    Label10.Click = [this] { Label10_Click(); };
}

void Form9Window::OnLoad() {
    if (!Favorites::SplashDone) {
        Timer1.Enable();
        TopMost = true;
    }
    char revision[8];
    std::snprintf(revision, sizeof revision, "%04d", Revision);
    Label8.Caption = std::string("Current release: ") + Release + "." + revision;
}

void Form9Window::OnUnload() { Favorites::SplashDone = true; }

// Loading Form4 brings up the rest of the program; the splash stays for as long as that takes.
void Form9Window::Timer1_Tick() {
    Timer1.Disable();
    Form4.Load();
    Form9.Unload();
    Form3.Show();
}

void Form9Window::Label10_Click() {
    if (Favorites::SplashDone)
        Unload();
}

} // namespace tarnwick

#pragma once

#include "window/Window.h"

namespace tarnwick {

// The splash at the start of the program, the About window ever after.
class Form9Window : public Window {
public:
    Form9Window();

    Shape Shape1;
    Label Label1, Label2, Label3, Label4, Label5, Label6, Label7, Label8;
    Label Label10; // transparent, over all other labels: takes the click that closes the window
    PictureBox Picture1;
    Timer Timer1;

private:
    void Layout();
    void OnLoad() override;
    void OnUnload() override;

    void Timer1_Tick();
    void Label10_Click();
};

extern WindowObject<Form9Window> Form9;

} // namespace tarnwick

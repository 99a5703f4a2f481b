#pragma once

#include "window/Window.h"

namespace tarnwick {

// The main window: the choice of scan. Loaded anew by every return to it.
class Form3Window : public Window {
public:
    Form3Window();

    PictureBox Picture1;
    Label Label2[2]; // 0: help of the first choice, 1: banner
    Label Label3;
    Frame Frame1[2];
    OptionButton Option1, Option2;
    CommandButton Command1, Command2, Command3;

private:
    void Layout();
    void OnLoad() override;
    void OnUnload() override;

    void Command1_Click();
    void Command2_Click();
    void Command3_Click();
};

extern WindowObject<Form3Window> Form3;

} // namespace tarnwick

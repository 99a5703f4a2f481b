#pragma once

#include "window/Window.h"

namespace tarnwick {

// Captions for the details of one favorite. No command opens it: the menu's "Get info" is always greyed.
class Form6Window : public Window {
public:
    Form6Window();

    PictureBox Picture1;
    Frame Frame1;
    Label Label1[5];
    Line Line4, Line3;
    CommandButton Command1;
};

extern WindowObject<Form6Window> Form6;

} // namespace tarnwick

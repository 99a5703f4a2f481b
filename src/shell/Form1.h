#pragma once

#include "favorites/Favorites.h"
#include "window/Window.h"

namespace tarnwick {

// The Options window: works on a copy of the preferences in its controls, and stores them when the user confirms and
// every test has passed.
class Form1Window : public Window {
public:
    Form1Window();

    Frame Frame1, Frame2, Frame3;
    Label Label1, Label2, Label3;
    Label Label4; // link to the maker's site
    TextBox Text1, Text2, Text3;
    CheckBox Check1, Check2, Check3, Check4, Check5, Check6, Check7, Check8;
    Line Line1, Line2;
    CommandButton Command2, Command1;

    Flag Loading;

private:
    void Layout();
    void OnLoad() override;

    void Check2_Click();
    void Warn(const CheckBox& box, const char* about, const char* lastCause, const char* extraCause);
    void Command1_Click();
    void Command2_Click();
    void Label4_Click();

    bool AnyCategory() const;
    bool Save() const;
    void RefuseText(TextBox& field, const char* message);
};

extern WindowObject<Form1Window> Form1;

} // namespace tarnwick

#pragma once

#include "report/ReportRow.h"
#include "window/Window.h"

namespace tarnwick {

// The problems report. Its grid is the only store of findings; a scan fills it while the window is hidden.
class Form5Window : public Window {
public:
    Form5Window();

    PictureBox Picture1;
    Label Label2[2]; // 1: the banner; there is no 0
    GridControl Grid1;
    Line Line4, Line3;
    CommandButton Command2, Command1;

private:
    void Layout();
    void OnLoad() override;
    void OnUnload() override;

    void Grid1_HeaderClick(int column);
    void Grid1_MouseButton(int button);
    void Command1_Click();
    void Command2_Click();
};

extern WindowObject<Form5Window> Form5;

// The grid's columns.
namespace ReportColumn {
inline constexpr int Name = 1;
inline constexpr int Folder = 2;
inline constexpr int Url = 3;
inline constexpr int Problem = 4;
inline constexpr int File = 5; // hidden
} // namespace ReportColumn

} // namespace tarnwick

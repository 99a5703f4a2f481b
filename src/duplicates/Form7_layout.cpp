#include "duplicates/Form7.h"
#include "shell/Look.h"
#include "window/Layout.h"

namespace tarnwick {

void Form7Window::Layout() {
    ApplyLayout(
        *this,
        {.Name = "Form7",
         .Title = "Tarnwick - Duplicate Check",
         .Border = FrameStyle::FixedSingle,
         .ClientWidth = 8055,
         .ClientHeight = 3660,
         .InTaskBar = true},
        {
            SidePicture(Picture1, 120),
            Banner(Label4, "Label4", {1920, 120, 6015, 225}, "Right-click a selected row to open the options menu"),
            {.Field = Grid1,
             .Name = "Grid1",
             .Container = nullptr,
             .Place = {1920, 420, 6015, 2550},
             .TabIndex = 0,
             .AccessibleName = "Duplicated Favorites"},
            {.Field = Frame1,
             .Name = "Frame1",
             .Container = nullptr,
             .Place = {1920, 30, 6015, 2955},
             .Caption = " Duplicated Favorites Check "},
            {.Field = Label3,
             .Name = "Label3",
             .Container = &Frame1,
             .Place = {240, 720, 5535, 1695},
             .WordWrap = true},
            {.Field = Label1,
             .Name = "Label1",
             .Container = &Frame1,
             .Place = {840, 1080, 4215, 255},
             .Caption = "Scanning Favorites, please wait...",
             .Visible = false,
             .Centered = true},
            {.Field = Label2,
             .Name = "Label2",
             .Container = &Frame1,
             .Place = {240, 1440, 5535, 240},
             .Visible = false,
             .Centered = true},
            RuleShadow(Line4, "Line4", 3090, 7920),
            RuleHighlight(Line3, "Line3", 3105, 7920),
            BottomButton(Command2, "Command2", 6120, 3210, "&About", 2),
            BottomButton(Command1, "Command1", 7080, 3210, "&Start", 1, true),
        });
    Timers = {&Timer1};
    constexpr int shownFirst = 300; // ms in which the window shows that it begins, before the work takes all the time
    Timer1.SetInterval(shownFirst);
}

} // namespace tarnwick

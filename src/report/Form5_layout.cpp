#include "report/Form5.h"
#include "shell/Look.h"
#include "window/Layout.h"

namespace tarnwick {

void Form5Window::Layout() {
    ApplyLayout(*this,
                {.Name = "Form5",
                 .Title = "Tarnwick - Problems Report",
                 .Border = FrameStyle::FixedSingle,
                 .ClientWidth = 10920,
                 .ClientHeight = 3675,
                 .InTaskBar = true},
                {
                    SidePicture(Picture1, 120),
                    Banner(Label2[1], "Label2_1", {1920, 120, 8895, 225},
                           "Right-click a selected row to open the correspondent options menu"),
                    {.Field = Grid1,
                     .Name = "Grid1",
                     .Container = nullptr,
                     .Place = {1920, 420, 8895, 2565},
                     .TabIndex = 0,
                     .AccessibleName = "Bad Favorites"},
                    RuleShadow(Line4, "Line4", 3135, 10800),
                    RuleHighlight(Line3, "Line3", 3150, 10800),
                    BottomButton(Command2, "Command2", 9000, 3240, "&About", 2),
                    BottomButton(Command1, "Command1", 9960, 3240, "&Done", 1, true),
                });
}

} // namespace tarnwick

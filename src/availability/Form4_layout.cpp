#include "availability/Form4.h"
#include "shell/Look.h"
#include "window/Layout.h"

namespace tarnwick {

void Form4Window::Layout() {

    constexpr Rect workArea = {1920, 30, 4710, 2955};
    const auto legend = [this](Label& field, std::string_view name, int top, std::string_view caption) {
        return ControlRow{
            .Field = field, .Name = name, .Container = &Frame1, .Place = {240, top, 1200, 210}, .Caption = caption};
    };
    const auto value = [this](Label& field, std::string_view name, int top, std::string_view description) {
        return ControlRow{.Field = field,
                          .Name = name,
                          .Container = &Frame1,
                          .Place = {1560, top, 2910, 210},
                          .AccessibleDescription = description};
    };
    // The button comes first, so that Enter and Space lead through a whole run.
    ApplyLayout(*this,
                {.Name = "Form4",
                 .Title = "Tarnwick",
                 .Border = FrameStyle::FixedSingle,
                 .ClientWidth = 6750,
                 .ClientHeight = 3690,
                 .InTaskBar = true},
                {
                    SidePicture(Picture1, 120),
                    Banner(Label13, "Label13", {1920, 120, 4710, 225},
                           "Select the Favorites folder(s) you want to scan", ColorRole::ButtonHighlight),
                    {.Field = Tree1,
                     .Name = "Tree1",
                     .Container = nullptr,
                     .Place = {1920, 420, 4710, 2565},
                     .TabIndex = 1,
                     .ForeColor = Color::Of(ColorRole::ButtonText),
                     .AccessibleName = "Favorites folders"},
                    {.Field = Frame1,
                     .Name = "Frame1",
                     .Container = nullptr,
                     .Place = workArea,
                     .Caption = " Checking Favorites... ",
                     .Visible = false},
                    legend(Label1, "Label1", 480, "Folder"),
                    value(Label5, "Label5", 480, "Folder"),
                    legend(Label2, "Label2", 900, "Name"),
                    value(Label6, "Label6", 900, "Name"),
                    legend(Label3, "Label3", 1320, "Host"),
                    value(Label7, "Label7", 1320, "Host"),
                    legend(Label4, "Label4", 1740, "Status"),
                    value(Label8, "Label8", 1740, "Status"),
                    legend(Label9, "Label9", 2400, "Elapsed time"),
                    value(Label10, "Label10", 2400, "Elapsed time"),
                    {.Field = Frame2,
                     .Name = "Frame2",
                     .Container = nullptr,
                     .Place = workArea,
                     .Caption = "  Favorites Availability Check  "},
                    {.Field = Label11,
                     .Name = "Label11",
                     .Container = &Frame2,
                     .Place = {240, 600, 4230, 2160},
                     .WordWrap = true},
                    RuleShadow(Line4, "Line4", 3120, 6630),
                    RuleHighlight(Line3, "Line3", 3135, 6630),
                    BottomButton(Command2, "Command2", 4815, 3240, "&About", 2),
                    BottomButton(Command1, "Command1", 5775, 3240, "&Go", 0, true),
                });
    Timers = {&Timer1, &Timer2};
    constexpr int storedTimeout = 12000; // ms: stays in force where the preferences hold none that a timer takes
    constexpr int second = 1000;         // ms
    Timer1.SetInterval(storedTimeout);
    Timer2.SetInterval(second);
}

} // namespace tarnwick

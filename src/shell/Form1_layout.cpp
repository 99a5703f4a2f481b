#include "shell/Form1.h"
#include "shell/Look.h"
#include "window/Layout.h"

namespace tarnwick {

void Form1Window::Layout() {

    const auto panel = [](Frame& field, std::string_view name, int top, int height, std::string_view caption) {
        return ControlRow{
            .Field = field, .Name = name, .Container = nullptr, .Place = {120, top, 3510, height}, .Caption = caption};
    };
    const auto field = [](TextBox& box, std::string_view name, const Frame& container, Rect place, int tabIndex,
                          std::string_view label) {
        return ControlRow{.Field = box,
                          .Name = name,
                          .Container = &container,
                          .Place = place,
                          .TabIndex = tabIndex,
                          .Centered = true,
                          .BackColor = Color::Of(ColorRole::WindowBackground),
                          .AccessibleName = label};
    };
    const auto box = [](CheckBox& check, std::string_view name, const Frame& container, Rect place,
                        std::string_view caption, int tabIndex) {
        return ControlRow{.Field = check,
                          .Name = name,
                          .Container = &container,
                          .Place = place,
                          .Caption = caption,
                          .TabIndex = tabIndex};
    };
    const auto category = [&](CheckBox& check, std::string_view name, int row, std::string_view caption, int tabIndex) {
        return box(check, name, Frame3, {150, 240 + row * 255, 3240, 225}, caption, tabIndex);
    };
    ControlRow timeout = field(Text1, "Text1", Frame1, {1110, 255, 390, 285}, 0, "Timeout in seconds");
    timeout.Caption = "00";
    timeout.MaxLength = 2;

    ApplyLayout(
        *this,
        {.Name = "Form1",
         .Title = "Tarnwick - Options",
         .Border = FrameStyle::FixedTool,
         .ClientWidth = 3750,
         .ClientHeight = 4650,
         .InTaskBar = false},
        {
            panel(Frame1, "Frame1", 30, 1020, "Connection"),
            {.Field = Label1,
             .Name = "Label1",
             .Container = &Frame1,
             .Place = {150, 300, 3210, 210},
             .Caption = "Timeout in         seconds"},
            timeout,
            box(Check1, "Check1", Frame1, {150, 645, 3210, 225}, "Use Keep-alive", 1),
            panel(Frame2, "Frame2", 1110, 1065, "                    "),
            box(Check2, "Check2", Frame2, {120, 0, 900, 225}, "Proxy", 2),
            {.Field = Label2,
             .Name = "Label2",
             .Container = &Frame2,
             .Place = {150, 345, 810, 210},
             .Caption = "Address"},
            field(Text2, "Text2", Frame2, {990, 300, 2370, 285}, 3, "Proxy address"),
            {.Field = Label3, .Name = "Label3", .Container = &Frame2, .Place = {150, 690, 810, 210}, .Caption = "Port"},
            field(Text3, "Text3", Frame2, {990, 645, 750, 285}, 4, "Proxy port"),
            panel(Frame3, "Frame3", 2235, 1800, "Checking"),
            category(Check3, "Check3", 0, "Catch Unauth links (401)", 5),
            category(Check4, "Check4", 1, "Catch Forbidden links (403)", 6),
            category(Check5, "Check5", 2, "Catch Not found links (404)", 7),
            category(Check6, "Check6", 3, "Catch Unabled to connect links", 10),
            category(Check7, "Check7", 4, "Catch Connection errors", 11),
            category(Check8, "Check8", 5, "Catch Timed out links", 12),
            RuleShadow(Line1, "Line1", 4110, 3630),
            RuleHighlight(Line2, "Line2", 4125, 3630),
            {.Field = Label4,
             .Name = "Label4",
             .Container = nullptr,
             .Place = {120, 4290, 1680, 195},
             .Caption = "Belvane Software",
             .Bold = true,
             .Points = 6.75,
             .ForeColor = Color::Rgb(192, 64, 0),
             .BackColor = Color::Of(ColorRole::Transparent),
             .ToolTip = "Visit us!"},
            BottomButton(Command2, "Command2", 1845, 4200, "&Cancel", 9),
            BottomButton(Command1, "Command1", 2775, 4200, "&OK", 8, true),
        });
}

} // namespace tarnwick

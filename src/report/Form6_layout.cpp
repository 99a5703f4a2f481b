#include "report/Form6.h"
#include "shell/Look.h"
#include "window/Layout.h"

namespace tarnwick {

WindowObject<Form6Window> Form6;

Form6Window::Form6Window() {
    const auto caption = [this](int index, std::string_view name, int top, int width, std::string_view text) {
        return ControlRow{.Field = Label1[index],
                          .Name = name,
                          .Container = &Frame1,
                          .Place = {120, top, width, 195},
                          .Caption = text};
    };
    ApplyLayout(*this,
                {.Name = "Form6",
                 .Title = "Tarnwick - Link Information",
                 .Border = FrameStyle::FixedTool,
                 .ClientWidth = 6735,
                 .ClientHeight = 3675,
                 .InTaskBar = false},
                {
                    SidePicture(Picture1, 120),
                    {.Field = Frame1,
                     .Name = "Frame1",
                     .Container = nullptr,
                     .Place = {1920, 30, 4695, 2955},
                     .Caption = "Favorite Information"},
                    caption(0, "Label1_0", 360, 570, "Name:"),
                    caption(1, "Label1_1", 720, 600, "Folder:"),
                    caption(2, "Label1_2", 1080, 405, "URL:"),
                    caption(3, "Label1_3", 1440, 810, "Creation:"),
                    caption(4, "Label1_4", 1800, 840, "Last Visit:"),
                    RuleShadow(Line4, "Line4", 3120, 6600),
                    RuleHighlight(Line3, "Line3", 3135, 6600),
                    BottomButton(Command1, "Command1", 5760, 3240, "&OK", 0, true),
                });
}

} // namespace tarnwick

#include "shell/Form3.h"
#include "shell/Look.h"
#include "window/Layout.h"

namespace tarnwick {

void Form3Window::Layout() {

    const auto panel = [](Frame& field, std::string_view name, int top, std::string_view caption) {
        return ControlRow{
            .Field = field, .Name = name, .Container = nullptr, .Place = {1950, top, 4530, 1005}, .Caption = caption};
    };
    // What a check does is said in its panel, and to a screen reader with its choice.
    constexpr std::string_view availability =
        "Find for broken links in your Favorites, connecting the respective internet sites (online)";
    constexpr std::string_view duplicates =
        "Find for duplicated Favorites - links that points to the same web sites (offline)";
    const auto choice = [](OptionButton& field, std::string_view name, int top, int width, std::string_view caption,
                           int tabIndex, std::string_view description) {
        return ControlRow{.Field = field,
                          .Name = name,
                          .Container = nullptr,
                          .Place = {2100, top, width, 225},
                          .Caption = caption,
                          .TabIndex = tabIndex,
                          .Bold = true,
                          .AccessibleDescription = description};
    };
    const auto help = [](Label& field, std::string_view name, const Control* container, std::string_view caption) {
        return ControlRow{.Field = field,
                          .Name = name,
                          .Container = container,
                          .Place = {120, 285, 4290, 645},
                          .Caption = caption,
                          .Centered = true,
                          .WordWrap = true};
    };
    ApplyLayout(*this,
                {.Name = "Form3",
                 .Title = "- Tarnwick v3 -",
                 .Border = FrameStyle::FixedTool,
                 .ClientWidth = 6630,
                 .ClientHeight = 3150,
                 .InTaskBar = true},
                {
                    SidePicture(Picture1, 150),
                    Banner(Label2[1], "Label2_1", {1950, 150, 4530, 225}, "What type of scan you want to do today?"),
                    panel(Frame1[0], "Frame1_0", 435, " "),
                    help(Label2[0], "Label2_0", &Frame1[0], availability),
                    choice(Option1, "Option1", 435, 2130, "Availability check", 0, availability),
                    panel(Frame1[1], "Frame1_1", 1500, "   "),
                    help(Label3, "Label3", &Frame1[1], duplicates),
                    choice(Option2, "Option2", 1500, 1890, "Duplicate check", 1, duplicates),
                    BottomButton(Command3, "Command3", 3705, 2640, "&About", 4),
                    BottomButton(Command2, "Command2", 4665, 2640, "&Options", 3),
                    BottomButton(Command1, "Command1", 5625, 2640, "&Go!", 2, true),
                });
    Option1.Value = true;
}

} // namespace tarnwick

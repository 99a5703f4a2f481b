#include "shell/Form9.h"
#include "shell/Look.h"
#include "window/Layout.h"

namespace tarnwick {

void Form9Window::Layout() {
    constexpr Color orange = Color::Rgb(255, 128, 0);
    constexpr Color lightOrange = Color::Rgb(255, 192, 128);
    constexpr Color white = Color::Rgb(255, 255, 255);

    const auto text = [](Label& field, std::string_view name, Rect place, std::string_view caption, double points,
                         bool bold, Color color) {
        return ControlRow{.Field = field,
                          .Name = name,
                          .Container = nullptr,
                          .Place = place,
                          .Caption = caption,
                          .Bold = bold,
                          .Points = points,
                          .ForeColor = color};
    };
    ControlRow release = text(Label8, "Label8", {1950, 2820, 3195, 210}, "", 6.75, false, white);
    release.Centered = true;

    ApplyLayout(
        *this,
        {.Name = "Form9",
         .Title = "About Tarnwick",
         .Border = FrameStyle::None,
         .ClientWidth = 5295,
         .ClientHeight = 3195,
         .InTaskBar = false,
         .BackColor = Color::Rgb(0, 0, 0)},
        {
            {.Field = Shape1, .Name = "Shape1", .Container = nullptr, .Place = {0, 0, 5295, 3195}, .ForeColor = white},
            text(Label1, "Label1", {1950, 180, 3195, 315}, "Belvane Software", 12, true, orange),
            text(Label2, "Label2", {1950, 525, 3195, 270}, "presents", 9.75, true, orange),
            text(Label3, "Label3", {1950, 900, 3195, 420}, "Tarnwick", 15.75, true, lightOrange),
            text(Label4, "Label4", {1950, 1455, 735, 330}, "v 200", 12, true, orange),
            text(Label5, "Label5", {2685, 1350, 360, 465}, "3", 18, true, lightOrange),
            text(Label6, "Label6", {1950, 2070, 3195, 240},
                 "\xC2\xA9 2003\xE2\x80\x93"
                 "2026 Belvane Software",
                 8.25, false, white),
            text(Label7, "Label7", {1950, 2325, 3195, 240}, "Free software, MIT license", 8.25, false, white),
            release,
            {.Field = Label10,
             .Name = "Label10",
             .Container = nullptr,
             .Place = {60, 60, 5175, 3075},
             .BackColor = Color::Of(ColorRole::Transparent),
             .AccessibleName = "Close"}, // closes the window by a click, of a screen reader too
            SidePicture(Picture1, 150),
        });
    // A copy of its own: the splash shows before Form2, which owns the shared one, is there.
    Picture1.Picture = "side.jpg";
    Timers = {&Timer1};
    constexpr int splashTime = 2000; // ms, long enough to be read
    Timer1.SetInterval(splashTime);
}

} // namespace tarnwick

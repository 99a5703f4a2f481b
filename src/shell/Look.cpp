#include "shell/Look.h"

#include "shell/Form2.h"

namespace tarnwick {

namespace {

constexpr int RuleLeft = 120;

ControlRow Rule(Line& field, std::string_view name, int top, int right, ColorRole color) {
    return {.Field = field,
            .Name = name,
            .Container = nullptr,
            .Place = {RuleLeft, top, right - RuleLeft, 0},
            .ForeColor = Color::Of(color)};
}

} // namespace

ControlRow SidePicture(PictureBox& field, int leftAndTop) {
    return {.Field = field,
            .Name = "Picture1",
            .Container = nullptr,
            .Place = {leftAndTop, leftAndTop, 1650, 2865},
            .AccessibleName = "Tarnwick"};
}

ControlRow Banner(Label& field, std::string_view name, Rect place, std::string_view caption, ColorRole text) {
    return {.Field = field,
            .Name = name,
            .Container = nullptr,
            .Place = place,
            .Caption = caption,
            .Bold = true,
            .Centered = true,
            .ForeColor = Color::Of(text),
            .BackColor = Color::Of(ColorRole::ButtonShadow)};
}

ControlRow BottomButton(CommandButton& field, std::string_view name, int left, int top, std::string_view caption,
                        int tabIndex, bool isDefault) {
    return {.Field = field,
            .Name = name,
            .Container = nullptr,
            .Place = {left, top, 855, 375},
            .Caption = caption,
            .TabIndex = tabIndex,
            .Default = isDefault};
}

ControlRow RuleShadow(Line& field, std::string_view name, int top, int right) {
    return Rule(field, name, top, right, ColorRole::ButtonShadow);
}

ControlRow RuleHighlight(Line& field, std::string_view name, int top, int right) {
    return Rule(field, name, top, right, ColorRole::ButtonHighlight);
}

void TakeSharedPicture(PictureBox& picture) { picture.Picture = Form2->Picture1.Picture; }

void TakeSharedIcon(Window& window) { window.Icon = Form2->Icon; }

} // namespace tarnwick

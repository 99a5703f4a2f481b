#pragma once

// What the windows share in their looks.

#include "window/Layout.h"

#include <string_view>

namespace tarnwick {

// The stored row of the side picture; the picture itself is taken over when the window loads.
ControlRow SidePicture(PictureBox& field, int leftAndTop);

// A band across the top of the work area with centred bold text.
ControlRow Banner(Label& field, std::string_view name, Rect place, std::string_view caption,
                  ColorRole text = ColorRole::HighlightText);

// A push button of the bottom row.
ControlRow BottomButton(CommandButton& field, std::string_view name, int left, int top, std::string_view caption,
                        int tabIndex, bool isDefault = false);

// The two lines over the button row, one above the other: the upper in the shadow, the lower in the highlight colour.
ControlRow RuleShadow(Line& field, std::string_view name, int top, int right);
ControlRow RuleHighlight(Line& field, std::string_view name, int top, int right);

// Takes the side picture and the icon from Form2, which owns them.
void TakeSharedPicture(PictureBox& picture);
void TakeSharedIcon(Window& window);

} // namespace tarnwick

#pragma once

// Boxes and menus in front of all windows, until the user has answered them.

#include "services/Services.h"

#include <string>

namespace tarnwick {

// A message box over all windows, none of which takes input meanwhile. `text` is plain, its lines end with CR LF; one
// that is too long for the smallest screen is cut. No when the program ends under the question.
MessageAnswer ShowMessage(const std::string& text, const std::string& title, MessageIcon icon, MessageButtons buttons);

// The critical box with one OK button that says why something was refused.
void Refuse(const std::string& text, const std::string& title = "Tarnwick");

// A menu is no wider than this for the captions of its entries: about half of the smallest screen. A front end cuts
// longer ones with dots.
inline constexpr int WidestMenuCaption = 480; // pixels at 96 DPI

// Opens the menu over `window` and raises the Click of the chosen entry.
void PopUp(Menu& menu, Window& window);

} // namespace tarnwick

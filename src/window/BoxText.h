#pragma once

#include "services/Services.h"

#include <string>

namespace tarnwick {

// The text, broken and cut so that its box fits a screen of 1024 x 600 pixels at 96 DPI on every desktop. A short one
// stays as it is.
BoxText FittedToBox(const std::string& text);

} // namespace tarnwick

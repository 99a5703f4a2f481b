#pragma once

#include "window/Keyboard.h"

#include <optional>

class QKeyEvent;

namespace tarnwick {

// The key as the model counts them; nothing for one that it has no rule for.
std::optional<KeyPress> KeyPressOf(const QKeyEvent& event);

} // namespace tarnwick

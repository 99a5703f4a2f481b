#pragma once

#include "platform/win32/Win32Handles.h"
#include "window/Keyboard.h"

#include <optional>

namespace tarnwick {

// The key of the model that a message means; nothing when it is the control's own affair.
std::optional<KeyPress> KeyPressOf(const tagMSG& message);

} // namespace tarnwick

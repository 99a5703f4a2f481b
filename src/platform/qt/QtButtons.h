#pragma once

#include "platform/qt/QtControl.h"

namespace tarnwick {

// A command button, a check box or an option button.
std::unique_ptr<QtControl> MakeQtButton(Control& control, QWidget& parent, QtWindow& window);

} // namespace tarnwick

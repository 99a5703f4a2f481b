#pragma once

#include "platform/win32/Win32Handles.h"

namespace tarnwick {

// The state images of a tree: none, an empty box, a ticked one. The system's own don't follow a monitor's scale. The
// caller destroys the list.
_IMAGELIST* MakeCheckImages(int dpi);

} // namespace tarnwick

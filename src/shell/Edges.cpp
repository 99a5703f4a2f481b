#include "shell/Edges.h"

#include "window/Window.h"

namespace tarnwick::Edges {

void DrawFormEdge(Window& window, int edge) { window.Edge = edge; }

} // namespace tarnwick::Edges

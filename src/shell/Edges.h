#pragma once

namespace tarnwick {
class Window;
}

namespace tarnwick::Edges {

inline constexpr int EdgeRaised = 5; // EDGE_RAISED of DrawEdge: BDR_RAISEDOUTER 1 plus BDR_RAISEDINNER 4

// Paints a 3D edge along all four sides of the window's client area, on its own background and below all controls. It
// stays through repaints.
void DrawFormEdge(Window& window, int edge);

} // namespace tarnwick::Edges

#pragma once

// How the model's lengths, fonts, colours and pictures look on this system.

#include "platform/win32/Win32Handles.h"
#include "window/Controls.h"

#include <cstdint>
#include <string>

namespace tarnwick {

// Dots per inch of the display that a window is on.
int DpiOf(HWND__* window);
// Twips and 96ths of an inch to pixels.
int PixelsOf(int twips, int dpi);
int ScaledPixels(int pixelsAt96, int dpi);

// Kept for the whole process; the fonts of a program are few.
HFONT__* FontOf(const Font& font, int dpi);

// A colour as GDI takes it. `fallback` is the role that ControlDefault and Transparent mean.
std::uint32_t ColorValue(const Color& color, ColorRole fallback);
// That colour for a text on `back`. In a high contrast scheme the two may be of different pairs, and a text that can't
// be read becomes black or white.
std::uint32_t ReadableOn(std::uint32_t back, std::uint32_t text);
// The brush of that colour, kept for the whole process.
HBRUSH__* BrushOf(std::uint32_t color);

// The picture among the program's resources, drawn to this size; nullptr when there is none. The caller deletes it.
HBITMAP__* PictureOf(const std::string& name, int width, int height);
// Gives a window its icon, or the system's own for an empty name.
void SetIcon(HWND__* window, const std::string& name, int dpi);

// The size of a whole window whose client area has this size in pixels.
void GrowToWindow(int& width, int& height, HWND__* window, int dpi);

} // namespace tarnwick

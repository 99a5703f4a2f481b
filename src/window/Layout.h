#pragma once

// A window's layout is one table, beside the window: what is where, with which text and in which state. ApplyLayout
// fills the fields of the window and its controls from it, the fixed ones for good.

#include "window/Window.h"

#include <initializer_list>
#include <optional>
#include <string_view>

namespace tarnwick {

struct WindowRow {
    std::string_view Name;
    std::string_view Title = {};
    FrameStyle Border = FrameStyle::FixedSingle;
    int ClientWidth = 0;  // twips
    int ClientHeight = 0; // twips
    bool InTaskBar = true;
    Color BackColor = Color::Of(ColorRole::ButtonFace);
};

struct ControlRow {
    Control& Field;
    std::string_view Name;
    const Control* Container;
    Rect Place; // twips
    std::string_view Caption = {};
    int TabIndex = -1;
    bool Visible = true;
    bool Enabled = true;
    bool Bold = false;
    double Points = 8.25;
    bool Centered = false;
    bool WordWrap = false;
    bool Default = false;
    Color ForeColor = {};
    Color BackColor = {};
    std::string_view AccessibleName = {};
    std::string_view AccessibleDescription = {};
    std::string_view ToolTip = {};
    int MaxLength = 0;
};

// Rows run from back to front. To be called once for a window, before it is loaded.
void ApplyLayout(Window& window, const WindowRow& frame, std::initializer_list<ControlRow> rows);

} // namespace tarnwick

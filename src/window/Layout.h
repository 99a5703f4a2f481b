#pragma once

// A window's layout is one table, beside the window: what is where, with which text and in which state. ApplyLayout
// fills the control fields from it; front ends read the fields.

#include "window/Window.h"

#include <initializer_list>
#include <optional>
#include <string_view>

namespace tarnwick {

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

// Rows run from back to front.
void ApplyLayout(Window& window, std::initializer_list<ControlRow> rows);

} // namespace tarnwick

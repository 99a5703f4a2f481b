#pragma once

// The controls of the window model: plain data with the handlers that a front end raises. Nothing notifies anyone. A
// field is Fixed, and a front end reads it once; or it may be written at any time, and a front end follows it, by
// comparing it with what it last showed. Lengths are in twips (1440 to the inch) unless named otherwise.

#include "window/Fixed.h"
#include "window/Grid.h"
#include "window/Tree.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace tarnwick {

struct Rect {
    int Left = 0;
    int Top = 0;
    int Width = 0;
    int Height = 0;
    bool operator==(const Rect&) const = default;
};

// A colour by its role on the desktop, or a fixed one.
enum class ColorRole {
    ControlDefault,   // what the kind of control has by itself
    WindowBackground, // COLOR_WINDOW
    ButtonFace,       // COLOR_BTNFACE
    ButtonText,       // COLOR_BTNTEXT
    ButtonShadow,     // COLOR_BTNSHADOW
    ButtonHighlight,  // COLOR_BTNHIGHLIGHT
    HighlightText,    // COLOR_HIGHLIGHTTEXT
    Transparent,
    Fixed
};

struct Color {
    ColorRole Role = ColorRole::ControlDefault;
    std::uint8_t Red = 0;
    std::uint8_t Green = 0;
    std::uint8_t Blue = 0;

    static constexpr Color Of(ColorRole role) { return {role, 0, 0, 0}; }
    static constexpr Color Rgb(std::uint8_t red, std::uint8_t green, std::uint8_t blue) {
        return {ColorRole::Fixed, red, green, blue};
    }
    bool operator==(const Color&) const = default;
};

// Every text is Verdana.
struct Font {
    double Points = 8.25;
    bool Bold = false;
    bool Underline = false;
    bool operator==(const Font&) const = default;
};

enum class Alignment { Left, Center };

enum class ControlKind {
    Label,
    CommandButton,
    CheckBox,
    OptionButton,
    TextBox,
    Frame,
    PictureBox,
    Line,
    Shape,
    Grid,
    Tree
};

struct Control {
    explicit Control(ControlKind kind) : Kind(kind) {}
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    const ControlKind Kind;
    Fixed<std::string> Name;         // the field's own name; an element of an array is "Label2_1"
    Fixed<const Control*> Container; // the Frame that it lies in, or nullptr for the window itself
    Fixed<Rect> Place;               // inside the container's client area, whose origin is the frame's outer corner
    Fixed<int> TabIndex = -1;        // place in the tab order, -1: not reached by Tab
    Fixed<std::string> ToolTip;
    Fixed<std::string> AccessibleName;        // for kinds that have no text of their own
    Fixed<std::string> AccessibleDescription; // a value's legend

    bool Visible = true;
    bool Enabled = true;
    std::string Caption; // "&" marks the access key on buttons, check boxes and option buttons; else plain text
    tarnwick::Font Font;
    Color ForeColor;
    Color BackColor;

    std::function<void()> Click;
    std::function<void()> MouseMove;
};

struct Label : Control {
    Label() : Control(ControlKind::Label) {}
    Fixed<tarnwick::Alignment> Alignment;
    Fixed<bool> WordWrap;

    // A screen reader speaks the text as it is at the end of the handler, wherever the focus is; the front end does it
    // when it sees the revision change and the label shows.
    void Announce() { ++AnnounceRevision; }
    unsigned AnnounceRevision = 0;
};

struct CommandButton : Control {
    CommandButton() : Control(ControlKind::CommandButton) {}
    Fixed<bool> Default; // Enter presses it while no other button has the focus
};

struct CheckBox : Control {
    CheckBox() : Control(ControlKind::CheckBox) {}
    std::int32_t Value = 0; // 0 unticked, 1 ticked; Click is raised after the user changed it
};

// The option buttons of one window are one exclusive group.
struct OptionButton : Control {
    OptionButton() : Control(ControlKind::OptionButton) {}
    bool Value = false;
};

struct TextBox : Control {
    TextBox() : Control(ControlKind::TextBox) {}
    std::string Text;
    Fixed<tarnwick::Alignment> Alignment;
    Fixed<int> MaxLength; // characters, 0: no limit

    // Selects the whole text; the front end does it when it sees the revision change.
    void SelectAll() { ++SelectRevision; }
    unsigned SelectRevision = 0;
};

struct Frame : Control {
    Frame() : Control(ControlKind::Frame) {}
};

struct PictureBox : Control {
    PictureBox() : Control(ControlKind::PictureBox) {}
    std::string Picture; // name of a picture that the front end carries, empty: none
};

// Runs from the left top to the right bottom corner of its Place, one pixel wide, in ForeColor.
struct Line : Control {
    Line() : Control(ControlKind::Line) {}
};

// The outline of its Place in ForeColor.
struct Shape : Control {
    Shape() : Control(ControlKind::Shape) {}
};

struct GridControl : Control, Grid {
    GridControl() : Control(ControlKind::Grid) {}
    std::function<void(int column)> HeaderClick;
    // button 2 is the right one; x and y in pixels inside the grid. The menu key counts as the right button.
    std::function<void(int button, int shift, int x, int y)> MouseButton;
};

struct TreeControl : Control, Tree {
    TreeControl() : Control(ControlKind::Tree) {}
    // The user changed the check box of the node with this index; NodeCheck already reads the new value.
    std::function<void(int index, std::int32_t value)> Check;
};

struct MenuEntry {
    std::string Name;
    std::string Caption; // plain text, without an access key
    bool Separator = false;
    bool Enabled = true;
    std::function<void()> Click;
};

struct Menu {
    std::string Name;
    std::string Caption;
    std::vector<MenuEntry*> Entries;
};

} // namespace tarnwick

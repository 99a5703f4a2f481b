#include "window/Layout.h"

#include <string>

namespace tarnwick {

class LayoutTable {
public:
    static void Fill(Window& window, const WindowRow& row) {
        Set(window.Name, std::string(row.Name));
        window.Title = row.Title;
        Set(window.Border, row.Border);
        Set(window.ClientWidth, row.ClientWidth);
        Set(window.ClientHeight, row.ClientHeight);
        Set(window.InTaskBar, row.InTaskBar);
        window.BackColor = row.BackColor;
    }

    static void Fill(const ControlRow& row) {
        Control& control = row.Field;
        Set(control.Name, std::string(row.Name));
        Set(control.Container, row.Container);
        Set(control.Place, row.Place);
        Set(control.TabIndex, row.TabIndex);
        Set(control.ToolTip, std::string(row.ToolTip));
        Set(control.AccessibleName, std::string(row.AccessibleName));
        Set(control.AccessibleDescription, std::string(row.AccessibleDescription));
        control.Caption = row.Caption;
        control.Visible = row.Visible;
        control.Enabled = row.Enabled;
        control.Font = {row.Points, row.Bold, false};
        control.ForeColor = row.ForeColor;
        control.BackColor = row.BackColor;
        FillKind(row);
    }

private:
    template <class T> static void Set(Fixed<T>& field, const T& value) { field.value_ = value; }

    static void FillKind(const ControlRow& row) {
        const Alignment alignment = row.Centered ? Alignment::Center : Alignment::Left;
        if (row.Field.Kind == ControlKind::Label) {
            auto& label = static_cast<Label&>(row.Field);
            Set(label.Alignment, alignment);
            Set(label.WordWrap, row.WordWrap);
        } else if (row.Field.Kind == ControlKind::CommandButton) {
            Set(static_cast<CommandButton&>(row.Field).Default, row.Default);
        } else if (row.Field.Kind == ControlKind::TextBox) {
            auto& field = static_cast<TextBox&>(row.Field);
            field.Text = row.Caption;
            Set(field.Alignment, alignment);
            Set(field.MaxLength, row.MaxLength);
        }
    }
};

void ApplyLayout(Window& window, const WindowRow& frame, std::initializer_list<ControlRow> rows) {
    LayoutTable::Fill(window, frame);
    for (const ControlRow& row : rows) {
        LayoutTable::Fill(row);
        window.Controls.push_back(&row.Field);
    }
}

} // namespace tarnwick

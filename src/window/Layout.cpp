#include "window/Layout.h"

namespace tarnwick {

void ApplyLayout(Window& window, std::initializer_list<ControlRow> rows) {
    for (const ControlRow& row : rows) {
        Control& control = row.Field;
        control.Name = row.Name;
        control.Container = row.Container;
        control.Place = row.Place;
        control.Caption = row.Caption;
        control.TabIndex = row.TabIndex;
        control.Visible = row.Visible;
        control.Enabled = row.Enabled;
        control.Font = {row.Points, row.Bold, false};
        control.ForeColor = row.ForeColor;
        control.BackColor = row.BackColor;
        control.AccessibleName = row.AccessibleName;
        control.AccessibleDescription = row.AccessibleDescription;
        control.ToolTip = row.ToolTip;

        const Alignment alignment = row.Centered ? Alignment::Center : Alignment::Left;
        if (control.Kind == ControlKind::Label) {
            auto& label = static_cast<Label&>(control);
            label.Alignment = alignment;
            label.WordWrap = row.WordWrap;
        } else if (control.Kind == ControlKind::CommandButton) {
            static_cast<CommandButton&>(control).Default = row.Default;
        } else if (control.Kind == ControlKind::TextBox) {
            auto& field = static_cast<TextBox&>(control);
            field.Text = row.Caption;
            field.Alignment = alignment;
            field.MaxLength = row.MaxLength;
        }
        window.Controls.push_back(&control);
    }
}

} // namespace tarnwick

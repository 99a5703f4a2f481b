#pragma once

#include "window/Controls.h"
#include "window/Shown.h"
#include "window/ShownCaption.h"

#include <QString>
#include <QWidget>

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

namespace tarnwick {

class QtWindow;

// The real widget of one control of the model, and what it last showed of the control's fields.
class QtControl {
public:
    virtual ~QtControl() = default;
    QtControl(const QtControl&) = delete;
    QtControl& operator=(const QtControl&) = delete;

    Control& Model() const { return control_; }
    QWidget& Real() const { return widget_; }
    // The widgets that input comes to: the widget itself, and the inner one of a view that scrolls.
    const std::vector<QWidget*>& Parts() const { return parts_; }

    // Writes the fields that differ from what is shown; a control that is not `shown` has no visible widget.
    void Sync(bool shown);
    // The caption that the user saw at `time`, in ms of the clock service.
    const std::string& CaptionAt(std::int64_t time) const { return caption_.At(time); }
    // The pop-up of a grid opens at its selected row.
    virtual void OpenMenu() {}
    // The model's control is given up; from now on it is not read any more.
    virtual void Detach() {}

protected:
    // The widget belongs to its parent widget.
    QtControl(Control& control, QWidget& widget);

    void AddPart(QWidget& part) { parts_.push_back(&part); }

    // What the kind of control has beside the common fields.
    virtual void SyncKind() {}
    virtual void ShowCaption() {}
    // After all else has been written.
    virtual void ShowLast() {}
    virtual void ShowColors() const;

    // The colours that ControlDefault means.
    virtual ColorRole DefaultBackColor() const { return ColorRole::ButtonFace; }

private:
    Control& control_;
    QWidget& widget_;
    std::vector<QWidget*> parts_;
    Shown<tarnwick::Font> font_;
    Shown<std::pair<Color, Color>> colors_; // of the text and of the ground
    Shown<bool> enabled_;
    ShownCaption caption_;
};

// Builds the widget of any control as the top one of `parent`; what the user does to it comes to `window`.
std::unique_ptr<QtControl> MakeQtControl(Control& control, QWidget& parent, QtWindow& window);

} // namespace tarnwick

#include "platform/qt/QtControl.h"

#include "platform/qt/QtButtons.h"
#include "platform/qt/QtGrid.h"
#include "platform/qt/QtLabel.h"
#include "platform/qt/QtLook.h"
#include "platform/qt/QtText.h"
#include "platform/qt/QtTextBox.h"
#include "platform/qt/QtTree.h"
#include "services/Services.h"

#include <QGroupBox>
#include <QPaintEvent>
#include <QPainter>

namespace tarnwick {

QtControl::QtControl(Control& control, QWidget& widget) : control_(control), widget_(widget), parts_{&widget} {
    widget_.setObjectName(SingleLineOf(*control.Name));
    widget_.setAccessibleName(SingleLineOf(*control.AccessibleName));
    widget_.setAccessibleDescription(
        SingleLineOf(control.AccessibleDescription->empty() ? *control.ToolTip : *control.AccessibleDescription));
    if (!control.ToolTip->empty())
        widget_.setToolTip(LiteralToolTip(*control.ToolTip));
    widget_.setGeometry(PixelsOf(control.Place));
    widget_.setAttribute(Qt::WA_NoMousePropagation); // a click on a control is none on what it covers
}

void QtControl::Sync(bool shown) {
    if (font_.Differs(control_.Font))
        widget_.setFont(FontOf(control_.Font));
    if (colors_.Differs({control_.ForeColor, control_.BackColor}))
        ShowColors();
    if (caption_.Differs(control_.Caption, services().Clock.Now()))
        ShowCaption();
    SyncKind();
    if (enabled_.Differs(control_.Enabled))
        widget_.setEnabled(control_.Enabled);
    if (widget_.isHidden() == shown)
        widget_.setVisible(shown);
    ShowLast();
}

void QtControl::ShowColors() const {
    const QColor text = ColorOf(control_.ForeColor, ColorRole::ButtonText);
    const QColor ground = ColorOf(control_.BackColor, DefaultBackColor());
    QPalette colors = widget_.palette();
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
        colors.setColor(group, QPalette::WindowText, text);
        colors.setColor(group, QPalette::Text, text);
    }
    // A box for text or a list has its ground inside; the box of a check box keeps its own.
    colors.setColor(DefaultBackColor() == ColorRole::WindowBackground ? QPalette::Base : QPalette::Window, ground);
    widget_.setPalette(colors);
    widget_.setAutoFillBackground(ground.alpha() != 0);
}

namespace {

// A label inside that changes has its ground painted, but not the frame and its caption anew.
class FrameBox : public QGroupBox {
public:
    using QGroupBox::QGroupBox;

protected:
    void paintEvent(QPaintEvent* event) override {
        if (!contentsRect().contains(event->rect()))
            QGroupBox::paintEvent(event);
    }
};

class FrameControl : public QtControl {
public:
    FrameControl(Control& control, QWidget& parent) : QtControl(control, *new FrameBox(&parent)) {}

protected:
    void ShowCaption() override {
        static_cast<QGroupBox&>(Real()).setTitle(LiteralCaption(SingleLineOf(Model().Caption)));
    }
};

// Lines and outlines; they let the mouse through. Filled, not drawn: a pen's line may fall between the display's pixels
// at a scale such as 125 %.
class Drawing : public QWidget {
public:
    Drawing(const Control& control, QWidget& parent) : QWidget(&parent), line_(control.Kind == ControlKind::Line) {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setMinimumSize(1, 1); // a straight line's place has no width or no height
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        const QBrush color = palette().windowText();
        if (line_)
            painter.fillRect(rect(), color);
        else
            PaintOutline(painter, rect(), color);
    }

private:
    const bool line_;
};

class DrawingControl : public QtControl {
public:
    DrawingControl(Control& control, QWidget& parent) : QtControl(control, *new Drawing(control, parent)) {}

protected:
    ColorRole DefaultBackColor() const override { return ColorRole::Transparent; }
};

} // namespace

std::unique_ptr<QtControl> MakeQtControl(Control& control, QWidget& parent, QtWindow& window) {
    switch (control.Kind) {
    case ControlKind::Label:
        return MakeQtLabel(static_cast<Label&>(control), parent);
    case ControlKind::PictureBox:
        return MakeQtPicture(static_cast<PictureBox&>(control), parent);
    case ControlKind::CommandButton:
    case ControlKind::CheckBox:
    case ControlKind::OptionButton:
        return MakeQtButton(control, parent, window);
    case ControlKind::TextBox:
        return std::make_unique<QtTextBox>(static_cast<TextBox&>(control), parent, window);
    case ControlKind::Frame:
        return std::make_unique<FrameControl>(control, parent);
    case ControlKind::Grid:
        return std::make_unique<QtGrid>(static_cast<GridControl&>(control), parent, window);
    case ControlKind::Tree:
        return std::make_unique<QtTree>(static_cast<TreeControl&>(control), parent, window);
    case ControlKind::Line:
    case ControlKind::Shape:
        break;
    }
    return std::make_unique<DrawingControl>(control, parent);
}

} // namespace tarnwick

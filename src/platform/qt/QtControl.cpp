#include "platform/qt/QtControl.h"

#include "platform/qt/QtGrid.h"
#include "platform/qt/QtLook.h"
#include "platform/qt/QtText.h"
#include "platform/qt/QtTree.h"
#include "platform/qt/QtWindow.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QStyle>

#include <algorithm>

namespace tarnwick {

QtControl::QtControl(const Control& control, QWidget& widget) : control_(control), widget_(widget), parts_{&widget} {
    widget_.setObjectName(SingleLineOf(control.Name));
    widget_.setAccessibleName(SingleLineOf(control.AccessibleName));
    widget_.setAccessibleDescription(SingleLineOf(control.AccessibleDescription));
    widget_.setMouseTracking(static_cast<bool>(control.MouseMove));
    widget_.setAttribute(Qt::WA_NoMousePropagation); // a click on a control is none on what lies behind it
}

void QtControl::Sync() {
    SyncLooks();
    if (caption_ != control_.Caption) {
        caption_ = control_.Caption;
        ShowCaption();
    }
    SyncKind();
    if (widget_.isEnabledTo(widget_.parentWidget()) != control_.Enabled)
        widget_.setEnabled(control_.Enabled);
    if (widget_.isHidden() == control_.Visible)
        widget_.setVisible(control_.Visible);
}

void QtControl::SyncLooks() {
    const bool first = !looks_;
    Looks& shown = first ? looks_.emplace() : *looks_;
    if (const QRect place = PixelsOf(control_.Place); first || shown.Place != place) {
        shown.Place = place;
        widget_.setGeometry(place);
    }
    if (first || shown.Font != control_.Font) {
        shown.Font = control_.Font;
        widget_.setFont(FontOf(shown.Font));
    }
    if (first || shown.ForeColor != control_.ForeColor || shown.BackColor != control_.BackColor) {
        shown.ForeColor = control_.ForeColor;
        shown.BackColor = control_.BackColor;
        ShowColors();
    }
    if (shown.ToolTip != control_.ToolTip) {
        shown.ToolTip = control_.ToolTip;
        widget_.setToolTip(LiteralToolTip(shown.ToolTip));
    }
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

// Draws its text as it stands, in its place: one line is cut with dots, while a screen reader gets all of it.
class PlainLabel : public QLabel {
public:
    PlainLabel(const Label& label, QWidget& parent) : QLabel(&parent) {
        setTextFormat(Qt::PlainText);
        setWordWrap(label.WordWrap);
        setAlignment(Qt::AlignTop | (label.Alignment == Alignment::Center ? Qt::AlignHCenter : Qt::AlignLeft));
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        QRect place = rect();
        QString shown = text();
        int flags = static_cast<int>(alignment());
        if (wordWrap()) {
            flags |= Qt::TextWordWrap;
        } else {
            flags |= Qt::TextSingleLine;
            shown = fontMetrics().elidedText(shown, Qt::ElideRight, width());
            // A font's room for accents may lie outside a low label, its letters may not.
            place.setTop(std::min(0, height() - fontMetrics().height()));
        }
        style()->drawItemText(&painter, place, flags, palette(), isEnabled(), shown, QPalette::WindowText);
    }
};

class LabelControl : public QtControl {
public:
    LabelControl(Label& label, QWidget& parent)
        : QtControl(label, *new PlainLabel(label, parent)), wrapped_(label.WordWrap) {}

protected:
    void ShowCaption() override {
        static_cast<PlainLabel&>(Widget()).setText(wrapped_ ? LinesOf(Model().Caption) : SingleLineOf(Model().Caption));
    }
    ColorRole DefaultBackColor() const override { return ColorRole::Transparent; }

private:
    const bool wrapped_;
};

// Push buttons, check boxes and option buttons: their captions hold access keys.
class ButtonControl : public QtControl {
public:
    ButtonControl(const Control& control, QAbstractButton& button) : QtControl(control, button), button_(button) {}

protected:
    void ShowCaption() override { button_.setText(SingleLineOf(Model().Caption)); }

    QAbstractButton& button_;
};

std::unique_ptr<QtControl> MakeCommandButton(CommandButton& control, QWidget& parent, QtWindow& window) {
    auto* button = new QPushButton(&parent);
    button->setAutoDefault(true);
    button->setDefault(control.Default);
    QObject::connect(button, &QPushButton::clicked, &window, [&window, &control] {
        if (window.Takes(control))
            window.Raise(control.Click);
    });
    return std::make_unique<ButtonControl>(control, *button);
}

class CheckBoxControl : public ButtonControl {
public:
    CheckBoxControl(tarnwick::CheckBox& control, QWidget& parent, QtWindow& window)
        : ButtonControl(control, *new QCheckBox(&parent)), control_(control) {
        QObject::connect(&button_, &QAbstractButton::clicked, &window, [this, &window](bool ticked) {
            if (!window.Takes(control_))
                return;
            control_.Value = ticked ? 1 : 0;
            window.Raise(control_.Click);
        });
    }

protected:
    void SyncKind() override {
        if (button_.isChecked() != (control_.Value != 0))
            button_.setChecked(control_.Value != 0);
    }

private:
    tarnwick::CheckBox& control_;
};

class OptionButtonControl : public ButtonControl {
public:
    OptionButtonControl(tarnwick::OptionButton& control, QWidget& parent, QtWindow& window)
        : ButtonControl(control, *new QRadioButton(&parent)), control_(control) {
        window.Options().addButton(&button_);
        QObject::connect(&button_, &QAbstractButton::clicked, &window,
                         [this, &window] { window.ChooseOption(control_); });
    }

protected:
    // The group takes the mark from the others by itself.
    void SyncKind() override {
        if (control_.Value && !button_.isChecked())
            button_.setChecked(true);
    }

private:
    const tarnwick::OptionButton& control_;
};

class TextBoxControl : public QtControl {
public:
    TextBoxControl(TextBox& control, QWidget& parent, QtWindow& window)
        : QtControl(control, *new QLineEdit(&parent)), control_(control), edit_(static_cast<QLineEdit&>(Widget())) {
        edit_.setAlignment(control.Alignment == Alignment::Center ? Qt::AlignCenter : Qt::AlignLeft);
        if (control.MaxLength > 0)
            edit_.setMaxLength(control.MaxLength);
        QObject::connect(&edit_, &QLineEdit::textEdited, &window, [this, &window](const QString& text) {
            if (window.Takes(control_))
                control_.Text = shown_ = FromQt(text);
        });
    }

protected:
    void SyncKind() override {
        if (shown_ != control_.Text) {
            shown_ = control_.Text;
            edit_.setText(SingleLineOf(shown_));
        }
        if (selectRevision_ != control_.SelectRevision) {
            selectRevision_ = control_.SelectRevision;
            edit_.selectAll();
        }
    }
    ColorRole DefaultBackColor() const override { return ColorRole::WindowBackground; }

private:
    TextBox& control_;
    QLineEdit& edit_;
    std::string shown_;
    unsigned selectRevision_ = 0;
};

class FrameControl : public QtControl {
public:
    FrameControl(tarnwick::Frame& control, QWidget& parent) : QtControl(control, *new QGroupBox(&parent)) {}

protected:
    void ShowCaption() override {
        static_cast<QGroupBox&>(Widget()).setTitle(LiteralCaption(SingleLineOf(Model().Caption)));
    }
};

// One pixel of frame around the picture.
class PictureControl : public QtControl {
public:
    PictureControl(PictureBox& control, QWidget& parent)
        : QtControl(control, *new QLabel(&parent)), control_(control), label_(static_cast<QLabel&>(Widget())) {
        label_.setFrameStyle(static_cast<int>(QFrame::Box) | static_cast<int>(QFrame::Plain));
        label_.setScaledContents(true);
    }

protected:
    void SyncKind() override {
        if (shown_ == control_.Picture)
            return;
        shown_ = control_.Picture;
        label_.setPixmap(PictureOf(shown_));
    }
    ColorRole DefaultBackColor() const override { return ColorRole::ButtonShadow; }

private:
    const PictureBox& control_;
    QLabel& label_;
    std::string shown_;
};

// Lines and outlines; the mouse goes through them.
class Drawing : public QWidget {
public:
    Drawing(const Control& control, QWidget& parent) : QWidget(&parent), line_(control.Kind == ControlKind::Line) {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setMinimumSize(1, 1); // a straight line's place has no width or no height
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setPen(QPen(palette().color(QPalette::WindowText), 1));
        if (line_)
            painter.drawLine(rect().topLeft(), rect().bottomRight());
        else
            painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }

private:
    const bool line_;
};

class DrawingControl : public QtControl {
public:
    DrawingControl(const Control& control, QWidget& parent) : QtControl(control, *new Drawing(control, parent)) {}

protected:
    ColorRole DefaultBackColor() const override { return ColorRole::Transparent; }
};

} // namespace

std::unique_ptr<QtControl> MakeQtControl(Control& control, QWidget& parent, QtWindow& window) {
    switch (control.Kind) {
    case ControlKind::Label:
        return std::make_unique<LabelControl>(static_cast<Label&>(control), parent);
    case ControlKind::CommandButton:
        return MakeCommandButton(static_cast<CommandButton&>(control), parent, window);
    case ControlKind::CheckBox:
        return std::make_unique<CheckBoxControl>(static_cast<CheckBox&>(control), parent, window);
    case ControlKind::OptionButton:
        return std::make_unique<OptionButtonControl>(static_cast<OptionButton&>(control), parent, window);
    case ControlKind::TextBox:
        return std::make_unique<TextBoxControl>(static_cast<TextBox&>(control), parent, window);
    case ControlKind::Frame:
        return std::make_unique<FrameControl>(static_cast<Frame&>(control), parent);
    case ControlKind::PictureBox:
        return std::make_unique<PictureControl>(static_cast<PictureBox&>(control), parent);
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

#include "platform/qt/QtButtons.h"

#include "platform/qt/QtText.h"
#include "platform/qt/QtWindow.h"

#include <QCheckBox>
#include <QPushButton>
#include <QRadioButton>

namespace tarnwick {

namespace {

// The model changes a button's mark; the real one follows it and has no idea of its own.
template <class Button> class ModelButton : public Button {
public:
    using Button::Button;

protected:
    void nextCheckState() override {}
    bool hitButton(const QPoint& place) const override { return this->rect().contains(place); }
};

class ButtonControl : public QtControl {
public:
    ButtonControl(Control& control, QAbstractButton& button, QtWindow& window)
        : QtControl(control, button), button_(button) {
        QObject::connect(&button, &QAbstractButton::pressed, &window, [this, &window] { window.Press(*this); });
        QObject::connect(&button, &QAbstractButton::clicked, &window, [this, &window] { window.Click(*this); });
    }

protected:
    // The caption shows its access key; what the key does is the model's.
    void ShowCaption() override {
        button_.setText(SingleLineOf(Model().Caption));
        button_.setShortcut({});
    }
    void SyncKind() override {
        const Control& control = Model();
        const bool marked = control.Kind == ControlKind::CheckBox ? static_cast<const CheckBox&>(control).Value != 0
                            : control.Kind == ControlKind::OptionButton
                                ? static_cast<const OptionButton&>(control).Value
                                : false;
        if (marked_.Differs(marked))
            button_.setChecked(marked);
    }

private:
    QAbstractButton& button_;
    Shown<bool> marked_;
};

QAbstractButton* MakeButton(const Control& control, QWidget& parent) {
    if (control.Kind == ControlKind::CheckBox)
        return new ModelButton<QCheckBox>(&parent);
    if (control.Kind == ControlKind::OptionButton) {
        auto* option = new ModelButton<QRadioButton>(&parent);
        option->setAutoExclusive(false);
        return option;
    }
    auto* button = new QPushButton(&parent);
    button->setAutoDefault(true);
    button->setDefault(static_cast<const CommandButton&>(control).Default);
    return button;
}

} // namespace

std::unique_ptr<QtControl> MakeQtButton(Control& control, QWidget& parent, QtWindow& window) {
    return std::make_unique<ButtonControl>(control, *MakeButton(control, parent), window);
}

} // namespace tarnwick

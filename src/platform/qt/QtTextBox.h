#pragma once

#include "platform/qt/QtControl.h"

class QLineEdit;

namespace tarnwick {

class QtTextBox : public QtControl {
public:
    QtTextBox(TextBox& field, QWidget& parent, QtWindow& window);
    void Detach() override;

protected:
    void SyncKind() override;
    ColorRole DefaultBackColor() const override { return ColorRole::WindowBackground; }

private:
    void TakeText();

    TextBox& field_;
    QtWindow& window_;
    QLineEdit& edit_;
    Shown<std::string> shown_;
    Shown<unsigned> selection_{0};
};

} // namespace tarnwick

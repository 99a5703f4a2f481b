#pragma once

#include "platform/qt/QtControl.h"

class QLineEdit;

namespace tarnwick {

class QtTextBox : public QtControl {
public:
    QtTextBox(TextBox& field, QWidget& parent, QtWindow& window);

protected:
    void SyncKind() override;
    ColorRole DefaultBackColor() const override { return ColorRole::WindowBackground; }

private:
    void TakeText();

    TextBox& field_;
    QtWindow& window_;
    QLineEdit& edit_;
    std::string shown_;
    unsigned selectRevision_ = 0;
};

} // namespace tarnwick

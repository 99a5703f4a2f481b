#pragma once

#include "services/Services.h"

#include <QMessageBox>

#include <string>

namespace tarnwick {

// A box that fits the smallest screen, whatever its text.
class QtMessageBox : public QMessageBox {
    Q_OBJECT

public:
    QtMessageBox(const std::string& text, const std::string& title, MessageIcon icon, MessageButtons buttons,
                 QWidget* parent);

    MessageAnswer Ask();

private:
    void SetButtons(MessageButtons buttons);
    void SetText(const std::string& text);
};

} // namespace tarnwick

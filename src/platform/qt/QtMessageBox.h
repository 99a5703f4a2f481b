#pragma once

#include "services/Services.h"

#include <QMessageBox>

#include <string>

namespace tarnwick {

// Qt's box, which shows its text as it is. A text that asks for a width gets it by way of the label's name inside Qt
// (qt_msgbox_label), as Qt would break its lines anew; should a version of Qt call it otherwise, it does that.
class QtMessageBox : public QMessageBox {
    Q_OBJECT

public:
    QtMessageBox(const BoxText& text, const std::string& title, MessageIcon icon, MessageButtons buttons,
                 QWidget* parent);

    MessageAnswer Ask();

private:
    void SetButtons(MessageButtons buttons);
};

} // namespace tarnwick

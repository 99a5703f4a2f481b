#include "platform/qt/QtMessageBox.h"

#include "platform/qt/QtText.h"

#include <QLabel>
#include <QPushButton>

namespace tarnwick {

QtMessageBox::QtMessageBox(const BoxText& text, const std::string& title, MessageIcon icon, MessageButtons buttons,
                           QWidget* parent)
    : QMessageBox(parent) {
    setWindowTitle(LiteralTitle(title));
    setTextFormat(Qt::PlainText);
    setIcon(icon == MessageIcon::Critical ? Critical : icon == MessageIcon::Question ? Question : Information);
    SetButtons(buttons);
    setText(LinesOf(text.Text));
    if (auto* label = findChild<QLabel*>(QStringLiteral("qt_msgbox_label")); label != nullptr && text.Width > 0)
        label->setFixedWidth(text.Width);
}

void QtMessageBox::SetButtons(MessageButtons buttons) {
    if (buttons == MessageButtons::Ok) {
        setStandardButtons(Ok);
        button(Ok)->setText(QStringLiteral("OK"));
        return;
    }
    setStandardButtons(Yes | No);
    button(Yes)->setText(QStringLiteral("&Yes"));
    button(No)->setText(QStringLiteral("&No"));
    setDefaultButton(No);
}

MessageAnswer QtMessageBox::Ask() {
    const int chosen = exec();
    if (button(No) == nullptr)
        return MessageAnswer::Ok;
    return chosen == Yes ? MessageAnswer::Yes : MessageAnswer::No;
}

} // namespace tarnwick

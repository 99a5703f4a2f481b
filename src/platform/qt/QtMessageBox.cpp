#include "platform/qt/QtMessageBox.h"

#include "platform/qt/QtText.h"
#include "text/Text.h"

#include <QLabel>
#include <QPushButton>

#include <algorithm>

namespace tarnwick {

namespace {

// What is left of 1024 x 600 beside the icon and the margins, under a title bar and over the buttons.
constexpr QSize LargestText(800, 420);
constexpr int UsualWidth = 420;

QSize SizeIn(const QLabel& label, const QString& text, int width) {
    const QRect room(0, 0, width, 100 * LargestText.height());
    return label.fontMetrics().boundingRect(room, Qt::TextWordWrap, text).size();
}

// Each line cut at so many characters.
std::string WithLinesCut(const std::string& text, std::size_t characters) {
    std::string cut;
    for (std::size_t at = 0; at <= text.size();) {
        const std::size_t end = std::min(text.find("\r\n", at), text.size());
        cut += (at == 0 ? "" : "\r\n") + Shortened(std::string_view(text).substr(at, end - at), characters);
        at = end + 2;
    }
    return cut;
}

} // namespace

QtMessageBox::QtMessageBox(const std::string& text, const std::string& title, MessageIcon icon, MessageButtons buttons,
                           QWidget* parent)
    : QMessageBox(parent) {
    setWindowTitle(LiteralTitle(title));
    setTextFormat(Qt::PlainText);
    setIcon(icon == MessageIcon::Critical ? Critical : icon == MessageIcon::Question ? Question : Information);
    SetButtons(buttons);
    SetText(text);
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

// A text too high for its usual width gets more of it, and is cut where that is too little.
void QtMessageBox::SetText(const std::string& text) {
    QString shown = BreakableLinesOf(text);
    setText(shown);
    auto* label = findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
    if (label == nullptr || SizeIn(*label, shown, UsualWidth).height() <= LargestText.height())
        return;
    for (std::size_t longest = text.size(); SizeIn(*label, shown, LargestText.width()).height() > LargestText.height();
         longest -= longest / 4 + 1)
        shown = BreakableLinesOf(WithLinesCut(text, longest));
    setText(shown);
    label->setFixedWidth(LargestText.width());
}

MessageAnswer QtMessageBox::Ask() {
    const int chosen = exec();
    if (button(No) == nullptr)
        return MessageAnswer::Ok;
    return chosen == Yes ? MessageAnswer::Yes : MessageAnswer::No;
}

} // namespace tarnwick

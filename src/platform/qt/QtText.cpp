#include "platform/qt/QtText.h"

#include "window/Text.h"

#include <QTextDocument>

namespace tarnwick {

QString LinesOf(std::string_view text) { return QString::fromStdString(ShownLines(text)); }

QString SingleLineOf(std::string_view text) { return QString::fromStdString(ShownLine(text)); }

QString LiteralCaption(QString line) { return line.replace(u'&', QStringLiteral("&&")); }

QString LiteralTitle(std::string_view text) {
    return SingleLineOf(text).replace(QStringLiteral("[*]"), QStringLiteral("[*][*]"));
}

QString BreakableLinesOf(std::string_view text) {
    constexpr int LongestWord = 40;
    constexpr QChar ZeroWidthSpace(0x200B);
    const QString lines = LinesOf(text);
    QString broken;
    int length = 0;
    for (const QChar character : lines) {
        length = character.isSpace() ? 0 : length + 1;
        if (length > LongestWord && !character.isLowSurrogate() && !character.isMark()) {
            broken += ZeroWidthSpace;
            length = 1;
        }
        broken += character;
    }
    return broken;
}

QString LiteralToolTip(std::string_view text) { return Qt::convertFromPlainText(BreakableLinesOf(text)); }

std::string FromQt(const QString& text) { return text.toStdString(); }

} // namespace tarnwick

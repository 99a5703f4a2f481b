#include "platform/qt/QtText.h"

#include "text/Text.h"

#include <QStringList>

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

QString LiteralToolTip(std::string_view text) {
    constexpr qsizetype LongestLine = 100;
    QString lines;
    for (const QString& line : LinesOf(text).split(u'\n'))
        for (qsizetype at = 0; at == 0 || at < line.size(); at += LongestLine)
            lines += (lines.isEmpty() ? "" : "\n") + line.mid(at, LongestLine);
    return QStringLiteral("<p style='white-space:pre'>%1</p>").arg(lines.toHtmlEscaped());
}

std::string FromQt(const QString& text) { return text.toStdString(); }

} // namespace tarnwick

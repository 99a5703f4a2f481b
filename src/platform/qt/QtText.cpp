#include "platform/qt/QtText.h"

#include <QTextDocument>

namespace tarnwick {

namespace {

bool IsControl(QChar character) {
    switch (character.category()) {
    case QChar::Other_Control:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return true;
    default:
        return false;
    }
}

} // namespace

QString LinesOf(std::string_view text) {
    QString lines = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    for (qsizetype place = 0; place < lines.size(); ++place) {
        if (!IsControl(lines[place]))
            continue;
        if (lines[place] == u'\r' && place + 1 < lines.size() && lines[place + 1] == u'\n')
            lines.remove(place, 1);
        else
            lines[place] = u' ';
    }
    return lines;
}

QString SingleLineOf(std::string_view text) { return LinesOf(text).replace(u'\n', u' '); }

QString LiteralCaption(QString line) { return line.replace(u'&', QStringLiteral("&&")); }

QString LiteralTitle(std::string_view text) {
    return SingleLineOf(text).replace(QStringLiteral("[*]"), QStringLiteral("[*][*]"));
}

QString LiteralToolTip(std::string_view text) {
    const QString lines = LinesOf(text);
    return Qt::mightBeRichText(lines) ? Qt::convertFromPlainText(lines) : lines;
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

std::string FromQt(const QString& text) { return text.toStdString(); }

} // namespace tarnwick

#include "platform/qt/QtText.h"

#include "text/Text.h"

namespace tarnwick {

QString LinesOf(std::string_view text) { return QString::fromStdString(ShownLines(text)); }

QString SingleLineOf(std::string_view text) { return QString::fromStdString(ShownLine(text)); }

QString LiteralCaption(QString line) { return line.replace(u'&', QStringLiteral("&&")); }

QString LiteralTitle(std::string_view text) {
    return SingleLineOf(text).replace(QStringLiteral("[*]"), QStringLiteral("[*][*]"));
}

QString LiteralToolTip(std::string_view text) {
    return QStringLiteral("<p style='white-space:pre'>%1</p>").arg(LinesOf(ToolTipText(text)).toHtmlEscaped());
}

std::string FromQt(const QString& text) { return text.toStdString(); }

} // namespace tarnwick

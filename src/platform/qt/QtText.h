#pragma once

// The texts of the model on their way to Qt and back. They are data: nothing in them is markup, an access key or a
// placeholder unless the window's own table says so.

#include <QString>

#include <string>
#include <string_view>

namespace tarnwick {

QString LinesOf(std::string_view text);
// The text in one line.
QString SingleLineOf(std::string_view text);
// A line for a caption in which Qt would read "&" as an access key.
QString LiteralCaption(QString line);
// One line for a title, in which Qt would read "[*]" as a mark.
QString LiteralTitle(std::string_view text);
// A text for a tool tip, which Qt would read as markup.
QString LiteralToolTip(std::string_view text);

std::string FromQt(const QString& text);

} // namespace tarnwick

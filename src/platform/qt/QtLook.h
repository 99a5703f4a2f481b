#pragma once

// The classic look, whatever the desktop's theme: style "Windows", the classic system colours, Verdana or its metric
// twin, pictures from the program's resources.

#include "window/Controls.h"

#include <QColor>
#include <QFont>
#include <QIcon>
#include <QPixmap>
#include <QRect>

class QApplication;
class QBrush;
class QPainter;

namespace tarnwick {

void UseClassicLook(QApplication& application);

// `fallback` is the role that ControlDefault means.
QColor ColorOf(const Color& color, ColorRole fallback);
QFont FontOf(const Font& font);

// Twips to pixels at 96 DPI; the display's scale is Qt's business.
int PixelsOf(int twips);
int TwipsOf(int pixels);
QRect PixelsOf(const Rect& place);

// A picture's name is its resource's; null when there is none.
QPixmap PictureOf(const std::string& name);
// The icon in every size that the resources hold: "x.png" and "x-16.png", "x-32.png"...
QIcon IconOf(const std::string& name);

// One pixel along the inside of `area`.
void PaintOutline(QPainter& painter, const QRect& area, const QBrush& color);

// Paints the edges of DrawEdge (user32) along the four sides of `area`: a sum of BDR_RAISEDOUTER 1, BDR_SUNKENOUTER 2,
// BDR_RAISEDINNER 4 and BDR_SUNKENINNER 8.
void PaintEdge(QPainter& painter, QRect area, int edge);

} // namespace tarnwick

#include "platform/qt/QtLook.h"

#include "platform/qt/QtText.h"

#include <QApplication>
#include <QFile>
#include <QFileInfo>
#include <QPainter>
#include <QPalette>
#include <QProxyStyle>
#include <QStyleFactory>
#include <QToolTip>

#include <cmath>

// The resources are in a library, from which only what is asked for is linked; the macro works in no namespace.
static void LinkArtwork() { Q_INIT_RESOURCE(artwork); }

namespace tarnwick {

namespace {

constexpr int TwipsPerPixel = 15; // 1440 to the inch, 96 pixels to the inch

const QColor Face(212, 208, 200);
const QColor Highlight3D(255, 255, 255);
const QColor Shadow3D(128, 128, 128);
const QColor DarkShadow3D(64, 64, 64);
const QColor Selection(10, 36, 106);

class ClassicStyle : public QProxyStyle {
public:
    ClassicStyle() : QProxyStyle(QStyleFactory::create(QStringLiteral("Windows"))) {}

    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* returned) const override {
        switch (hint) {
        case SH_Menu_AllowActiveAndDisabled: // a greyed entry can't be reached, by mouse or keyboard
            return 0;
        case SH_UnderlineShortcut:
            return 1;
        case SH_Table_GridLineColor:
            return static_cast<int>(Face.rgb());
        default:
            return QProxyStyle::styleHint(hint, option, widget, returned);
        }
    }
};

QPalette ClassicPalette() {
    QPalette palette;
    const auto set = [&palette](QPalette::ColorRole role, const QColor& color) { palette.setColor(role, color); };
    set(QPalette::Window, Face);
    set(QPalette::Button, Face);
    set(QPalette::Light, Highlight3D);
    set(QPalette::Midlight, Face);
    set(QPalette::Mid, QColor(160, 160, 160));
    set(QPalette::Dark, Shadow3D);
    set(QPalette::Shadow, DarkShadow3D);
    set(QPalette::WindowText, Qt::black);
    set(QPalette::ButtonText, Qt::black);
    set(QPalette::Text, Qt::black);
    set(QPalette::BrightText, Qt::white);
    set(QPalette::Base, Qt::white);
    set(QPalette::AlternateBase, Qt::white);
    set(QPalette::PlaceholderText, Shadow3D);
    set(QPalette::Highlight, Selection);
    set(QPalette::HighlightedText, Qt::white);
    set(QPalette::ToolTipBase, QColor(255, 255, 225));
    set(QPalette::ToolTipText, Qt::black);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::ButtonText, QPalette::Text})
        palette.setColor(QPalette::Disabled, role, Shadow3D);
    return palette;
}

QString ResourcePath(const QString& name) { return QStringLiteral(":/") + name; }

} // namespace

void UseClassicLook(QApplication& application) {
    LinkArtwork();
    application.setStyle(new ClassicStyle);
    application.setPalette(ClassicPalette()); // NOLINT(clang-analyzer-cplusplus.NewDeleteLeaks): the style is owned
    QToolTip::setPalette(ClassicPalette());
    const QFont font = FontOf({});
    application.setFont(font);
    QToolTip::setFont(font);
}

QColor ColorOf(const Color& color, ColorRole fallback) {
    switch (color.Role == ColorRole::ControlDefault ? fallback : color.Role) {
    case ColorRole::WindowBackground:
    case ColorRole::HighlightText:
        return Qt::white;
    case ColorRole::ButtonHighlight:
        return Highlight3D;
    case ColorRole::ButtonShadow:
        return Shadow3D;
    case ColorRole::ButtonText:
        return Qt::black;
    case ColorRole::Transparent:
        return Qt::transparent;
    case ColorRole::Fixed:
        return {color.Red, color.Green, color.Blue};
    case ColorRole::ControlDefault:
    case ColorRole::ButtonFace:
        break;
    }
    return Face;
}

// In pixels, so that a text fits its place whatever DPI the desktop claims for its fonts. The second family
// is drawn to the same widths. Which one the system has comes out at the first text: looking for it takes Qt
// milliseconds.
QFont FontOf(const Font& font) {
    constexpr double PixelsPerPoint = 96.0 / 72.0;
    QFont made(QStringList{QStringLiteral("Verdana"), QStringLiteral("DejaVu Sans")});
    made.setPixelSize(static_cast<int>(std::lround(font.Points * PixelsPerPoint)));
    made.setBold(font.Bold);
    made.setUnderline(font.Underline);
    made.setKerning(false);
    made.setHintingPreference(QFont::PreferFullHinting);
    return made;
}

int PixelsOf(int twips) { return (twips + TwipsPerPixel / 2) / TwipsPerPixel; }

int TwipsOf(int pixels) { return pixels * TwipsPerPixel; }

QRect PixelsOf(const Rect& place) {
    return {QPoint(PixelsOf(place.Left), PixelsOf(place.Top)), QSize(PixelsOf(place.Width), PixelsOf(place.Height))};
}

QPixmap PictureOf(const std::string& name) { return name.empty() ? QPixmap() : QPixmap(ResourcePath(LinesOf(name))); }

QIcon IconOf(const std::string& name) {
    QIcon icon;
    if (name.empty())
        return icon;
    const QFileInfo file(LinesOf(name));
    icon.addFile(ResourcePath(file.fileName()));
    for (const int size : {16, 32, 48, 64, 128}) {
        const QString path =
            ResourcePath(QStringLiteral("%1-%2.%3").arg(file.completeBaseName()).arg(size).arg(file.suffix()));
        if (QFile::exists(path))
            icon.addFile(path);
    }
    return icon;
}

void PaintOutline(QPainter& painter, const QRect& area, const QBrush& color) {
    for (const QRect& side :
         {QRect(area.left(), area.top(), area.width(), 1), QRect(area.left(), area.bottom(), area.width(), 1),
          QRect(area.left(), area.top(), 1, area.height()), QRect(area.right(), area.top(), 1, area.height())})
        painter.fillRect(side, color);
}

void PaintEdge(QPainter& painter, QRect area, int edge) {
    const auto side = [&](const QColor& leftTop, const QColor& rightBottom) {
        painter.fillRect(area.left(), area.top(), area.width(), 1, leftTop);
        painter.fillRect(area.left(), area.top(), 1, area.height(), leftTop);
        painter.fillRect(area.left(), area.bottom(), area.width(), 1, rightBottom);
        painter.fillRect(area.right(), area.top(), 1, area.height(), rightBottom);
        area.adjust(1, 1, -1, -1);
    };
    if (edge & 1)
        side(Face, DarkShadow3D);
    else if (edge & 2)
        side(Shadow3D, Highlight3D);
    if (edge & 4)
        side(Highlight3D, Shadow3D);
    else if (edge & 8)
        side(DarkShadow3D, Face);
}

} // namespace tarnwick

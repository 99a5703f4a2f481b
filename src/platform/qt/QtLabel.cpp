#include "platform/qt/QtLabel.h"

#include "platform/qt/QtLook.h"
#include "platform/qt/QtText.h"

#include <QAccessible>
#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

#include <algorithm>

namespace tarnwick {

PlainLabel::PlainLabel(const Label& label, QWidget& parent) : QLabel(&parent) {
    setTextFormat(Qt::PlainText);
    connect(this, &PlainLabel::Announced, this, [this] { // readers speak a notification when it appears
        QAccessibleEvent appears(this, QAccessible::ObjectShow);
        QAccessible::updateAccessibility(&appears);
    });
    setWordWrap(label.WordWrap);
    setAlignment(Qt::AlignTop | (label.Alignment == Alignment::Center ? Qt::AlignHCenter : Qt::AlignLeft));
}

bool PlainLabel::IsCut() const { return !wordWrap() && fontMetrics().horizontalAdvance(text()) > width(); }

bool PlainLabel::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip || !IsCut())
        return QLabel::event(event);
    QToolTip::showText(static_cast<const QHelpEvent&>(*event).globalPos(), LiteralToolTip(FromQt(text())), this);
    return true;
}

void PlainLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    QRect place = rect();
    QString shown = text();
    int flags = static_cast<int>(alignment());
    if (wordWrap()) {
        flags |= Qt::TextWordWrap;
    } else {
        flags |= Qt::TextSingleLine;
        shown = fontMetrics().elidedText(shown, Qt::ElideRight, width());
        // A font's room for accents may lie outside a low label, its letters may not.
        place.setTop(std::min(0, height() - fontMetrics().height()));
    }
    style()->drawItemText(&painter, place, flags, palette(), isEnabled(), shown, QPalette::WindowText);
}

void PlainLabel::Announce() {
    announced_ = true;
    emit Announced();
}

namespace {

class LabelControl : public QtControl {
public:
    LabelControl(Label& label, QWidget& parent)
        : QtControl(label, *new PlainLabel(label, parent)), wrapped_(label.WordWrap) {}

protected:
    void ShowCaption() override {
        auto& label = static_cast<PlainLabel&>(Real());
        label.setText(wrapped_ ? LinesOf(Model().Caption) : SingleLineOf(Model().Caption));
    }
    void ShowLast() override {
        auto& label = static_cast<PlainLabel&>(Real());
        if (label.isVisible() && announced_.Differs(static_cast<const Label&>(Model()).AnnounceRevision))
            label.Announce();
    }
    ColorRole DefaultBackColor() const override { return ColorRole::Transparent; }

private:
    const bool wrapped_;
    Shown<unsigned> announced_{0};
};

// A picture with one pixel of frame around it. The picture fills what the frame leaves, whatever pixels of the display
// that comes to.
class FramedPicture : public QLabel {
public:
    using QLabel::QLabel;

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        if (!pixmap().isNull()) {
            painter.fillRect(rect(), palette().windowText());
            painter.drawPixmap(rect().adjusted(1, 1, -1, -1), pixmap());
        }
        PaintOutline(painter, rect(), palette().windowText());
    }
};

class PictureControl : public QtControl {
public:
    PictureControl(PictureBox& control, QWidget& parent)
        : QtControl(control, *new FramedPicture(&parent)), control_(control), label_(static_cast<QLabel&>(Real())) {}

protected:
    void SyncKind() override {
        if (shown_.Differs(control_.Picture))
            label_.setPixmap(PictureOf(control_.Picture));
    }
    ColorRole DefaultBackColor() const override { return ColorRole::ButtonShadow; }

private:
    const PictureBox& control_;
    QLabel& label_;
    Shown<std::string> shown_;
};

} // namespace

std::unique_ptr<QtControl> MakeQtLabel(Label& label, QWidget& parent) {
    return std::make_unique<LabelControl>(label, parent);
}

std::unique_ptr<QtControl> MakeQtPicture(PictureBox& picture, QWidget& parent) {
    return std::make_unique<PictureControl>(picture, parent);
}

} // namespace tarnwick

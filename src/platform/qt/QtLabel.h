#pragma once

#include "platform/qt/QtControl.h"

#include <QLabel>

namespace tarnwick {

// Draws its text as it is, in its place: one line is cut with dots, while a screen reader gets all of it.
class PlainLabel : public QLabel {
    Q_OBJECT

public:
    PlainLabel(const Label& label, QWidget& parent);
    // A screen reader speaks its text, wherever the focus is.
    void Announce();
    bool IsAnnounced() const { return announced_; }

signals:
    void Announced();

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    bool IsCut() const;

    bool announced_ = false; // at least once
};

std::unique_ptr<QtControl> MakeQtLabel(Label& label, QWidget& parent);
std::unique_ptr<QtControl> MakeQtPicture(PictureBox& picture, QWidget& parent);

} // namespace tarnwick

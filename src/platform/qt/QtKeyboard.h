#pragma once

#include "window/Keyboard.h"

#include <QKeyEvent>
#include <QObject>

#include <optional>

namespace tarnwick {

// Knows of every key whether it is held down. A display repeats a held key as releases and presses, which Qt knows for
// what they are only if they come in together.
class HeldKeys : public QObject {
public:
    HeldKeys();

    bool IsRepeated(const QKeyEvent& press) const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void NotePress(const QKeyEvent& press);

    int key_ = 0;             // the last one that was pressed or released
    bool isDown_ = false;     // no release of it has come: the display drops one while no window has the focus
    bool isRepeated_ = false; // its last press was a repeat
    quint64 pressedAt_ = 0;   // ms of the display
    quint64 releasedAt_ = 0;
};

// The key as the model counts them; nothing for one that it has no rule for.
std::optional<KeyPress> KeyPressOf(const QKeyEvent& event, bool repeated);

} // namespace tarnwick

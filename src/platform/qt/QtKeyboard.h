#pragma once

#include "window/Keyboard.h"

#include <QKeyEvent>
#include <QObject>

#include <deque>
#include <optional>

namespace tarnwick {

// Knows of every key whether it is held down. A display repeats a held key as releases and presses, which Qt knows for
// what they are only if they come in together.
//
// With a screen reader on the bus, Qt shows it each key of the display first and, once it has answered, posts a copy
// that has lost its time. What was found out about the key of the display then holds for its copy.
class HeldKeys : public QObject {
public:
    HeldKeys() { ComeFirst(); }

    // Sees the display's keys before those that may take them away, even if they have come later.
    void ComeFirst();
    bool IsRepeated(const QKeyEvent& press) const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Press {
        int Key = 0;
        quint64 Time = 0; // ms of the display
        bool IsRepeated = false;
    };

    void NotePress(const QKeyEvent& press);
    void NoteCopy(const QKeyEvent& copy);

    Press last_;
    bool isDown_ = false;       // no release of it has come: the display drops one while no window has the focus
    quint64 releasedAt_ = 0;    // ms of the display
    std::deque<Press> presses_; // of the display, whose copies may be to come
    Press copied_;
};

// The key as the model counts them; nothing for one that it has no rule for.
std::optional<KeyPress> KeyPressOf(const QKeyEvent& event, bool repeated);

} // namespace tarnwick

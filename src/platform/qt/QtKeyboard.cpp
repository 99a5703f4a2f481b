#include "platform/qt/QtKeyboard.h"

#include "platform/qt/QtText.h"

#include <QApplication>
#include <QMessageBox>

#include <algorithm>

namespace tarnwick {

void HeldKeys::ComeFirst() { qApp->installEventFilter(this); }

bool HeldKeys::IsRepeated(const QKeyEvent& press) const {
    const Press& known = press.timestamp() == 0 ? copied_ : last_;
    return press.isAutoRepeat() || (known.Key == press.key() && known.Time != 0 &&
                                    (press.timestamp() == 0 || press.timestamp() == known.Time) && known.IsRepeated);
}

// A press comes by once for each object that it is handed to; all of them have the one time.
void HeldKeys::NotePress(const QKeyEvent& press) {
    // No finger lets go of a key and presses it again in this time; a display that repeats does both at once.
    constexpr quint64 quickestFinger = 10; // ms
    // After the first press the display waits before it repeats a key, at most this long (XKB's slowest usual setting).
    constexpr quint64 longestDelay = 1000;  // ms
    constexpr std::size_t mostCopies = 100; // that are still to come
    const quint64 now = press.timestamp();
    if (now == last_.Time && press.key() == last_.Key)
        return;
    const bool isSame = press.key() == last_.Key;
    last_ = {press.key(), now,
             isSame && (isDown_ ? now - last_.Time <= longestDelay : now - releasedAt_ <= quickestFinger)};
    isDown_ = true;
    presses_.push_back(last_);
    if (presses_.size() > mostCopies)
        presses_.pop_front();
}

// Copies come in the order of the keys. What was pressed before this one has come without a copy.
void HeldKeys::NoteCopy(const QKeyEvent& copy) {
    const auto of = std::ranges::find(presses_, copy.key(), &Press::Key);
    if (of == presses_.end())
        return;
    copied_ = *of;
    presses_.erase(presses_.begin(), of + 1);
}

// Qt's boxes would be answered by the key that has called them.
bool HeldKeys::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress && event->type() != QEvent::KeyRelease)
        return false;
    const auto& key = static_cast<const QKeyEvent&>(*event);
    if (key.type() == QEvent::KeyRelease) {
        if (key.timestamp() != 0) {
            last_.Key = key.key();
            releasedAt_ = key.timestamp();
            isDown_ = false;
        }
        return false;
    }
    if (key.timestamp() != 0)
        NotePress(key);
    else if (watched->isWindowType())
        NoteCopy(key);
    if (key.timestamp() != 0 && !watched->isWindowType())
        presses_.clear(); // it has come by itself, and so have all before it
    const auto* widget = qobject_cast<const QWidget*>(watched);
    return widget != nullptr && qobject_cast<const QMessageBox*>(widget->window()) != nullptr && IsRepeated(key);
}

std::optional<KeyPress> KeyPressOf(const QKeyEvent& event, bool repeated) {
    const Qt::KeyboardModifiers held = event.modifiers();
    KeyPress key{
        .Shift = held.testFlag(Qt::ShiftModifier), .Alt = held.testFlag(Qt::AltModifier), .Repeated = repeated};
    const bool plain = !held.testFlag(Qt::ControlModifier) && !key.Alt;
    const auto as = [&key](Key which) {
        key.Which = which;
        return std::optional(key);
    };
    switch (event.key()) {
    case Qt::Key_Tab:
        return plain ? as(Key::Tab) : std::nullopt;
    case Qt::Key_Backtab:
        key.Shift = true;
        return plain ? as(Key::Tab) : std::nullopt;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return as(Key::Enter);
    case Qt::Key_Space:
        return as(Key::Space);
    case Qt::Key_Left:
        return as(Key::Left);
    case Qt::Key_Right:
        return as(Key::Right);
    case Qt::Key_Up:
        return as(Key::Up);
    case Qt::Key_Down:
        return as(Key::Down);
    case Qt::Key_Menu:
        return as(Key::Menu);
    case Qt::Key_F10:
        return key.Shift ? as(Key::Menu) : std::nullopt;
    default:
        break;
    }
    // With Alt held, some keyboards give a letter no text.
    constexpr int LastCharacter = 0xFFFF;
    if (event.key() <= Qt::Key_Space || event.key() > LastCharacter || held.testFlag(Qt::ControlModifier))
        return std::nullopt;
    key.Letter = FromQt(QString(QChar(event.key())));
    return as(Key::Letter);
}

} // namespace tarnwick

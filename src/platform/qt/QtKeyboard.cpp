#include "platform/qt/QtKeyboard.h"

#include "platform/qt/QtText.h"

#include <QApplication>
#include <QMessageBox>

namespace tarnwick {

HeldKeys::HeldKeys() { qApp->installEventFilter(this); }

bool HeldKeys::IsRepeated(const QKeyEvent& press) const {
    return press.isAutoRepeat() || (press.timestamp() == pressedAt_ && isRepeated_);
}

// A press comes by once for each object that it is handed to; all of them have the one time.
void HeldKeys::NotePress(const QKeyEvent& press) {
    constexpr quint64 quickestFinger = 10; // ms
    constexpr quint64 longestDelay = 1000; // ms, before a display repeats a key
    const quint64 now = press.timestamp();
    if (now == 0 || (now == pressedAt_ && press.key() == key_))
        return;
    isRepeated_ =
        press.key() == key_ && (isDown_ ? now - pressedAt_ <= longestDelay : now - releasedAt_ <= quickestFinger);
    key_ = press.key();
    pressedAt_ = now;
    isDown_ = true;
}

// Qt's boxes would be answered by the key that has called them.
bool HeldKeys::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress && event->type() != QEvent::KeyRelease)
        return false;
    const auto& key = static_cast<const QKeyEvent&>(*event);
    if (key.type() == QEvent::KeyRelease) {
        key_ = key.key();
        releasedAt_ = key.timestamp();
        isDown_ = false;
        return false;
    }
    NotePress(key);
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

#include "platform/qt/QtKeyboard.h"

#include "platform/qt/QtText.h"

#include <QKeyEvent>

namespace tarnwick {

std::optional<KeyPress> KeyPressOf(const QKeyEvent& event) {
    const Qt::KeyboardModifiers held = event.modifiers();
    KeyPress key{.Shift = held.testFlag(Qt::ShiftModifier),
                 .Alt = held.testFlag(Qt::AltModifier),
                 .Repeated = event.isAutoRepeat()};
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

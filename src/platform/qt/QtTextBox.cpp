#include "platform/qt/QtTextBox.h"

#include "platform/qt/QtText.h"
#include "platform/qt/QtWindow.h"

#include <QLineEdit>
#include <QSignalBlocker>

#include <utility>

namespace tarnwick {

QtTextBox::QtTextBox(TextBox& field, QWidget& parent, QtWindow& window)
    : QtControl(field, *new QLineEdit(&parent)), field_(field), window_(window),
      edit_(static_cast<QLineEdit&>(Real())) {
    edit_.setAlignment(field.Alignment == Alignment::Center ? Qt::AlignCenter : Qt::AlignLeft);
    // A screen reader's change is no edit to Qt.
    QObject::connect(&edit_, &QLineEdit::textChanged, &window, [this] { TakeText(); });
}

void QtTextBox::SyncKind() {
    const QSignalBlocker noEdit(edit_);
    if (shown_.Differs(field_.Text))
        edit_.setText(SingleLineOf(field_.Text));
    if (selection_.Differs(field_.SelectRevision))
        edit_.selectAll();
}

void QtTextBox::Detach() { edit_.disconnect(&window_); }

// What is not taken leaves the field and its cursor as if it had not been typed.
void QtTextBox::TakeText() {
    window_.Pass([&field = field_, text = FromQt(edit_.text())](Input& input) { input.Edit(field, text); });
    shown_.Differs(field_.Text);
    const QString taken = SingleLineOf(field_.Text);
    if (edit_.text() == taken)
        return;
    const auto more = static_cast<int>(edit_.text().size() - taken.size());
    const int place = edit_.cursorPosition() - more;
    const QSignalBlocker noEdit(edit_);
    edit_.setText(taken);
    edit_.setCursorPosition(place);
}

} // namespace tarnwick

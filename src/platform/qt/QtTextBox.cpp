#include "platform/qt/QtTextBox.h"

#include "platform/qt/QtText.h"
#include "platform/qt/QtWindow.h"

#include <QLineEdit>
#include <QSignalBlocker>

#include <utility>

namespace tarnwick {

QtTextBox::QtTextBox(TextBox& field, QWidget& parent, QtWindow& window)
    : QtControl(field, *new QLineEdit(&parent)), field_(field), window_(window),
      edit_(static_cast<QLineEdit&>(Widget())) {
    edit_.setAlignment(field.Alignment == Alignment::Center ? Qt::AlignCenter : Qt::AlignLeft);
    // A screen reader's change is no edit to Qt.
    QObject::connect(&edit_, &QLineEdit::textChanged, &window, [this] { TakeText(); });
}

void QtTextBox::SyncKind() {
    const QSignalBlocker noEdit(edit_);
    if (shown_ != field_.Text) {
        shown_ = field_.Text;
        edit_.setText(SingleLineOf(shown_));
    }
    if (selectRevision_ != field_.SelectRevision) {
        selectRevision_ = field_.SelectRevision;
        edit_.selectAll();
    }
}

// A text that is not taken leaves the field and its cursor as they were.
void QtTextBox::TakeText() {
    const std::string text = FromQt(edit_.text());
    bool taken = false;
    window_.Pass([&](Input& input) {
        taken = input.Edit(field_, text);
        if (taken)
            shown_ = text;
    });
    if (taken)
        return;
    const QString before = SingleLineOf(shown_);
    const auto added = static_cast<int>(edit_.text().size() - before.size());
    const int place = edit_.cursorPosition() - added;
    const QSignalBlocker noEdit(edit_);
    edit_.setText(before);
    edit_.setCursorPosition(place);
}

} // namespace tarnwick

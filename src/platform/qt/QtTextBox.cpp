#include "platform/qt/QtTextBox.h"

#include "platform/qt/QtText.h"
#include "platform/qt/QtWindow.h"

#include <QLineEdit>

#include <utility>

namespace tarnwick {

QtTextBox::QtTextBox(TextBox& field, QWidget& parent, QtWindow& window)
    : QtControl(field, *new QLineEdit(&parent)), field_(field), window_(window),
      edit_(static_cast<QLineEdit&>(Widget())) {
    edit_.setAlignment(field.Alignment == Alignment::Center ? Qt::AlignCenter : Qt::AlignLeft);
    // A screen reader's change is no edit to Qt.
    QObject::connect(&edit_, &QLineEdit::textChanged, &window, [this] {
        if (!writing_)
            TakeText();
    });
}

void QtTextBox::SyncKind() {
    writing_ = true;
    if (shown_ != field_.Text) {
        shown_ = field_.Text;
        edit_.setText(SingleLineOf(shown_));
    }
    if (selectRevision_ != field_.SelectRevision) {
        selectRevision_ = field_.SelectRevision;
        edit_.selectAll();
    }
    writing_ = false;
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
    writing_ = true;
    edit_.setText(before);
    edit_.setCursorPosition(place);
    writing_ = false;
}

} // namespace tarnwick

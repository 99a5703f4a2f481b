#include "platform/qt/QtAccess.h"

#include "platform/qt/QtLabel.h"
#include "platform/qt/QtWindow.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QAccessibleWidget>
#include <QCheckBox>
#include <QGroupBox>
#include <QPushButton>
#include <QRadioButton>

namespace tarnwick {

namespace {

// A caption without the mark of its access key.
QString SpokenOf(QString caption) {
    for (qsizetype at = caption.indexOf(u'&'); at >= 0; at = caption.indexOf(u'&', at + 1))
        caption.remove(at, 1);
    return caption;
}

// Presses the widget of a control from the message loop: the reader waits for its call, and a handler may open a box
// and wait for its answer.
void PressLater(QWidget& widget) {
    QMetaObject::invokeMethod(widget.window(), "PressForReader", Qt::QueuedConnection, Q_ARG(QWidget*, &widget));
}

class ReadLabel : public QAccessibleWidget {
public:
    ReadLabel(PlainLabel& label, QtWindow& window)
        : QAccessibleWidget(&label, QAccessible::StaticText), label_(label), window_(window) {}

    QAccessible::Role role() const override {
        return window_.IsClickable(label_) ? QAccessible::PushButton
               : label_.IsAnnounced()      ? QAccessible::Notification
                                           : QAccessible::StaticText;
    }
    QString text(QAccessible::Text what) const override {
        const QString name = label_.text().isEmpty() ? label_.accessibleName() : label_.text();
        return what == QAccessible::Name ? name : QAccessibleWidget::text(what);
    }
    QStringList actionNames() const override {
        return (window_.IsClickable(label_) ? QStringList(pressAction()) : QStringList()) +
               QAccessibleWidget::actionNames();
    }
    void doAction(const QString& name) override {
        if (name == pressAction())
            PressLater(label_);
        else
            QAccessibleWidget::doAction(name);
    }

private:
    PlainLabel& label_;
    QtWindow& window_;
};

// A window or a frame with the controls in it, in the order of the model.
class ReadContainer : public QAccessibleWidget {
public:
    ReadContainer(QWidget& container, const QtWindow& window, QAccessible::Role role)
        : QAccessibleWidget(&container, role), window_(window) {}

    int childCount() const override { return static_cast<int>(Children().size()); }
    QAccessibleInterface* child(int index) const override {
        return QAccessible::queryAccessibleInterface(Children().value(index));
    }
    int indexOfChild(const QAccessibleInterface* child) const override {
        return child == nullptr ? -1 : static_cast<int>(Children().indexOf(child->object()));
    }

protected:
    QObjectList Children() const { return window_.Readable(*widget()); }

private:
    const QtWindow& window_;
};

class ReadFrame : public ReadContainer {
public:
    ReadFrame(QGroupBox& frame, const QtWindow& window) : ReadContainer(frame, window, QAccessible::Grouping) {}

    // Without the blanks that make room in a frame's line.
    QString text(QAccessible::Text what) const override {
        return what == QAccessible::Name ? SpokenOf(static_cast<const QGroupBox*>(widget())->title()).trimmed()
                                         : ReadContainer::text(what);
    }
};

class ReadWindow : public ReadContainer {
public:
    explicit ReadWindow(QtWindow& window) : ReadContainer(window, window, QAccessible::Window) {}

    QAccessible::Role role() const override { return widget()->isModal() ? QAccessible::Dialog : QAccessible::Window; }
    QAccessible::State state() const override {
        QAccessible::State state = ReadContainer::state();
        state.modal = widget()->isModal();
        return state;
    }
};

QAccessible::Role RoleOf(const QAbstractButton& button) {
    return qobject_cast<const QCheckBox*>(&button) != nullptr      ? QAccessible::CheckBox
           : qobject_cast<const QRadioButton*>(&button) != nullptr ? QAccessible::RadioButton
                                                                   : QAccessible::PushButton;
}

class ReadButton : public QAccessibleWidget {
public:
    explicit ReadButton(QAbstractButton& button) : QAccessibleWidget(&button, RoleOf(button)), button_(button) {}

    QString text(QAccessible::Text what) const override {
        QString key = QKeySequence::mnemonic(button_.text()).toString(QKeySequence::NativeText);
        switch (what) {
        case QAccessible::Name:
            return SpokenOf(button_.text());
        case QAccessible::Accelerator:
            return key;
        default:
            return QAccessibleWidget::text(what);
        }
    }
    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        const auto* push = qobject_cast<const QPushButton*>(&button_);
        state.checkable = button_.isCheckable();
        state.checked = button_.isChecked();
        state.defaultButton = push != nullptr && push->isDefault();
        return state;
    }
    QStringList actionNames() const override {
        return QStringList(button_.isCheckable() ? toggleAction() : pressAction()) + QAccessibleWidget::actionNames();
    }
    void doAction(const QString& name) override {
        if (name == pressAction() || name == toggleAction())
            PressLater(button_);
        else
            QAccessibleWidget::doAction(name);
    }
    QStringList keyBindingsForAction(const QString& name) const override {
        return name == pressAction() || name == toggleAction() ? QStringList(text(QAccessible::Accelerator))
                                                               : QAccessibleWidget::keyBindingsForAction(name);
    }

private:
    QAbstractButton& button_;
};

QAccessibleInterface* MakeReaderInterface(const QString& /*className*/, QObject* object) {
    const auto* widget = qobject_cast<QWidget*>(object);
    auto* window = widget == nullptr ? nullptr : qobject_cast<QtWindow*>(widget->window());
    if (window == nullptr)
        return nullptr;
    if (auto* label = qobject_cast<PlainLabel*>(object); label != nullptr)
        return new ReadLabel(*label, *window);
    if (auto* button = qobject_cast<QAbstractButton*>(object); button != nullptr)
        return new ReadButton(*button);
    if (auto* frame = qobject_cast<QGroupBox*>(object); frame != nullptr)
        return new ReadFrame(*frame, *window);
    return object == window ? new ReadWindow(*window) : nullptr;
}

} // namespace

void UseReaderInterfaces() { QAccessible::installFactory(MakeReaderInterface); }

} // namespace tarnwick

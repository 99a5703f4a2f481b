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

class ReadLabel : public QAccessibleWidget {
public:
    explicit ReadLabel(PlainLabel& label)
        : QAccessibleWidget(&label, label.IsAnnounced() ? QAccessible::Notification : QAccessible::StaticText),
          label_(label) {}

    QString text(QAccessible::Text what) const override {
        return what == QAccessible::Name ? label_.text() : QAccessibleWidget::text(what);
    }

private:
    PlainLabel& label_;
};

// A window or a frame with the widgets that are shown in it; lines and outlines are no things to read.
class ReadContainer : public QAccessibleWidget {
public:
    ReadContainer(QWidget& container, QAccessible::Role role) : QAccessibleWidget(&container, role) {}

    int childCount() const override { return static_cast<int>(Children().size()); }
    QAccessibleInterface* child(int index) const override {
        return QAccessible::queryAccessibleInterface(Children().value(index));
    }
    int indexOfChild(const QAccessibleInterface* child) const override {
        return child == nullptr ? -1 : static_cast<int>(Children().indexOf(child->object()));
    }
    QString text(QAccessible::Text what) const override {
        const auto* frame = qobject_cast<const QGroupBox*>(widget());
        return frame != nullptr && what == QAccessible::Name ? SpokenOf(frame->title()) : QAccessibleWidget::text(what);
    }

private:
    QObjectList Children() const {
        QObjectList shown;
        for (QObject* child : widget()->children())
            if (const auto* part = qobject_cast<const QWidget*>(child);
                part != nullptr && !part->isWindow() && !part->isHidden() &&
                !part->testAttribute(Qt::WA_TransparentForMouseEvents))
                shown.append(child);
        return shown;
    }
};

QAccessible::Role RoleOf(const QAbstractButton& button) {
    return qobject_cast<const QCheckBox*>(&button) != nullptr      ? QAccessible::CheckBox
           : qobject_cast<const QRadioButton*>(&button) != nullptr ? QAccessible::RadioButton
                                                                   : QAccessible::PushButton;
}

class ReadButton : public QAccessibleWidget {
public:
    ReadButton(QAbstractButton& button, QtWindow& window)
        : QAccessibleWidget(&button, RoleOf(button)), button_(button), window_(window) {}

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
            // The reader waits for this call, and a handler may open a box and wait for its answer.
            QMetaObject::invokeMethod(&window_, "PressForReader", Qt::QueuedConnection, Q_ARG(QWidget*, &button_));
        else
            QAccessibleWidget::doAction(name);
    }
    QStringList keyBindingsForAction(const QString& name) const override {
        return name == pressAction() || name == toggleAction() ? QStringList(text(QAccessible::Accelerator))
                                                               : QAccessibleWidget::keyBindingsForAction(name);
    }

private:
    QAbstractButton& button_;
    QtWindow& window_;
};

QAccessibleInterface* MakeReaderInterface(const QString& /*className*/, QObject* object) {
    if (auto* label = qobject_cast<PlainLabel*>(object); label != nullptr)
        return new ReadLabel(*label);
    if (auto* button = qobject_cast<QAbstractButton*>(object); button != nullptr)
        if (auto* window = qobject_cast<QtWindow*>(button->window()); window != nullptr)
            return new ReadButton(*button, *window);
    if (auto* window = qobject_cast<QtWindow*>(object); window != nullptr)
        return new ReadContainer(*window, QAccessible::Dialog);
    if (auto* frame = qobject_cast<QGroupBox*>(object); frame != nullptr)
        return new ReadContainer(*frame, QAccessible::Grouping);
    return nullptr;
}

} // namespace

void UseReaderInterfaces() { QAccessible::installFactory(MakeReaderInterface); }

} // namespace tarnwick

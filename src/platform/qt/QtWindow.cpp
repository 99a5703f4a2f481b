#include "platform/qt/QtWindow.h"

#include "platform/qt/QtControl.h"
#include "platform/qt/QtLook.h"
#include "platform/qt/QtText.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <QWindow>

#include <algorithm>

namespace tarnwick {

namespace {

// A window type that stays out of the task bar, or the plain one that goes there.
Qt::WindowFlags FlagsOf(const Window& window) {
    Qt::WindowFlags flags = Qt::CustomizeWindowHint | Qt::MSWindowsFixedSizeDialogHint;
    switch (window.Border) {
    case FrameStyle::None:
        flags |= Qt::FramelessWindowHint | (window.InTaskBar ? Qt::Window : Qt::SplashScreen);
        break;
    case FrameStyle::FixedSingle:
        flags |= Qt::Window | Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowMinimizeButtonHint |
                 Qt::WindowCloseButtonHint;
        break;
    case FrameStyle::FixedTool:
        flags |= Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint |
                 (window.InTaskBar ? Qt::Window : Qt::Tool);
        break;
    }
    if (window.TopMost)
        flags |= Qt::WindowStaysOnTopHint;
    return flags;
}

} // namespace

QtWindow::QtWindow(Window& window, QtPump& pump)
    : QDialog(nullptr, FlagsOf(window)), window_(&window), pump_(pump), options_(this) {
    BuildFrame();
    BuildControls();
    SetTabOrder();
}

// The widgets go first: what they signal on their way out still finds the objects that listen.
QtWindow::~QtWindow() { qDeleteAll(findChildren<QWidget*>(Qt::FindDirectChildrenOnly)); }

void QtWindow::BuildFrame() {
    setObjectName(SingleLineOf(window_->Name));
    setWindowTitle(LiteralTitle(window_->Title));
    if (!window_->Icon.empty())
        setWindowIcon(IconOf(window_->Icon));
    setFixedSize(PixelsOf(window_->ClientWidth), PixelsOf(window_->ClientHeight));
    QPalette colors = palette();
    colors.setColor(QPalette::Window, ColorOf(window_->BackColor, ColorRole::ButtonFace));
    setPalette(colors);
    setMouseTracking(static_cast<bool>(window_->MouseMove));
}

void QtWindow::BuildControls() {
    for (Control* control : window_->Controls) {
        const QtControl* container = Find(control->Container);
        QWidget& parent = container != nullptr ? container->Widget() : *this;
        controls_.push_back(MakeQtControl(*control, parent, *this));
        for (QWidget* part : controls_.back()->Parts())
            part->installEventFilter(this);
    }
}

void QtWindow::SetTabOrder() {
    std::vector<const QtControl*> reached;
    for (const auto& control : controls_) {
        if (control->Model().TabIndex >= 0)
            reached.push_back(control.get());
        else if (control->Widget().focusPolicy() != Qt::NoFocus)
            control->Widget().setFocusPolicy(Qt::ClickFocus);
    }
    std::ranges::stable_sort(reached, {}, [](const QtControl* control) { return control->Model().TabIndex; });
    for (std::size_t place = 1; place < reached.size(); ++place)
        QWidget::setTabOrder(&reached[place - 1]->Widget(), &reached[place]->Widget());
    if (!reached.empty())
        reached.front()->Widget().setFocus();
}

QtControl* QtWindow::Find(const QObject* widget) const {
    for (const auto& control : controls_)
        if (std::ranges::find(control->Parts(), widget) != control->Parts().end())
            return control.get();
    return nullptr;
}

QtControl* QtWindow::Find(const Control* control) const {
    const auto found =
        std::ranges::find_if(controls_, [control](const auto& shown) { return &shown->Model() == control; });
    return found != controls_.end() ? found->get() : nullptr;
}

void QtWindow::Sync() {
    if (window_ == nullptr)
        return;
    for (const auto& control : controls_)
        control->Sync();
    if (shownFocus_ != window_->FocusRevision) {
        shownFocus_ = window_->FocusRevision;
        if (const QtControl* control = Find(window_->FocusRequest); control != nullptr)
            control->Widget().setFocus();
    }
}

void QtWindow::ShowInFront() {
    if (!placed_) {
        placed_ = true;
        const QRect desktop = screen()->availableGeometry();
        move(desktop.center() - rect().center());
    }
    // What stays out of the task bar lies over the window that has called it.
    if (const QWidget* caller = QApplication::activeWindow(); caller != nullptr && caller != this && isModal()) {
        winId();
        windowHandle()->setTransientParent(caller->windowHandle());
    }
    show();
    raise();
    activateWindow();
}

void QtWindow::Detach() {
    for (const auto& control : controls_)
        control->Detach();
    window_ = nullptr;
    hide();
    emit Detached();
}

QPoint QtWindow::MenuPlace() const { return menuPlace_.value_or(QCursor::pos()); }

void QtWindow::ChooseOption(const Control& chosen) {
    if (!Takes(chosen))
        return;
    for (Control* control : window_->Controls)
        if (control->Kind == ControlKind::OptionButton)
            static_cast<OptionButton*>(control)->Value = control == &chosen;
    Raise(chosen.Click);
}

// All input of all controls comes by here first.
bool QtWindow::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::KeyPress:
    case QEvent::Shortcut:
        pump_.BeforeInput();
        break;
    case QEvent::MouseMove:
        break;
    default:
        return false;
    }
    if (const auto* mouse = dynamic_cast<QMouseEvent*>(event); mouse != nullptr && window_ != nullptr)
        if (const QtControl* control = Find(watched); control != nullptr)
            HandleMouse(control->Model(), control->Widget(), *mouse);
    return false;
}

void QtWindow::HandleMouse(const Control& control, const QWidget& widget, const QMouseEvent& event) {
    if (event.type() == QEvent::MouseMove) {
        if (control.MouseMove)
            Raise(control.MouseMove);
    } else if (event.type() == QEvent::MouseButtonRelease && event.button() == Qt::LeftButton &&
               control.Kind == ControlKind::Label && widget.rect().contains(event.position().toPoint())) {
        Raise(control.Click);
    }
}

// The model decides what a click on the close box does.
void QtWindow::closeEvent(QCloseEvent* event) {
    event->ignore();
    if (window_ == nullptr || pump_.Closed())
        return;
    const QtPump::HandlerScope scope(pump_);
    window_->Unload();
}

// A dialog of Qt's would close itself on Esc.
void QtWindow::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Cancel))
        event->ignore();
    else
        QDialog::keyPressEvent(event);
}

void QtWindow::mouseMoveEvent(QMouseEvent*) {
    if (window_ != nullptr)
        Raise(window_->MouseMove);
}

void QtWindow::paintEvent(QPaintEvent*) {
    if (window_ == nullptr || window_->Edge == 0)
        return;
    QPainter painter(this);
    PaintEdge(painter, rect(), window_->Edge);
}

} // namespace tarnwick

#include "platform/qt/QtWindow.h"

#include "platform/qt/QtControl.h"
#include "platform/qt/QtEventTime.h"
#include "platform/qt/QtKeyboard.h"
#include "platform/qt/QtLook.h"
#include "platform/qt/QtText.h"
#include "window/Keyboard.h"
#include "window/Reach.h"

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

// A window type that stays out of the task bar, or the plain one that is in it.
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
    return flags;
}

bool TakesMouseMoves(const Window& window) {
    return window.MouseMove || std::ranges::any_of(window.Controls, [](const Control* control) {
               return static_cast<bool>(control->MouseMove);
           });
}

} // namespace

QtWindow::QtWindow(Window& window, QtPump& pump, HeldKeys& heldKeys)
    : QDialog(nullptr, FlagsOf(window)), window_(&window), pump_(pump), heldKeys_(heldKeys),
      input_(std::make_shared<Input>(window)) {
    setFixedSize(PixelsOf(window.ClientWidth), PixelsOf(window.ClientHeight));
    BuildControls();
    installEventFilter(this);
}

// The widgets go first: what they signal on their way out still finds the objects that listen.
QtWindow::~QtWindow() { qDeleteAll(findChildren<QWidget*>(Qt::FindDirectChildrenOnly)); }

void QtWindow::BuildControls() {
    for (Control* control : window_->Controls) {
        const QtControl* container = Find(control->Container);
        QWidget& parent = container != nullptr ? container->Real() : *this;
        controls_.push_back(MakeQtControl(*control, parent, *this));
        for (QWidget* part : controls_.back()->Parts())
            part->installEventFilter(this);
    }
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

// The focus is looked at first and set last: hiding or disabling its widget makes Qt pass it on to one of its own
// choice, where the model may want another. Texts and marks come before visibility, so that nothing old is ever
// painted.
void QtWindow::Sync() {
    if (window_ == nullptr)
        return;
    const QtControl* focused = Find(focusWidget()); // a widget that is hidden loses the focus
    SyncFrame();
    for (const auto& control : controls_)
        control->Sync(IsShown(*window_, control->Model()));
    SyncFocus(focused == nullptr ? nullptr : &focused->Model());
}

void QtWindow::SyncFrame() {
    if (title_.Differs(window_->Title))
        setWindowTitle(LiteralTitle(window_->Title));
    if (icon_.Differs(window_->Icon))
        setWindowIcon(IconOf(window_->Icon));
    if (backColor_.Differs(window_->BackColor)) {
        QPalette colors = palette();
        colors.setColor(QPalette::Window, ColorOf(window_->BackColor, ColorRole::ButtonFace));
        setPalette(colors);
    }
    if (edge_.Differs(window_->Edge))
        update();
    if (const bool wanted = TakesMouseMoves(*window_); followsMouse_.Differs(wanted))
        FollowMouse(wanted);
    if (topMost_.Differs(window_->TopMost)) {
        // Not setWindowFlags(), which hides a window.
        overrideWindowFlags(windowFlags().setFlag(Qt::WindowStaysOnTopHint, window_->TopMost));
        if (windowHandle() != nullptr)
            windowHandle()->setFlag(Qt::WindowStaysOnTopHint, window_->TopMost);
    }
}

void QtWindow::FollowMouse(bool follow) {
    setMouseTracking(follow);
    for (const auto& control : controls_)
        for (QWidget* part : control->Parts())
            part->setMouseTracking(follow);
}

void QtWindow::SyncFocus(const Control* last) {
    const bool asked = focusRequest_.Differs(window_->FocusRevision);
    const QtControl* wanted = Find(FocusAfter(*window_, asked ? window_->FocusRequest : last));
    if (wanted == nullptr) {
        if (focusWidget() != nullptr)
            focusWidget()->clearFocus();
    } else if (focusWidget() != &wanted->Real()) {
        wanted->Real().setFocus();
    }
}

void QtWindow::ShowInFront() {
    if (!placed_) {
        placed_ = true;
        Center();
    }
    // What stays out of the task bar lies over the window that has called it.
    if (const QWidget* caller = QApplication::activeWindow(); caller != nullptr && caller != this && isModal()) {
        winId();
        windowHandle()->setTransientParent(caller->windowHandle());
    }
    heldKeys_.ComeFirst();
    show();
    raise();
    activateWindow();
}

// Its frame belongs to the window, but is known only once it shows.
void QtWindow::Center() {
    const QMargins frame = windowHandle() == nullptr ? QMargins() : windowHandle()->frameMargins();
    QRect whole = rect().marginsAdded(frame);
    whole.moveCenter(screen()->availableGeometry().center());
    place_ = whole.topLeft();
    move(*place_);
}

void QtWindow::Detach() {
    for (const auto& control : controls_)
        control->Detach();
    window_ = nullptr;
    input_.reset();
    hide();
    emit Detached();
}

QPoint QtWindow::MenuPlace() const { return menuPlace_.value_or(QCursor::pos()); }

const std::string& QtWindow::SeenCaption(const QtControl& control) {
    return control.CaptionAt(std::exchange(inputAt_, {}).value_or(services().Clock.Now()));
}

void QtWindow::Press(const QtControl& control) {
    Pass([&model = control.Model(), seen = SeenCaption(control)](Input& input) { input.Press(model, seen); });
}

void QtWindow::Click(const QtControl& control) {
    Pass([&model = control.Model(), seen = SeenCaption(control)](Input& input) { input.Click(model, seen); });
}

void QtWindow::PressAndClick(const QtControl& control) {
    Pass([&model = control.Model(), seen = SeenCaption(control)](Input& input) { input.PressAndClick(model, seen); });
}

QObjectList QtWindow::Readable(const QWidget& container) const {
    QObjectList readable;
    if (window_ == nullptr)
        return readable;
    for (const Control* control : ReadingOrder(*window_)) {
        const QtControl* shown = Find(control);
        if (shown != nullptr && shown->Real().parentWidget() == &container && !shown->Real().isHidden() &&
            IsRead(*control))
            readable.append(&shown->Real());
    }
    return readable;
}

bool QtWindow::IsClickable(const QWidget& widget) const {
    const QtControl* control = Find(&widget);
    return control != nullptr && static_cast<bool>(control->Model().Click);
}

void QtWindow::PressForReader(QWidget* widget) {
    inputAt_.reset();
    if (const QtControl* control = Find(widget); control != nullptr)
        PressAndClick(*control);
}

// The model is asked about what the user saw, and the widget meets what the model says now.
void QtWindow::BeforeInput(const QEvent& event) {
    inputAt_ = TimeOf(event);
    pump_.BeforeInput();
}

// All input of the window and of its controls comes by here first.
bool QtWindow::eventFilter(QObject* watched, QEvent* event) {
    if (window_ == nullptr)
        return false;
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseButtonRelease:
        BeforeInput(*event);
        if (window_ != nullptr)
            if (const QtControl* control = Find(watched); control != nullptr)
                HandleMouse(*control, static_cast<const QMouseEvent&>(*event));
        return false;
    case QEvent::MouseMove:
        MoveMouse(static_cast<const QMouseEvent&>(*event));
        return false;
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
        if (pump_.State().OnlyPaints()) {
            pump_.Keep(*watched, *event);
            return true;
        }
        if (event->type() == QEvent::KeyRelease)
            return false;
        BeforeInput(*event);
        return HandleKey(static_cast<const QKeyEvent&>(*event));
    default:
        return false;
    }
}

// A label is no button to Qt.
void QtWindow::HandleMouse(const QtControl& control, const QMouseEvent& event) {
    const bool label = control.Model().Kind == ControlKind::Label;
    const bool inside = control.Real().rect().contains(event.position().toPoint());
    if (event.button() != Qt::LeftButton)
        return;
    if (label && event.type() != QEvent::MouseButtonRelease)
        Press(control);
    else if (event.type() == QEvent::MouseButtonRelease && (label || !inside))
        Pass([over = inside ? &control.Model() : nullptr](Input& input) { input.Release(over); });
}

void QtWindow::MoveMouse(const QMouseEvent& event) {
    const QPoint place = mapFromGlobal(event.globalPosition().toPoint());
    Pass([place](Input& input) { input.MoveMouse(TwipsOf(place.x()), TwipsOf(place.y())); });
}

bool QtWindow::HandleKey(const QKeyEvent& event) {
    if (window_ == nullptr)
        return true;
    const std::optional<KeyPress> key = KeyPressOf(event, heldKeys_.IsRepeated(event));
    const QtControl* focused = Find(focusWidget());
    if (!key)
        return false;
    const KeyEffect effect = EffectOf(*key, *window_, focused == nullptr ? nullptr : &focused->Model());
    if (const QtControl* next = Find(effect.Focus); next != nullptr)
        next->Real().setFocus(Qt::TabFocusReason);
    if (const QtControl* pressed = Find(effect.Press); pressed != nullptr)
        PressAndClick(*pressed);
    else if (QtControl* grid = Find(effect.OpenMenu); grid != nullptr)
        grid->OpenMenu();
    return effect.Handled;
}

// The model decides what a click on the close box does.
void QtWindow::closeEvent(QCloseEvent* event) {
    event->ignore();
    Pass([](Input& input) { input.Close(); });
}

// A dialog of Qt's would close itself on Esc.
void QtWindow::keyPressEvent(QKeyEvent* event) { event->ignore(); }

void QtWindow::paintEvent(QPaintEvent*) {
    if (place_ && !windowHandle()->frameMargins().isNull()) {
        // Nobody has moved it: the frame is there, or the inside until Qt knows that the frame has moved it.
        if (frameGeometry().topLeft() == *place_ || geometry().topLeft() == *place_)
            Center();
        place_.reset();
    }
    QPainter painter(this);
    PaintEdge(painter, rect(), window_ == nullptr ? 0 : window_->Edge);
}

} // namespace tarnwick

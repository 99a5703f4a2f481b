#pragma once

#include "platform/qt/QtKeyboard.h"
#include "platform/qt/QtPump.h"
#include "window/Input.h"
#include "window/Shown.h"
#include "window/Window.h"

#include <QDialog>

#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace tarnwick {

class QtControl;

// The real window of any window of the model, built from its fields; a dialog, for its look of default buttons.
class QtWindow : public QDialog {
    Q_OBJECT

public:
    QtWindow(Window& window, QtPump& pump, HeldKeys& heldKeys);
    ~QtWindow() override;

    bool Shows(const Window& window) const { return window_ == &window; }
    // Brings the real window in line with the model.
    void Sync();
    void ShowInFront();
    // The model's window is given up: nothing of it is read or raised any more.
    void Detach();

    // Hands what the user does to the model, which decides what follows: at once, or later while the program only
    // paints, so that `act` holds no reference to what may have gone by then. A control of the model stays until then.
    template <class Act> void Pass(Act act) {
        pump_.Handle([window = std::weak_ptr(input_), act = std::move(act)] {
            if (const std::shared_ptr<Input> input = window.lock())
                act(*input);
        });
    }
    // As Pass(); a menu that a handler opens is at `place` on the screen.
    template <class Act> void PassAt(QPoint place, Act act) {
        Pass([this, place, act = std::move(act)](Input& input) {
            menuPlace_ = place;
            act(input);
            menuPlace_.reset();
        });
    }
    QPoint MenuPlace() const;

    // The mouse or a key presses a control, and lets it go over it.
    void Press(const QtControl& control);
    void Click(const QtControl& control);
    // The widgets in `container`, which is the window or a frame of it, as a screen reader goes through them.
    QObjectList Readable(const QWidget& container) const;
    // Whether a click on the control has an effect.
    bool IsClickable(const QWidget& widget) const;
    // A screen reader's action on a control's widget.
    Q_INVOKABLE void PressForReader(QWidget* widget);

signals:
    void Detached();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    bool focusNextPrevChild(bool /*next*/) override { return false; } // the model has the order
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void BuildControls();
    void SyncFrame();
    void FollowMouse(bool follow);
    void SyncFocus(const Control* last);
    void Center();
    QtControl* Find(const QObject* widget) const;
    QtControl* Find(const Control* control) const;
    void BeforeInput(const QEvent& event);
    void HandleMouse(const QtControl& control, const QMouseEvent& event);
    void MoveMouse(const QMouseEvent& event);
    void PressAndClick(const QtControl& control);
    bool HandleKey(const QKeyEvent& event);
    // What a control showed when the event that is being handled happened.
    const std::string& SeenCaption(const QtControl& control);

    Window* window_; // nullptr: the model's window has gone
    QtPump& pump_;
    HeldKeys& heldKeys_;
    std::shared_ptr<Input> input_; // nullptr: the model's window has gone
    std::vector<std::unique_ptr<QtControl>> controls_;
    Shown<std::string> title_;
    Shown<std::string> icon_{{}};
    Shown<Color> backColor_;
    Shown<int> edge_;
    Shown<bool> topMost_{false};
    Shown<bool> followsMouse_;
    Shown<unsigned> focusRequest_{0};
    std::optional<QPoint> place_; // where the window was put, until its frame is known
    bool placed_ = false;
    std::optional<QPoint> menuPlace_;
    std::optional<std::int64_t> inputAt_; // when the present event happened
};

} // namespace tarnwick

#pragma once

#include "platform/qt/QtPump.h"
#include "window/Window.h"

#include <QButtonGroup>
#include <QDialog>

#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace tarnwick {

class QtControl;

// The real window of any window of the model, built from its fields; a dialog, for its way with default buttons.
class QtWindow : public QDialog {
    Q_OBJECT

public:
    QtWindow(Window& window, QtPump& pump);
    ~QtWindow() override;

    bool Shows(const Window& window) const { return window_ == &window; }
    // Input on this control counts: neither it nor the window has gone meanwhile.
    bool Takes(const Control& control) const { return window_ != nullptr && control.Enabled && control.Visible; }
    // Brings the real window in line with the model.
    void Sync();
    void ShowInFront();
    // The model's window goes: nothing of it is read or raised any more.
    void Detach();

    // Raises a handler of the window or of one of its controls.
    template <class... Parameters, class... Arguments>
    void Raise(const std::function<void(Parameters...)>& handler, Arguments&&... arguments) {
        if (window_ == nullptr || pump_.Closed())
            return;
        const QtPump::HandlerScope scope(pump_);
        window_->Raise(handler, std::forward<Arguments>(arguments)...);
    }
    // As Raise(); a menu that the handler opens stands at `place` on the screen.
    template <class... Parameters, class... Arguments>
    void RaiseAt(QPoint place, const std::function<void(Parameters...)>& handler, Arguments&&... arguments) {
        menuPlace_ = place;
        Raise(handler, std::forward<Arguments>(arguments)...);
        menuPlace_.reset();
    }
    QPoint MenuPlace() const;

    // The option buttons' one group.
    QButtonGroup& Options() { return options_; }
    void ChooseOption(const Control& chosen);

signals:
    void Detached();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void BuildFrame();
    void BuildControls();
    void SetTabOrder();
    QtControl* Find(const QObject* widget) const;
    QtControl* Find(const Control* control) const;
    void HandleMouse(const Control& control, const QWidget& widget, const QMouseEvent& event);

    Window* window_; // nullptr: the model's window has gone
    QtPump& pump_;
    QButtonGroup options_;
    std::vector<std::unique_ptr<QtControl>> controls_;
    unsigned shownFocus_ = 0;
    bool placed_ = false;
    std::optional<QPoint> menuPlace_;
};

} // namespace tarnwick

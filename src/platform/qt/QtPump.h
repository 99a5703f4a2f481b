#pragma once

// One stream of events out of two: the program's own (posted messages, sockets, timers) and Qt's (input, painting). It
// flows wherever Qt runs a loop: in the main loop, in modal windows, message boxes and menus, and in the program's
// pumps.

#include "window/MessageLoop.h"
#include "window/PumpState.h"

#include <QElapsedTimer>
#include <QObject>
#include <QSocketNotifier>

#include <cstdint>
#include <functional>

namespace tarnwick {

class QtPump : public QObject {
    Q_OBJECT

public:
    // `descriptor` becomes readable when `source` has something to collect. `sync` brings the real windows in line with
    // the model.
    QtPump(MessageLoop& loop, ClockService& clock, EventSource& source, int descriptor, std::function<void()> sync);

    bool PumpEvents();
    bool WaitForEvents();
    void PaintUntil(const std::function<bool(std::int64_t)>& isDone, std::int64_t ms);
    // Runs `body`, which enters a loop of Qt's own.
    void RunNested(const std::function<void()>& body);

    // Runs what an event has led to, now or, while only painting is done, when that is over.
    void Handle(std::function<void()> handler);
    // An event has come while only painting is done: it is handed to its receiver again when that is over.
    void Keep(QObject& receiver, const QEvent& event);
    const PumpState& State() const { return state_; }

    // Fields may have changed: the windows follow at once, or a moment later where they have just done so.
    void Changed();

    // Input is about to reach a window: it shall meet what the model says.
    void BeforeInput();

    // From now on nothing is handled, and every loop of Qt returns.
    void End();

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    void SyncNow();
    void WakeUp();
    void HandleOwnEvents();
    bool IsQtDue() const;
    void ProcessQtEvents(bool wait);
    void Arm();
    void StopTimer(int& timer);

    MessageLoop& loop_;
    EventSource& source_;
    PumpState state_;
    QSocketNotifier notifier_;

    QElapsedTimer clock_;
    std::int64_t qtAskedAt_ = 0;
    int wakeTimer_ = 0; // id of the Qt timer for the next tick, 0: none
    std::int64_t wakeAt_ = 0;
    int syncTimer_ = 0;

    bool pumping_ = false; // Qt's events are being handled by a pump, which handles the program's own itself
    bool woken_ = false;   // a sleep of WaitForEvents() has something to return for
};

} // namespace tarnwick

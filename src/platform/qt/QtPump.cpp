#include "platform/qt/QtPump.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QPointer>
#include <QTimerEvent>

#include <algorithm>
#include <memory>
#include <optional>
#include <utility>

namespace tarnwick {

QtPump::QtPump(MessageLoop& loop, ClockService& clock, EventSource& source, int descriptor, std::function<void()> sync)
    : loop_(loop), source_(source), state_(clock, std::move(sync)), notifier_(descriptor, QSocketNotifier::Read) {
    clock_.start();
    connect(&notifier_, &QSocketNotifier::activated, this, &QtPump::WakeUp);
}

bool QtPump::PumpEvents() {
    if (state_.Ended() || state_.OnlyPaints())
        return !state_.Ended();
    Changed();
    source_.Collect();
    loop_.DispatchMessages();
    state_.HandleKept();
    if (!state_.Ended() && IsQtDue())
        ProcessQtEvents(false);
    if (!state_.Ended())
        loop_.FireTimers();
    return !state_.Ended();
}

// A long piece of work pumps more often than a person could notice, and Qt has to look for its events with calls of the
// system: within a handler it is asked about every millisecond.
bool QtPump::IsQtDue() const { return state_.Idle() || clock_.elapsed() > qtAskedAt_; }

// Painting and following the model are no events that a caller waits for: the sleep continues after them.
bool QtPump::WaitForEvents() {
    if (state_.Ended())
        return false;
    source_.Collect();
    if (loop_.HasMessages() || state_.HasKept() || loop_.UntilNextTick() == 0)
        return PumpEvents();
    Changed();
    woken_ = false;
    while (!woken_ && !state_.Ended()) {
        Arm();
        ProcessQtEvents(true);
    }
    HandleOwnEvents();
    return !state_.Ended();
}

// What the desktop asks is answered as well. Input of the display stays with Qt until the next pass; what comes by the
// accessibility bus, keys too, is a call or a posted event to Qt, and is kept.
void QtPump::PaintUntil(const std::function<bool(std::int64_t)>& isDone, std::int64_t ms) {
    const std::int64_t end = clock_.elapsed() + ms;
    const bool pumping = std::exchange(pumping_, true);
    state_.OnlyPaint([&] {
        do
            QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents | QEventLoop::ExcludeSocketNotifiers);
        while (!isDone(std::clamp<std::int64_t>(end - clock_.elapsed(), 0, Pace::Shortest)) && clock_.elapsed() < end);
    });
    pumping_ = pumping;
    Arm();
}

void QtPump::RunNested(const std::function<void()>& body) {
    if (state_.Ended())
        return;
    const bool pumping = std::exchange(pumping_, false);
    SyncNow();
    Arm();
    body();
    pumping_ = pumping;
}

void QtPump::Handle(std::function<void()> handler) {
    state_.Handle(std::move(handler));
    woken_ = true;
    Changed();
    Arm();
}

void QtPump::Keep(QObject& receiver, const QEvent& event) {
    Handle([to = QPointer(&receiver), copy = std::shared_ptr<QEvent>(event.clone())] {
        if (to != nullptr)
            QCoreApplication::sendEvent(to, copy.get());
    });
}

void QtPump::Changed() {
    const std::int64_t wait = state_.Follow();
    if (wait == 0)
        StopTimer(syncTimer_);
    else if (syncTimer_ == 0)
        syncTimer_ = startTimer(static_cast<int>(wait), Qt::PreciseTimer);
}

void QtPump::SyncNow() {
    StopTimer(syncTimer_);
    state_.SyncNow();
}

void QtPump::BeforeInput() {
    woken_ = true;
    SyncNow();
}

void QtPump::End() {
    state_.End();
    QCoreApplication::exit();
}

void QtPump::HandleOwnEvents() {
    if (state_.Ended())
        return;
    source_.Collect();
    loop_.DispatchMessages();
    state_.HandleKept();
    if (!state_.Ended())
        loop_.FireTimers();
}

// The sockets or a tick: a pump handles them in its own order, in a loop of Qt's they are handled here.
void QtPump::WakeUp() {
    woken_ = true;
    if (!pumping_)
        Handle([this] { HandleOwnEvents(); });
}

void QtPump::ProcessQtEvents(bool wait) {
    const bool pumping = std::exchange(pumping_, true);
    QCoreApplication::processEvents(wait ? QEventLoop::WaitForMoreEvents : QEventLoop::AllEvents);
    pumping_ = pumping;
    qtAskedAt_ = clock_.elapsed();
}

// Sees to it that Qt's loop comes by when the next own event is due. A wake-up that comes too early does no harm.
void QtPump::Arm() {
    const std::optional<std::int64_t> wait = loop_.HasMessages() || state_.HasKept() ? 0 : loop_.UntilNextTick();
    if (!wait || state_.Ended())
        return;
    const std::int64_t at = clock_.elapsed() + *wait;
    if (wakeTimer_ != 0 && wakeAt_ <= at)
        return;
    StopTimer(wakeTimer_);
    wakeTimer_ = startTimer(std::chrono::milliseconds(*wait), Qt::PreciseTimer);
    wakeAt_ = at;
}

void QtPump::StopTimer(int& timer) {
    if (timer != 0)
        killTimer(std::exchange(timer, 0));
}

// A Qt timer doesn't fire again while its event is on the stack, and a handler may enter a loop: each one fires once.
void QtPump::timerEvent(QTimerEvent* event) {
    if (event->timerId() == wakeTimer_) {
        StopTimer(wakeTimer_);
        WakeUp();
    } else if (event->timerId() == syncTimer_) {
        SyncNow();
    }
}

} // namespace tarnwick

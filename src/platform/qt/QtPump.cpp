#include "platform/qt/QtPump.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimerEvent>

#include <algorithm>
#include <optional>
#include <utility>

namespace tarnwick {

QtPump::QtPump(MessageLoop& loop, EventSource& source, int descriptor, std::function<void()> sync)
    : loop_(loop), source_(source), sync_(std::move(sync)), notifier_(descriptor, QSocketNotifier::Read) {
    clock_.start();
    connect(&notifier_, &QSocketNotifier::activated, this, &QtPump::WakeUp);
}

bool QtPump::PumpEvents() {
    if (ended_)
        return false;
    Changed();
    source_.Collect();
    loop_.DispatchMessages();
    if (!ended_ && IsQtDue())
        ProcessQtEvents(false);
    if (!ended_)
        loop_.FireTimers();
    return !ended_;
}

// A long piece of work pumps more often than a person could notice, and Qt has to look for its events with calls of the
// system: within a handler it is asked about every millisecond.
bool QtPump::IsQtDue() const { return Idle() || clock_.elapsed() > qtAskedAt_; }

// Painting and following the model are no events that a caller waits for: the sleep continues after them.
bool QtPump::WaitForEvents() {
    if (ended_)
        return false;
    source_.Collect();
    if (loop_.HasMessages() || loop_.UntilNextTick() == 0)
        return PumpEvents();
    Changed();
    woken_ = false;
    while (!woken_ && !ended_) {
        Arm();
        ProcessQtEvents(true);
    }
    HandleOwnEvents();
    return !ended_;
}

// What the desktop asks is answered as well; input stays with Qt until the next pass.
void QtPump::PaintUntil(const std::function<bool(std::int64_t)>& isDone, std::int64_t ms) {
    const std::int64_t end = clock_.elapsed() + ms;
    const bool pumping = std::exchange(pumping_, true);
    painting_ = true;
    SyncNow();
    do
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents | QEventLoop::ExcludeSocketNotifiers);
    while (!isDone(std::clamp<std::int64_t>(end - clock_.elapsed(), 0, Pace::Shortest)) && clock_.elapsed() < end);
    painting_ = false;
    pumping_ = pumping;
    Arm();
    emit Painted();
}

void QtPump::RunNested(const std::function<void()>& body) {
    if (ended_)
        return;
    const bool pumping = std::exchange(pumping_, false);
    SyncNow();
    Arm();
    body();
    pumping_ = pumping;
}

void QtPump::Changed() {
    const std::int64_t wait = pace_.Wait(clock_.elapsed());
    if (wait == 0)
        SyncNow();
    else if (syncTimer_ == 0)
        syncTimer_ = startTimer(static_cast<int>(wait), Qt::PreciseTimer);
}

void QtPump::SyncNow() {
    StopTimer(syncTimer_);
    const std::int64_t start = clock_.elapsed();
    sync_();
    pace_.Done(start, clock_.elapsed());
}

void QtPump::BeforeInput() {
    woken_ = true;
    SyncNow();
}

void QtPump::End() {
    ended_ = true;
    QCoreApplication::exit();
}

void QtPump::LeaveHandler() {
    --handlers_;
    woken_ = true;
    if (Idle())
        SyncNow();
    else
        Changed();
    Arm();
}

void QtPump::HandleOwnEvents() {
    if (ended_)
        return;
    source_.Collect();
    loop_.DispatchMessages();
    if (!ended_)
        loop_.FireTimers();
}

// The sockets or a tick: a pump handles them in its own order, in a loop of Qt's they are handled here.
void QtPump::WakeUp() {
    woken_ = true;
    if (pumping_ || ended_)
        return;
    const HandlerScope scope(*this);
    HandleOwnEvents();
}

void QtPump::ProcessQtEvents(bool wait) {
    const bool pumping = std::exchange(pumping_, true);
    QCoreApplication::processEvents(wait ? QEventLoop::WaitForMoreEvents : QEventLoop::AllEvents);
    pumping_ = pumping;
    qtAskedAt_ = clock_.elapsed();
}

// Sees to it that Qt's loop comes by when the next own event is due. A wake-up that comes too early does no harm.
void QtPump::Arm() {
    const std::optional<std::int64_t> wait = loop_.HasMessages() ? 0 : loop_.UntilNextTick();
    if (!wait || ended_)
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

#pragma once

// The real services of this system under windows without a screen.

#include "availability/Form4.h"
#include "platform/SteadyClock.h"
#include "platform/headless/Fakes.h"
#include "platform/headless/HeadlessWindows.h"
#include "platform/posix/PosixFiles.h"
#include "platform/posix/PosixSockets.h"
#include "platform/posix/PosixText.h"
#include "shell/Form3.h"

#include <functional>
#include <utility>

namespace tarnwick::test {

// The sockets' events, with an eye on each pump pass: what a user sees between two events, and what he does then.
class WatchedEvents : public EventSource {
public:
    explicit WatchedEvents(EventSource& events) : events_(events) {}

    std::function<void()> EachPass;

    // The user acts as soon as he sees this, at the latest 5 ms later.
    void When(std::function<bool()> sees, std::function<void()> acts) {
        sees_ = std::move(sees);
        acts_ = std::move(acts);
    }

    void Collect() override {
        events_.Collect();
        if (EachPass)
            EachPass();
        if (sees_ && sees_()) {
            sees_ = nullptr;
            std::exchange(acts_, nullptr)();
        }
    }
    void Wait(std::optional<std::int64_t> ms) override {
        constexpr std::int64_t look = 5;
        events_.Wait(sees_ ? std::min(ms.value_or(look), look) : ms);
    }

private:
    EventSource& events_;
    std::function<bool()> sees_;
    std::function<void()> acts_;
};

// In use for as long as the object lives. The Favorites folder is the one of the environment (TemporaryHome).
template <class SettingsKind> struct PosixMachineWith {
    SteadyClock Clock;
    MessageLoop Loop{Clock};
    PosixFiles Files;
    SettingsKind Settings;
    PosixSockets Sockets{Loop};
    WatchedEvents Events{Sockets};
    HeadlessWindows Windows{Loop, Events, Clock};
    RecordingShell Shell;
    PosixText Text;
    ServicesInUse InUse{{Files, Settings, Sockets, Windows, Clock, Shell, Text}};
};

using PosixMachine = PosixMachineWith<MemorySettings>;

} // namespace tarnwick::test

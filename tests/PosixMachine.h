#pragma once

// The real services of this system under windows without a screen.

#include "platform/SteadyClock.h"
#include "platform/headless/Fakes.h"
#include "platform/headless/HeadlessWindows.h"
#include "platform/posix/PosixFiles.h"
#include "platform/posix/PosixSockets.h"
#include "platform/posix/PosixText.h"

#include <functional>

namespace tarnwick::test {

// The sockets' events, with an eye on each pump pass: what a user sees between two events.
class WatchedEvents : public EventSource {
public:
    explicit WatchedEvents(EventSource& events) : events_(events) {}

    std::function<void()> EachPass;

    void Collect() override {
        events_.Collect();
        if (EachPass)
            EachPass();
    }
    void Wait(std::optional<std::int64_t> ms) override { events_.Wait(ms); }

private:
    EventSource& events_;
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

#pragma once

#include "platform/headless/Fakes.h"
#include "platform/headless/HeadlessWindows.h"

namespace tarnwick {

// A whole machine in memory, in use for as long as the object lives.
struct HeadlessPlatform {
    HeadlessPlatform() {
        for (CanFail* service : std::initializer_list<CanFail*>{&Favorites, &Settings, &Sockets, &Windows})
            service->Faults = &Faults;
    }

    Fault Faults;
    ManualClock Clock;
    MessageLoop Loop{Clock};
    MemoryFavorites Favorites;
    MemorySettings Settings;
    FakeSockets Sockets{Loop, Clock};
    HeadlessWindows Windows{Loop, Sockets, Clock};
    RecordingShell Shell;
    PlainText Text;
    ServicesInUse InUse{{Favorites, Settings, Sockets, Windows, Clock, Shell, Text}};
};

} // namespace tarnwick

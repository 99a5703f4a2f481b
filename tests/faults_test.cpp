// Every service call of the whole scenario fails once, in each way in which it can.

#include "Driver.h"
#include "Scenario.h"

#include <map>

namespace tarnwick::test {

namespace {

// Counts the calls, and says how the one with the given number fails.
class Fault {
public:
    Fault(int call, int way) : call_(call), way_(way) {}

    // 0 for a call that goes well, else the way in which it fails, 1 to `ways`.
    int Way(const char* name, int ways = 1) {
        if (++calls_ != call_)
            return 0;
        Name = name;
        Ways = ways;
        return way_;
    }

    std::string Name; // of the call that failed
    int Ways = 0;

private:
    int call_, way_, calls_ = 0;
};

class FailingFavorites : public MemoryFavorites {
public:
    explicit FailingFavorites(Fault& fault) : fault_(fault) {}
    std::string OpenListing(const std::string& pattern, ListingHandle& listing) override {
        return fault_.Way("OpenListing") ? "" : MemoryFavorites::OpenListing(pattern, listing);
    }
    std::string StepListing(ListingHandle listing) override {
        return fault_.Way("StepListing") ? "" : MemoryFavorites::StepListing(listing);
    }
    bool Remove(const std::string& path) override {
        const bool removed = !fault_.Way("Remove") && MemoryFavorites::Remove(path);
        if (removed)
            Removed.push_back(path);
        return removed;
    }
    std::string FavoritesFolder() override {
        return fault_.Way("FavoritesFolder") ? "" : MemoryFavorites::FavoritesFolder();
    }
    std::string ReadValue(const std::string& section, const std::string& key, const std::string& fallback,
                          std::size_t size, const std::string& file) override {
        return fault_.Way("ReadValue") ? fallback : MemoryFavorites::ReadValue(section, key, fallback, size, file);
    }

    Strings Removed;

private:
    Fault& fault_;
};

class FailingSettings : public MemorySettings {
public:
    explicit FailingSettings(Fault& fault) : fault_(fault) {}
    std::string Read(const std::string& application, const std::string& section, const std::string& key,
                     const std::string& fallback) override {
        const int way = fault_.Way("Read", 2);
        return way == 1 ? fallback : way == 2 ? "?" : MemorySettings::Read(application, section, key, fallback);
    }
    bool Write(const std::string& application, const std::string& section, const std::string& key,
               const std::string& value) override {
        return !fault_.Way("Write") && MemorySettings::Write(application, section, key, value);
    }

private:
    Fault& fault_;
};

class FailingSockets : public FakeSockets {
public:
    FailingSockets(MessageLoop& loop, ManualClock& clock, Fault& fault) : FakeSockets(loop, clock), fault_(fault) {}
    std::int32_t Startup(std::uint16_t version) override {
        return fault_.Way("Startup") ? 10091 : FakeSockets::Startup(version);
    }
    std::int32_t Cleanup() override { return fault_.Way("Cleanup") ? -1 : FakeSockets::Cleanup(); }
    SocketNumber Open(std::int32_t family, std::int32_t type, std::int32_t protocol) override {
        return fault_.Way("Open") ? -1 : FakeSockets::Open(family, type, protocol);
    }
    std::int32_t SetOption(SocketNumber socket, std::int32_t level, std::int32_t option,
                           const LingerRecord& value) override {
        return fault_.Way("SetOption") ? -1 : FakeSockets::SetOption(socket, level, option, value);
    }
    std::int32_t GetOption(SocketNumber socket, std::int32_t level, std::int32_t option, LingerRecord& value,
                           std::int32_t& length) override {
        return fault_.Way("GetOption") ? -1 : FakeSockets::GetOption(socket, level, option, value, length);
    }
    std::int32_t AsyncSelect(SocketNumber socket, WindowHandle window, std::uint32_t message,
                             std::int32_t mask) override {
        return fault_.Way("AsyncSelect") ? -1 : FakeSockets::AsyncSelect(socket, window, message, mask);
    }
    // Fails at once, says nothing for ever, or is refused later.
    std::int32_t Connect(SocketNumber socket, const AddressRecord& address) override {
        const int way = fault_.Way("Connect", 3);
        if (way == 0)
            return FakeSockets::Connect(socket, address);
        if (way == 3)
            Notify(16, 10061);
        return way == 1 ? 0 : -1;
    }
    // Fails, takes nothing, or takes the bytes although the peer will never answer.
    std::int32_t Send(SocketNumber socket, const std::string& bytes) override {
        const int way = fault_.Way("Send", 3);
        return way == 0   ? FakeSockets::Send(socket, bytes)
               : way == 1 ? -1
               : way == 2 ? 0
                          : static_cast<std::int32_t>(bytes.size());
    }
    std::int32_t Receive(SocketNumber socket, std::string& buffer) override {
        const int way = fault_.Way("Receive", 2);
        return way == 0 ? FakeSockets::Receive(socket, buffer) : way == 1 ? -1 : 0;
    }
    std::int32_t Close(SocketNumber socket) override {
        const std::int32_t result = FakeSockets::Close(socket); // the number is free whatever a close says
        return fault_.Way("Close") ? -1 : result;
    }
    // Doesn't start, finds nothing, or never ends.
    std::shared_ptr<HostLookup> LookUp(const std::string& name) override {
        const int way = fault_.Way("LookUp", 3);
        LookUpMs = {{name, way == 3 ? 1000000 : 0}};
        return way == 1 ? nullptr : FakeSockets::LookUp(way == 2 ? "nowhere" : name);
    }

private:
    Fault& fault_;
};

class FailingWindows : public HeadlessWindows {
public:
    FailingWindows(MessageLoop& loop, EventSource& events, ClockService& clock, Fault& fault)
        : HeadlessWindows(loop, events, clock), fault_(fault) {}
    MessageAnswer ShowMessage(const std::string& text, const std::string& title, MessageIcon icon,
                              MessageButtons buttons) override {
        const MessageAnswer answer = HeadlessWindows::ShowMessage(text, title, icon, buttons);
        return fault_.Way("ShowMessage") ? MessageAnswer::No : answer;
    }
    const MenuEntry* PopUp(const Menu& menu, Window& window) override {
        return fault_.Way("PopUp") ? nullptr : HeadlessWindows::PopUp(menu, window);
    }
    PreviousProcedure InstallProcedure(WindowHandle window, WindowProcedure procedure) override {
        return fault_.Way("InstallProcedure") ? 0 : HeadlessWindows::InstallProcedure(window, procedure);
    }

private:
    Fault& fault_;
};

struct FailingMachine {
    explicit FailingMachine(Fault& fault)
        : Favorites(fault), Settings(fault), Sockets(Loop, Clock, fault), Windows(Loop, Sockets, Clock, fault) {}

    ManualClock Clock;
    MessageLoop Loop{Clock};
    FailingFavorites Favorites;
    FailingSettings Settings;
    FailingSockets Sockets;
    FailingWindows Windows;
    RecordingShell Shell;
    PlainText Text;
    ServicesInUse InUse{{Favorites, Favorites, Settings, Sockets, Windows, Clock, Shell, Text}};
};

const std::map<std::string, std::string> Favorites = {
    {"Gone.url", "http://gone.example/"},
    {"Good.url", "http://good.example/"},
    {"Work\\Shut.url", "http://shut.example/"},
    {"Work\\Twin.url", "HTTP://good.example/"},
    {"Work\\None.url", "http://none.example/"},
    {"Work\\Deep\\Silent.url", "http://silent.example/"},
    {"Mail.url", "mailto:someone"},
};

void Prepare(FailingMachine& machine) {
    tarnwick::Favorites::SplashDone = tarnwick::Favorites::RunCompleted = false;
    for (const auto& [path, url] : Favorites)
        machine.Favorites.AddShortcut(path, url);
    machine.Sockets.Hosts = {{"gone.example", {.Reply = "HTTP/1.0 404 x"}},
                             {"good.example", {.Reply = "HTTP/1.0 200 x"}},
                             {"shut.example", {.Refuses = true}},
                             {"silent.example", {}}};
    for (const char* key : {"Catch404", "CatchConnerr", "CatchTimedout", "CatchUnabled"})
        machine.Settings.Values[key] = "1";
    machine.Settings.Values["Timeout"] = "10";
}

// How the program is left after the scenario, whatever has failed.
void ExpectSound(FailingMachine& machine) {
    EXPECT_TRUE(std::ranges::any_of(machine.Loop.Windows(), [](const Window* window) { return window->TakesInput(); }));
    EXPECT_FALSE(machine.Windows.HasEnded());
    EXPECT_EQ(machine.Sockets.OpenNumbers.size(), 0U);
    EXPECT_EQ(machine.Favorites.OpenListings(), 0);
    // Each favorite is there but for those that the user has said Yes to.
    const auto questions =
        std::ranges::count(machine.Windows.Messages, MessageIcon::Question, &HeadlessWindows::ShownMessage::Icon);
    EXPECT_LE(std::ssize(machine.Favorites.Removed), questions);
    for (const auto& [path, url] : Favorites)
        EXPECT_NE(machine.Favorites.Has(path),
                  std::ranges::count(machine.Favorites.Removed, machine.Favorites.Full(path)) == 1)
            << path;
    EXPECT_TRUE(machine.Settings.Values["Timeout"] == "10" || machine.Settings.Values["Timeout"] == "11");
}

} // namespace

TEST(FaultsTest, EachServiceCallFailsOnceInEachOfItsWays) {
    int tried = 0;
    bool reached = true;
    for (int call = 0; reached && !::testing::Test::HasFailure(); ++call) {
        int ways = 1;
        for (int way = 1; way <= ways; ++way) {
            Fault fault(call, way);
            FailingMachine machine(fault);
            Prepare(machine);
            SCOPED_TRACE(call);
            Scenario(machine.Windows).Play();
            SCOPED_TRACE(fault.Name);
            ExpectSound(machine);
            reached = call == 0 || !fault.Name.empty();
            if (call == 0) {
                EXPECT_EQ(machine.Favorites.Removed.size(), 2U);
                EXPECT_EQ(machine.Settings.Values["Timeout"], "11");
            }
            ways = std::max(ways, fault.Ways);
            ++tried;
        }
    }
    RecordProperty("calls", tried);
}

} // namespace tarnwick::test

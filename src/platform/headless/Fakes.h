#pragma once

// Services that live in memory and do what a test asks for, so that any one call can be made to fail.

#include "platform/headless/Fault.h"
#include "services/Services.h"
#include "window/MessageLoop.h"

#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace tarnwick {

class ManualClock : public ClockService {
public:
    std::int64_t Now() override { return now_; }
    void Advance(std::int64_t ms) { now_ += ms; }

private:
    std::int64_t now_ = 1000000;
};

// A Favorites folder in memory.
class MemoryFavorites : public FileService, public CanFail {
public:
    std::string Root = "C:\\Users\\u\\Favorites"; // empty: the machine can't name it

    // A shortcut file at a path below the root, such as "Work\\Site.url".
    void AddShortcut(const std::string& path, const std::string& url) {
        AddFile(path, "[InternetShortcut]\r\nURL=" + url + "\r\n");
    }
    void AddFile(const std::string& path, const std::string& content);
    void AddFolder(const std::string& path);
    // A second way, at a path below the root, to the file or folder of another full path.
    void AddLink(const std::string& path, const std::string& target);
    // A file that may be opened, but that no listing shows.
    void AddUnlisted(const std::string& path) { files_[Full(path)] = ""; }
    bool Has(const std::string& path) const { return files_.contains(Full(path)); }
    void LoseFile(const std::string& path);
    std::string Full(const std::string& path) const { return Root + "\\" + path; }

    std::set<std::string> ReadOnly;  // full paths that can't be removed
    std::vector<std::string> ReadIn; // full paths in the order of reading
    bool Identifies = true;          // false: a file system that has no identities

    bool List(const std::string& folder, std::string_view ending, std::vector<ListedName>& names) override;
    std::string FolderIdentity(const std::string& folder) override;
    std::string RealFolder(const std::string& folder) override { return Fails("RealFolder") ? "" : Real(folder); }
    FilePlace PlaceOf(const std::string& file) override;
    bool Read(const std::string& file, std::size_t limit, std::string& bytes) override;
    bool Remove(const std::string& path) override;
    std::string FavoritesFolder() override { return Fails("FavoritesFolder") ? "" : Root; }

private:
    void AddEntry(const std::string& full);
    std::string Real(const std::string& path) const;

    std::map<std::string, std::string> files_;
    std::map<std::string, std::string> links_;                // full path to full path
    std::map<std::string, std::vector<std::string>> folders_; // full path to names
};

class MemorySettings : public SettingsService, public CanFail {
public:
    std::map<std::string, std::string> Values; // key to text; application and section are kept in Places
    std::set<std::string> Places;              // "application/section" of every access
    std::vector<std::string> Written;          // keys in the order of writing

    void Read(const std::string& application, const std::string& section, std::vector<Setting>& settings) override;
    bool Write(const std::string& application, const std::string& section,
               const std::vector<Setting>& settings) override;
};

// Sockets that answer as a test says, host by host. Nothing is delivered but through the loop.
class FakeSockets : public SocketService, public EventSource, public CanFail {
public:
    FakeSockets(MessageLoop& loop, ManualClock& clock) : loop_(loop), clock_(clock) {}

    SocketNumber NextNumber = 100;

    struct Host {
        std::optional<std::string> Reply = {}; // sent once the request is there; none: silent
        bool Refuses = false;
        bool Closes = false; // as soon as it is connected
        bool NeverConnects = false;
    };
    std::map<std::string, Host> Hosts; // by name or dotted address; others can't be resolved

    struct Connection {
        std::string Name;
        std::uint16_t Port = 0; // network order
        std::string Sent;
    };
    std::vector<Connection> Connections; // every one that was started
    std::set<SocketNumber> OpenNumbers;
    std::vector<std::string> LookedUp;
    std::function<void(const std::string& name)> LookingUp; // what happens while a look-up holds the program
    std::map<std::string, std::int64_t> LookUpMs;           // how long the look-up of a name takes; others take no time

    // Queues an event of the socket that was opened last.
    void Notify(std::int32_t event, std::int32_t error = 0);
    // The peer's bytes and the event that announces them.
    void Deliver(const std::string& bytes);
    // The peer closes, or drops the connection: announced when its bytes have been read.
    void HangUp(std::int32_t error = 0);
    SocketNumber LastNumber() const { return last_; }

    std::int32_t Startup(std::uint16_t version) override;
    std::int32_t Cleanup() override;
    SocketNumber Open(std::int32_t family, std::int32_t type, std::int32_t protocol) override;
    std::int32_t SetOption(SocketNumber socket, std::int32_t level, std::int32_t option,
                           const LingerRecord& value) override;
    std::int32_t GetOption(SocketNumber socket, std::int32_t level, std::int32_t option, LingerRecord& value,
                           std::int32_t& length) override;
    std::int32_t AsyncSelect(SocketNumber socket, WindowHandle window, std::uint32_t message,
                             std::int32_t mask) override;
    std::int32_t Connect(SocketNumber socket, const AddressRecord& address) override;
    std::int32_t Send(SocketNumber socket, const std::string& bytes) override;
    std::int32_t Receive(SocketNumber socket, std::string& buffer) override;
    std::int32_t Close(SocketNumber socket) override;
    std::uint16_t HostToNetwork(std::uint16_t port) override;
    std::uint32_t AddressFromText(const std::string& text) override;
    std::shared_ptr<HostLookup> LookUp(const std::string& name) override;
    std::string NameOfHost(std::uint32_t address) override;
    std::int32_t LocalName(std::string& name) override;

    int Startups = 0;
    int Cleanups = 0;

    void Collect() override {}
    // Time passes until the next timer is due; throws when there is none, since the program would sleep for ever.
    void Wait(std::optional<std::int64_t> ms) override;

private:
    class Lookup;

    const Host* HostOf(std::uint32_t address) const;

    MessageLoop& loop_;
    ManualClock& clock_;
    SocketNumber last_ = 0;
    WindowHandle window_ = 0;
    std::uint32_t message_ = 0;
    bool established_ = false; // the connection of the socket that was opened last
    std::string incoming_;
    std::optional<std::int32_t> hangsUp_; // the peer has, and its bytes are still unread
    std::vector<std::string> addresses_;  // the address of a name is its place here plus one
};

class RecordingShell : public ShellService {
public:
    std::vector<std::string> Urls;
    void OpenUrl(WindowHandle, const std::string& url) override { Urls.push_back(url); }
};

// Upper case in ASCII alone.
class PlainText : public TextService {
public:
    std::string Upper(std::string_view text) override;
};

} // namespace tarnwick

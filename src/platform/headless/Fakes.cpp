#include "platform/headless/Fakes.h"

#include "text/Ascii.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>
#include <utility>

namespace tarnwick {

void MemoryFavorites::AddEntry(const std::string& full) {
    const std::size_t slash = full.rfind('\\');
    std::vector<std::string>& names = folders_[full.substr(0, slash)];
    const std::string name = full.substr(slash + 1);
    if (std::ranges::find(names, name) == names.end())
        names.push_back(name);
}

void MemoryFavorites::AddFolder(const std::string& path) {
    folders_.try_emplace(Root);
    for (std::size_t slash = path.find('\\'); slash != std::string::npos; slash = path.find('\\', slash + 1)) {
        folders_.try_emplace(Full(path.substr(0, slash)));
        AddEntry(Full(path.substr(0, slash)));
    }
    folders_.try_emplace(Full(path));
    AddEntry(Full(path));
}

void MemoryFavorites::AddFile(const std::string& path, const std::string& content) {
    if (const std::size_t slash = path.rfind('\\'); slash != std::string::npos)
        AddFolder(path.substr(0, slash));
    files_[Full(path)] = content;
    AddEntry(Full(path));
}

void MemoryFavorites::LoseFile(const std::string& path) {
    files_.erase(Full(path));
    links_.erase(Full(path));
    std::erase(folders_[Full(path).substr(0, Full(path).rfind('\\'))], path.substr(path.rfind('\\') + 1));
}

void MemoryFavorites::AddLink(const std::string& path, const std::string& target) {
    AddFile(path, "");
    links_[Full(path)] = target;
}

// The path with every link in it followed, without a "\" at its end; the empty text for one that leads nowhere.
std::string MemoryFavorites::Real(const std::string& path) const {
    constexpr int mostLinks = 40;
    std::string real = path.ends_with('\\') ? path.substr(0, path.size() - 1) : path;
    for (int followed = 0; followed < mostLinks; ++followed) {
        const auto link = std::ranges::find_if(
            links_, [&real](const auto& entry) { return real == entry.first || real.starts_with(entry.first + "\\"); });
        if (link == links_.end())
            return real;
        real = link->second + real.substr(link->first.size());
    }
    return {};
}

bool MemoryFavorites::List(const std::string& folder, std::string_view ending, std::vector<ListedName>& names) {
    const auto found = folders_.find(Real(folder));
    if (found == folders_.end() || Fails("List"))
        return false;
    names.clear();
    const std::string inside = found->first + "\\";
    for (const std::string& name : found->second)
        if (PlainText().Upper(name).ends_with(PlainText().Upper(ending)))
            names.push_back({name, links_.contains(inside + name)});
    std::ranges::sort(names, {}, [](const ListedName& name) { return PlainText().Upper(name.Text); });
    return true;
}

std::string MemoryFavorites::FolderIdentity(const std::string& folder) {
    const std::string real = Real(folder);
    return Identifies && folders_.contains(real) && !Fails("FolderIdentity") ? real : "";
}

FilePlace MemoryFavorites::PlaceOf(const std::string& file) {
    const std::string real = Real(file);
    const std::size_t slash = real.rfind('\\');
    return files_.contains(real) && !Fails("PlaceOf")
               ? FilePlace{FolderIdentity(real.substr(0, slash)), real.substr(slash + 1)}
               : FilePlace();
}

bool MemoryFavorites::Read(const std::string& file, std::size_t limit, std::string& bytes) {
    ReadIn.push_back(file);
    const auto found = file.ends_with('\\') || Fails("ReadFile") ? files_.end() : files_.find(Real(file));
    bytes = found == files_.end() ? "" : found->second.substr(0, limit);
    return found != files_.end();
}

bool MemoryFavorites::Remove(const std::string& path) {
    if (!files_.contains(path) || ReadOnly.contains(path) || folders_.contains(Real(path)) || Fails("Remove"))
        return false;
    LoseFile(path.substr(Root.size() + 1));
    return true;
}

void MemorySettings::Read(const std::string& application, const std::string& section, std::vector<Setting>& settings) {
    Places.insert(application + "/" + section);
    const int way = Fails("Read", 2);
    for (Setting& setting : settings)
        if (const auto found = Values.find(setting.Key); way == 2)
            setting.Value = "no number";
        else if (way == 0 && found != Values.end())
            setting.Value = found->second;
}

bool MemorySettings::Write(const std::string& application, const std::string& section,
                           const std::vector<Setting>& settings) {
    Places.insert(application + "/" + section);
    if (Fails("Write"))
        return false;
    for (const Setting& setting : settings) {
        Values[setting.Key] = setting.Value;
        Written.push_back(setting.Key);
    }
    return true;
}

namespace {

// SO_LINGER of SOL_SOCKET.
bool IsLinger(std::int32_t level, std::int32_t option) { return level == LevelSocket && option == OptionLinger; }

} // namespace

void FakeSockets::Notify(std::int32_t event, std::int32_t error) {
    loop_.Post({window_, message_, last_, error << 16 | event});
}

void FakeSockets::HangUp(std::int32_t error) {
    if (incoming_.empty())
        Notify(SocketEvent::Close, error);
    else
        hangsUp_ = error;
}

void FakeSockets::Deliver(const std::string& bytes) {
    incoming_ = bytes;
    Notify(SocketEvent::Read);
}

std::int32_t FakeSockets::Startup(std::uint16_t version) {
    ++Startups;
    return Fails("Startup") || version != WinsockVersion ? SocketError::SystemNotReady : 0;
}

std::int32_t FakeSockets::Cleanup() {
    ++Cleanups;
    return Fails("Cleanup") ? SocketError::Failed : 0;
}

SocketNumber FakeSockets::Open(std::int32_t, std::int32_t, std::int32_t) {
    if (Fails("Open"))
        return SocketError::Failed;
    last_ = NextNumber++;
    OpenNumbers.insert(last_);
    return last_;
}

std::int32_t FakeSockets::SetOption(SocketNumber, std::int32_t level, std::int32_t option, const LingerRecord&) {
    return Fails("SetOption") || !IsLinger(level, option) ? SocketError::Failed : 0;
}

std::int32_t FakeSockets::GetOption(SocketNumber, std::int32_t level, std::int32_t option, LingerRecord&,
                                    std::int32_t&) {
    return Fails("GetOption") || !IsLinger(level, option) ? SocketError::Failed : 0;
}

std::int32_t FakeSockets::AsyncSelect(SocketNumber, WindowHandle window, std::uint32_t message, std::int32_t) {
    window_ = window;
    message_ = message;
    return Fails("AsyncSelect") ? SocketError::Failed : 0;
}

const FakeSockets::Host* FakeSockets::HostOf(std::uint32_t address) const {
    if (address == 0 || address > addresses_.size())
        return nullptr;
    return &Hosts.at(addresses_[address - 1]);
}

std::int32_t FakeSockets::Connect(SocketNumber, const AddressRecord& address) {
    const int way = Fails("Connect", 3); // at once, by silence, by a refusal
    if (way == 1)
        return 0;
    const Host* host = HostOf(address.Address);
    Connections.push_back({host == nullptr ? "" : addresses_[address.Address - 1], address.Port, ""});
    incoming_.clear();
    hangsUp_.reset();
    established_ = false;
    if (host == nullptr || host->Refuses || way == 3) {
        Notify(SocketEvent::Connect,
               address.Address == 0 ? SocketError::AddressNotAvailable : SocketError::ConnectionRefused);
    } else if (!host->NeverConnects && way == 0) {
        established_ = true;
        Notify(SocketEvent::Connect);
        Notify(SocketEvent::Write);
        if (host->Closes)
            Notify(SocketEvent::Close);
    }
    return SocketError::Failed;
}

std::int32_t FakeSockets::Send(SocketNumber socket, const std::string& bytes) {
    if (const int way = Fails("Send", 2); way != 0) // or nothing is taken
        return way == 1 ? SocketError::Failed : 0;
    if (!OpenNumbers.contains(socket) || !established_)
        return SocketError::Failed;
    Connection& connection = Connections.back();
    connection.Sent += bytes;
    if (const auto host = Hosts.find(connection.Name); host != Hosts.end() && host->second.Reply)
        Deliver(*host->second.Reply);
    return static_cast<std::int32_t>(bytes.size());
}

std::int32_t FakeSockets::Receive(SocketNumber socket, std::string& buffer) {
    if (const int way = Fails("Receive", 2); way != 0)
        return way == 1 ? SocketError::Failed : 0;
    if (!OpenNumbers.contains(socket))
        return SocketError::Failed;
    const std::size_t count = std::min(buffer.size(), incoming_.size());
    std::memcpy(buffer.data(), incoming_.data(), count);
    incoming_.erase(0, count);
    if (!incoming_.empty())
        Notify(SocketEvent::Read);
    else if (hangsUp_)
        Notify(SocketEvent::Close, *std::exchange(hangsUp_, {}));
    return static_cast<std::int32_t>(count);
}

std::int32_t FakeSockets::Close(SocketNumber socket) {
    if (OpenNumbers.erase(socket) == 0)
        return SocketError::Failed;
    loop_.Purge(socket);
    return Fails("Close") ? SocketError::Failed : 0; // the number is free in any case
}

std::uint16_t FakeSockets::HostToNetwork(std::uint16_t port) {
    return static_cast<std::uint16_t>(port << 8 | port >> 8);
}

std::uint32_t FakeSockets::AddressFromText(const std::string&) { return NoAddress; }

class FakeSockets::Lookup : public HostLookup {
public:
    Lookup(FakeSockets& sockets, std::string name, std::int64_t ms, std::string address)
        : sockets_(sockets), name_(std::move(name)), end_(Now() + ms), address_(std::move(address)) {}

    bool Wait(std::int64_t ms) override {
        if (sockets_.LookingUp && !std::exchange(waitedFor_, true))
            sockets_.LookingUp(name_);
        sockets_.clock_.Advance(std::clamp<std::int64_t>(end_ - Now(), 0, ms));
        return Now() >= end_;
    }
    std::string Address() const override { return address_; }

private:
    std::int64_t Now() const { return sockets_.clock_.Now(); }

    FakeSockets& sockets_;
    const std::string name_;
    const std::int64_t end_;
    const std::string address_;
    bool waitedFor_ = false;
};

std::shared_ptr<HostLookup> FakeSockets::LookUp(const std::string& name) {
    LookedUp.push_back(name);
    const int way = Fails("LookUp", 3); // doesn't start, finds nothing, never ends
    if (way == 1)
        return nullptr;
    std::string bytes;
    if (Hosts.contains(name) && way != 2) {
        addresses_.push_back(name);
        const auto address = static_cast<std::uint32_t>(addresses_.size());
        bytes.resize(sizeof address);
        std::memcpy(bytes.data(), &address, sizeof address);
    }
    const auto ms = LookUpMs.find(name);
    const std::int64_t never = 1000000000;
    return std::make_shared<Lookup>(*this, name, way == 3 ? never : ms == LookUpMs.end() ? 0 : ms->second, bytes);
}

std::string FakeSockets::NameOfHost(std::uint32_t address) {
    return HostOf(address) == nullptr ? "" : addresses_[address - 1];
}

std::int32_t FakeSockets::LocalName(std::string& name) {
    name = "machine";
    return 0;
}

void FakeSockets::Wait(std::optional<std::int64_t> ms) {
    if (!ms)
        throw std::logic_error("nothing pending and no timer runs: the program would sleep for ever");
    clock_.Advance(*ms);
}

std::string PlainText::Upper(std::string_view text) { return AsciiUpper(text); }

} // namespace tarnwick

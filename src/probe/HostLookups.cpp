#include "probe/HostLookups.h"

#include "services/Services.h"

#include <algorithm>
#include <string_view>

namespace tarnwick {

namespace {

constexpr std::size_t NameLimit = 253; // characters of a name (RFC 1035, 2.3.4: 255 bytes on the wire)
constexpr std::size_t LabelLimit = 63; // RFC 1035, 2.3.4

// A resolver that gives a name up after half a minute leaves fewer than these at one link per second.
constexpr std::size_t MostUnderWay = 64;

bool IsHostName(std::string_view name) {
    if (name.ends_with('.'))
        name.remove_suffix(1);
    if (name.empty() || name.size() > NameLimit)
        return false;
    for (std::size_t start = 0; start <= name.size();) {
        const std::size_t end = std::min(name.find('.', start), name.size());
        if (end == start || end - start > LabelLimit)
            return false;
        start = end + 1;
    }
    return std::ranges::none_of(name, [](char c) { return static_cast<unsigned char>(c) <= ' ' || c == '\x7F'; });
}

} // namespace

std::string HostLookups::AddressOf(const std::string& name, std::int64_t ms) {
    if (!IsHostName(name))
        return {};
    services().Windows.PaintUntil([&](std::int64_t slice) { return WaitFor(name, slice); },
                                  std::max<std::int64_t>(ms, 0));
    const auto found = underWay_.find(name);
    if (found == underWay_.end() || !found->second->Wait(0))
        return {};
    std::string address = found->second->Address();
    underWay_.erase(found);
    return address;
}

// True: the name's look-up has ended, or can't be started at all.
bool HostLookups::WaitFor(const std::string& name, std::int64_t ms) {
    const std::int64_t end = services().Clock.Now() + ms;
    const auto left = [end] { return std::max<std::int64_t>(0, end - services().Clock.Now()); };
    while (!IsStarted(name)) {
        if (underWay_.empty())
            return true;
        underWay_.begin()->second->Wait(left());
        if (left() == 0)
            return false;
    }
    return underWay_[name]->Wait(left());
}

bool HostLookups::IsStarted(const std::string& name) {
    if (underWay_.contains(name))
        return true;
    std::erase_if(underWay_, [](const auto& entry) { return entry.second->Wait(0); });
    const auto started = underWay_.size() < MostUnderWay ? services().Sockets.LookUp(name) : nullptr;
    if (started != nullptr)
        underWay_[name] = started;
    return started != nullptr;
}

} // namespace tarnwick

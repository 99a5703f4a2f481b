#include "probe/HostLookups.h"

#include "services/Services.h"

#include <algorithm>
#include <map>
#include <memory>
#include <string_view>

namespace tarnwick {

namespace {

constexpr std::size_t NameLimit = 253; // characters of a name (RFC 1035, 2.3.4: 255 bytes on the wire)
constexpr std::size_t LabelLimit = 63; // RFC 1035, 2.3.4

// A resolver that gives a name up after half a minute leaves fewer than these at one link a second.
constexpr std::size_t MostUnderWay = 64;

std::map<std::string, std::shared_ptr<HostLookup>> underWay; // by name; those that nobody waited for to the end

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

std::string AddressOfHost(const std::string& name, std::int64_t ms) {
    if (!IsHostName(name))
        return {};
    std::erase_if(underWay, [](const auto& entry) { return entry.second->Wait(0); });
    auto found = underWay.find(name);
    if (found == underWay.end()) {
        if (underWay.size() >= MostUnderWay)
            return {};
        const auto started = services().Sockets.LookUp(name);
        if (started == nullptr)
            return {};
        found = underWay.emplace(name, started).first;
    }
    HostLookup& lookUp = *found->second;
    services().Windows.PaintUntil([&lookUp](std::int64_t slice) { return lookUp.Wait(slice); },
                                  std::max<std::int64_t>(ms, 0));
    if (!lookUp.Wait(0))
        return {};
    std::string address = lookUp.Address();
    underWay.erase(found);
    return address;
}

void ForgetLookups() { underWay.clear(); }

} // namespace tarnwick

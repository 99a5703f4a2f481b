#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>

namespace tarnwick {

class HostLookup;

// The look-ups of one socket engine. What is still under way at its end is left to itself.
class HostLookups {
public:
    // The bytes of the host's first address; empty when the name isn't resolved within `ms`. Windows are painted
    // meanwhile, and no handler runs. A look-up that was not waited for to its end is not started a second time while
    // it lasts, and its answer is used if the name is asked for again. Where too many have been left so, a name waits
    // for a free place first.
    std::string AddressOf(const std::string& name, std::int64_t ms);

private:
    bool WaitFor(const std::string& name, std::int64_t ms);
    bool IsStarted(const std::string& name);

    std::map<std::string, std::shared_ptr<HostLookup>> underWay_; // by name
};

} // namespace tarnwick

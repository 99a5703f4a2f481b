#pragma once

#include <cstdint>
#include <string>

namespace tarnwick {

// The bytes of the host's first address; empty when the name isn't resolved within `ms`. Windows are painted meanwhile,
// and no handler runs. A look-up that was not waited for to its end is not started a second time while it lasts.
std::string AddressOfHost(const std::string& name, std::int64_t ms);

// Nothing that is still being looked up is waited for any more.
void ForgetLookups();

} // namespace tarnwick

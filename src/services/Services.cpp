#include "services/Services.h"

#include <cassert>

namespace tarnwick {

namespace {
Services* current = nullptr;
}

void UseServices(Services* services) { current = services; }

Services& services() {
    assert(current != nullptr);
    return *current;
}

} // namespace tarnwick

#include "duplicates/LinkKey.h"

#include "platform/Services.h"

namespace tarnwick {

std::uint64_t LinkKey(std::string_view link) { return std::hash<std::string>()(services().Text.Upper(link)); }

bool EqualLinks(std::string_view one, std::string_view other) {
    return services().Text.Upper(one) == services().Text.Upper(other);
}

} // namespace tarnwick

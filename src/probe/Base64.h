#pragma once

#include <cstdint>
#include <vector>

namespace tarnwick::Favorites {

using Bytes = std::vector<std::uint8_t>;

// Base64 with padding and without line breaks (RFC 4648, section 4). Sizes `encoded` itself.
void Base64Encode(const Bytes& plain, Bytes& encoded);

} // namespace tarnwick::Favorites

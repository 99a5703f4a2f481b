#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tarnwick {

// A number of a link's upper-cased text. Links with different numbers are different links, so that the comparison of
// all pairs builds two texts only where they are most likely equal.
std::uint64_t LinkKey(std::string_view link);

// Whether two links are equal as whole texts, letter case aside.
bool EqualLinks(std::string_view one, std::string_view other);

} // namespace tarnwick

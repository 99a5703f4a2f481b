#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace tarnwick {

// A decimal number as a signed 32-bit whole number: blanks around it are allowed, a fraction goes to the nearest whole
// number and a half to the even one. Nothing for a text that is no number or is out of range.
std::optional<std::int32_t> NumberFromText(std::string_view text);

} // namespace tarnwick

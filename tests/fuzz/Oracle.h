#pragma once

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

namespace tarnwick::fuzz {

// How a number's text is built up: blanks, sign, digits, point, digits, blanks, with at least one digit.
struct NumberShape {
    bool Sound = false;
    std::size_t Digits = 0;

    explicit NumberShape(std::string_view text) {
        std::size_t at = 0;
        const auto skip = [&](std::string_view characters) {
            const std::size_t start = at;
            while (at < text.size() && characters.find(text[at]) != std::string_view::npos)
                ++at;
            return at - start;
        };
        constexpr std::string_view digits = "0123456789";
        skip(" ");
        at += at < text.size() && (text[at] == '+' || text[at] == '-') ? 1 : 0;
        Digits = skip(digits);
        if (at < text.size() && text[at] == '.') {
            ++at;
            Digits += skip(digits);
        }
        skip(" ");
        Sound = at == text.size() && Digits > 0;
    }

    // So few digits that a double tells every such number from every other and from every half.
    bool FitsDouble() const { return Digits <= std::numeric_limits<double>::digits10; }
};

// The C library's opinion on a sound text that FitsDouble(): rounding to the nearest, halves to the even.
inline std::optional<std::int32_t> NumberByDouble(std::string_view text) {
    const double rounded = std::nearbyint(std::strtod(std::string(text).c_str(), nullptr));
    using Limits = std::numeric_limits<std::int32_t>;
    if (rounded < double{Limits::min()} || rounded > double{Limits::max()})
        return std::nullopt;
    return static_cast<std::int32_t>(rounded);
}

} // namespace tarnwick::fuzz

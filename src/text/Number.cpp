#include "text/Number.h"

#include <limits>

namespace tarnwick {

namespace {

constexpr bool IsDigit(char c) { return c >= '0' && c <= '9'; }

std::string_view TakeDigits(std::string_view& rest) {
    std::size_t count = 0;
    while (count < rest.size() && IsDigit(rest[count]))
        ++count;
    const std::string_view digits = rest.substr(0, count);
    rest.remove_prefix(count);
    return digits;
}

std::string_view TrimBlanks(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

bool RoundsUp(std::string_view fraction, bool wholeIsOdd) {
    if (fraction.empty() || fraction[0] < '5')
        return false;
    const bool half = fraction[0] == '5' && fraction.find_first_not_of('0', 1) == std::string_view::npos;
    return !half || wholeIsOdd;
}

} // namespace

std::optional<std::int32_t> NumberFromText(std::string_view text) {
    std::string_view rest = TrimBlanks(text);
    const bool negative = rest.starts_with('-');
    if (negative || rest.starts_with('+'))
        rest.remove_prefix(1);
    const std::string_view whole = TakeDigits(rest);
    std::string_view fraction;
    if (rest.starts_with('.')) {
        rest.remove_prefix(1);
        fraction = TakeDigits(rest);
    }
    if (!rest.empty() || (whole.empty() && fraction.empty()))
        return std::nullopt;

    using Limits = std::numeric_limits<std::int32_t>;
    const std::int64_t bound = negative ? -std::int64_t{Limits::min()} : Limits::max();
    std::int64_t value = 0;
    for (const char digit : whole) {
        value = value * 10 + (digit - '0');
        if (value > bound)
            return std::nullopt;
    }
    if (RoundsUp(fraction, value % 2 != 0))
        ++value;
    if (value > bound)
        return std::nullopt;
    return static_cast<std::int32_t>(negative ? -value : value);
}

} // namespace tarnwick

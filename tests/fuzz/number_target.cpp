// The conversion of a text to a number, against the C library's.

#include "favorites/Number.h"
#include "fuzz/Oracle.h"
#include "fuzz/Targets.h"

namespace tarnwick::fuzz {

void Number(std::string_view input) {
    const auto number = NumberFromText(input);
    const NumberShape shape(input);
    if (!shape.Sound) {
        Require(!number, "a text that is no number gives one");
        return;
    }
    if (shape.FitsDouble())
        Require(number == NumberByDouble(input), "the number is not the nearest one");

    const std::string text(input);
    Require(NumberFromText("  " + text + " ") == number, "blanks around change the number");
    const std::size_t digits = text.find_first_of(".0123456789");
    Require(NumberFromText(text.substr(0, digits) + "00" + text.substr(digits)) == number,
            "zeros in front change the number");
    if (text.find('.') != std::string::npos)
        Require(NumberFromText(text.substr(0, text.find_last_not_of(' ') + 1) + "00") == number,
                "zeros at the end of the fraction change the number");
    if (number && *number > 0 && text.find_first_of("+-") == std::string::npos)
        Require(NumberFromText("-" + text.substr(digits)) == -*number, "the sign changes the size");
}

} // namespace tarnwick::fuzz

#include "favorites/Number.h"
#include "fuzz/Targets.h"

#include <string>

namespace tarnwick::fuzz {

void Number(std::string_view input) {
    const auto number = NumberFromText(input);
    if (!number)
        return;
    const std::string text(input);
    Require(text.find_first_not_of("+-. 0123456789") == std::string::npos, "a text that is no number gives one");
    Require(NumberFromText(std::to_string(*number)) == number, "the number isn't its own text's");
    Require(NumberFromText("  " + text + " ") == number, "blanks around change the number");
    const std::size_t digits = text.find_first_of(".0123456789");
    Require(NumberFromText(text.substr(0, digits) + "00" + text.substr(digits)) == number,
            "zeros in front change the number");
    if (*number > 0 && text.find('+') == std::string::npos)
        Require(NumberFromText("-" + text.substr(digits)) == -*number, "the sign changes the size");
}

} // namespace tarnwick::fuzz

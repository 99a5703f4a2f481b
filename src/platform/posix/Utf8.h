#pragma once

#include "window/Utf8.h"

#include <string>
#include <string_view>

namespace tarnwick {

// Upper case, letter by letter; bytes that are no UTF-8 come through unchanged.
std::string UpperUtf8(std::string_view text);

bool EqualRegardlessOfCase(std::string_view a, std::string_view b);

// A key whose bytes compare as the upper-cased UTF-16 units of `text` do: the order of an NTFS folder. Each unit is one
// character of the key in the form of UTF-8.
std::string FolderOrderKey(std::string_view text);

} // namespace tarnwick

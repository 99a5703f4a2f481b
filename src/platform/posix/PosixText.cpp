#include "platform/posix/PosixText.h"

#include "platform/posix/Utf8.h"

namespace tarnwick {

std::string PosixText::Upper(std::string_view text) { return UpperUtf8(text); }

} // namespace tarnwick

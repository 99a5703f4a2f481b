#pragma once

#include "services/Services.h"

#include <string>
#include <string_view>

namespace tarnwick {

// Text of the system's code page to UTF-16 and back, for the system's calls.
std::wstring WideOf(std::string_view text);
std::string NarrowOf(std::wstring_view text);
std::string Utf8Of(std::wstring_view text);

// A text as it is shown. The program's own texts are UTF-8 also on a system whose code page can't be.
std::wstring LinesOf(std::string_view text);
std::wstring SingleLineOf(std::string_view text);
// One line for a place where the system would read "&" as an access key.
std::wstring LiteralCaption(std::string_view text);

class Win32Text final : public TextService {
public:
    // Letter by letter, whatever their number of bytes. Bytes that are no text of the code page stay as they are.
    std::string Upper(std::string_view text) override;
};

} // namespace tarnwick

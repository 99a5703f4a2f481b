#pragma once

#include "services/Services.h"

#include <string>
#include <string_view>

namespace tarnwick {

// The program's texts to UTF-16 and back, for the system's calls. The manifest makes UTF-8 the code page, so that the
// calls that take bytes take these too. A byte that is no UTF-8 becomes U+FFFD.
std::wstring WideOf(std::string_view text);
std::string Utf8Of(std::wstring_view text);

// A text as it is shown.
std::wstring LinesOf(std::string_view text);
std::wstring SingleLineOf(std::string_view text);
// One line for a place where the system would read "&" as an access key.
std::wstring LiteralCaption(std::string_view text);

class Win32Text final : public TextService {
public:
    // Letter by letter, whatever their number of bytes. A text that is not wholly UTF-8 is treated as ASCII.
    std::string Upper(std::string_view text) override;
};

} // namespace tarnwick

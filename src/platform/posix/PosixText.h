#pragma once

#include "platform/Services.h"

namespace tarnwick {

// The code page of this system is UTF-8: a text is its bytes.
class PosixText final : public TextService {
public:
    std::string Upper(std::string_view text) override;
    std::string ToBytes(const std::string& text) override { return text; }
    std::string FromBytes(const std::string& bytes) override { return bytes; }
};

} // namespace tarnwick

#pragma once

#include "platform/Services.h"

namespace tarnwick {

class Win32Shortcuts final : public ShortcutService {
public:
    std::string ReadValue(const std::string& section, const std::string& key, const std::string& fallback,
                          std::size_t size, const std::string& file) override;
};

} // namespace tarnwick

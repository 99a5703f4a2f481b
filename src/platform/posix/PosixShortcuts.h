#pragma once

#include "platform/Services.h"

namespace tarnwick {

class PosixShortcuts final : public ShortcutService {
public:
    // What stands behind the first 16 MiB of a file is not looked for.
    static constexpr std::size_t ReadLimit = 16U << 20U;

    std::string ReadValue(const std::string& section, const std::string& key, const std::string& fallback,
                          std::size_t size, const std::string& file) override;

private:
    std::string bytes_; // of the file under way; its memory serves the next one
};

} // namespace tarnwick

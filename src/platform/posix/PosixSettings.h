#pragma once

#include "services/Services.h"

namespace tarnwick {

// One file per application, <configuration folder>/<application>/settings.ini.
class PosixSettings final : public SettingsService {
public:
    // A file may have this many bytes: nothing is read after them, and a larger file is never written to.
    static constexpr std::size_t SizeLimit = 1U << 20U;

    void Read(const std::string& application, const std::string& section, std::vector<Setting>& settings) override;
    bool Write(const std::string& application, const std::string& section,
               const std::vector<Setting>& settings) override;
};

} // namespace tarnwick

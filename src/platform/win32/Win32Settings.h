#pragma once

#include "services/Services.h"

#include <utility>

namespace tarnwick {

// Text values in the current user's registry, under Software\<application>\<section>.
class Win32Settings final : public SettingsService {
public:
    // `root` is the key used in place of Software.
    explicit Win32Settings(std::string root = "Software") : root_(std::move(root)) {}

    void Read(const std::string& application, const std::string& section, std::vector<Setting>& settings) override;
    bool Write(const std::string& application, const std::string& section,
               const std::vector<Setting>& settings) override;

private:
    std::string PathOf(const std::string& application, const std::string& section) const;

    const std::string root_;
};

} // namespace tarnwick

#pragma once

#include "services/Services.h"

#include <condition_variable>
#include <mutex>

namespace tarnwick {

// A name on its way through the system's resolver, in a thread of its own: the resolver can't be stopped, only left.
class PosixLookup final : public HostLookup {
public:
    // nullptr when there is no thread to be had.
    static std::shared_ptr<HostLookup> Start(const std::string& name);

    bool Wait(std::int64_t ms) override;
    std::string Address() const override { return address_; }

private:
    void Run(const std::string& name);

    std::mutex mutex_;
    std::condition_variable change_;
    bool ended_ = false;
    std::string address_;
};

} // namespace tarnwick

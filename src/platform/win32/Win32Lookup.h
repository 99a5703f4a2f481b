#pragma once

#include "services/Services.h"

namespace tarnwick {

// A name on its way through the system's resolver, in a thread of its own: the resolver can't be stopped, only left.
class Win32Lookup final : public HostLookup {
public:
    // nullptr when there is no thread to be had.
    static std::shared_ptr<HostLookup> Start(const std::string& name);

    explicit Win32Lookup(const std::string& name) : name_(name) {}
    ~Win32Lookup() override;
    Win32Lookup(const Win32Lookup&) = delete;
    Win32Lookup& operator=(const Win32Lookup&) = delete;

    bool Wait(std::int64_t ms) override;
    std::string Address() const override { return address_; }

    // In the thread.
    void Run();

private:
    const std::string name_;
    std::string address_;
    void* thread_ = nullptr;
};

} // namespace tarnwick

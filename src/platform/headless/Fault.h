#pragma once

#include <string>

namespace tarnwick {

// Which calls of the services in memory fail, and how.
class Fault {
public:
    std::string Call; // each call of this name fails,
    int Number = 0;   // or the one with this number among all calls, from 1;
    int Way = 1;      // in this one of the ways in which it can.

    // 0 when the call succeeds, else the way in which it fails.
    int Strike(const std::string& call, int ways) {
        if (++calls_ != Number && call != Call)
            return 0;
        struck_ = call;
        ways_ = ways;
        return Way;
    }
    // The call that failed last, and how many ways it has; the empty text when none has failed.
    const std::string& Struck() const { return struck_; }
    int Ways() const { return ways_; }

private:
    int calls_ = 0;
    std::string struck_;
    int ways_ = 0;
};

// A service whose calls can be made to fail.
class CanFail {
public:
    Fault* Faults = nullptr;

protected:
    int Fails(const char* call, int ways = 1) { return Faults == nullptr ? 0 : Faults->Strike(call, ways); }
};

} // namespace tarnwick

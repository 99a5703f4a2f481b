#pragma once

#include "services/Services.h"

#include <cstdint>
#include <unordered_map>

namespace tarnwick {

// The procedures that the program puts on its real windows.
class Win32Procedures {
public:
    Win32Procedures();
    ~Win32Procedures();
    Win32Procedures(const Win32Procedures&) = delete;
    Win32Procedures& operator=(const Win32Procedures&) = delete;

    PreviousProcedure Install(WindowHandle window, WindowProcedure procedure);
    void Restore(WindowHandle window, PreviousProcedure previous);
    std::int32_t Call(PreviousProcedure previous, WindowHandle window, std::uint32_t message, std::int32_t first,
                      std::int32_t second);

    // For the system: hands a message to the procedure that is installed on the window.
    std::intptr_t Deliver(WindowHandle window, std::uint32_t message, std::uintptr_t first, std::intptr_t second);

private:
    // The message under way as the system gave it: the program's procedures see 32 bits of each part, and what they
    // pass on must be whole, as a part may be a pointer.
    struct Whole {
        WindowHandle Window = 0;
        std::uint32_t Message = 0;
        std::uintptr_t First = 0;
        std::intptr_t Second = 0;
        std::intptr_t Result = 0;
    };

    std::unordered_map<WindowHandle, WindowProcedure> installed_;
    Whole* underWay_ = nullptr;
};

} // namespace tarnwick

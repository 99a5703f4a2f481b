#pragma once

// The state of the socket engine, one copy in the program, and the window procedure that gets the socket's messages.

#include "services/Services.h"

#include <cstdint>

namespace tarnwick {
class Winsock;
}

namespace tarnwick::SocketModule {

extern std::int16_t SocketHandle;                 // 0: no socket, or Winsock::NotStarted
extern PreviousProcedure PreviousWindowProcedure; // 0 until the first connection
extern std::int16_t Connected;                    // 1 from the connect notification to the peer's close
extern Winsock* Instance;

std::int32_t SocketWindowProc(WindowHandle window, std::uint32_t message, std::int32_t first, std::int32_t second);

// The low and the high 16 bits as signed numbers.
std::int16_t LowWord(std::int32_t value);
std::int16_t HighWord(std::int32_t value);

} // namespace tarnwick::SocketModule

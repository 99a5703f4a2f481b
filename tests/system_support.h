#pragma once

// What a test that runs on every system needs of the one that it runs on: TemporaryHome, SystemFiles, native sockets.

#ifdef _WIN32
#include "win32_support.h"
#else
#include "posix_support.h"
#endif

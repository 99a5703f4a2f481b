// One fuzz target; the build names it.

#include "fuzz/Targets.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const auto target = tarnwick::fuzz::Targets.at(TARNWICK_TARGET);
    target({reinterpret_cast<const char*>(data), size});
    return 0;
}

#include "platform/posix/PosixShortcuts.h"

#include "platform/posix/InitialisationFile.h"
#include "platform/posix/RegularFile.h"

namespace tarnwick {

std::string PosixShortcuts::ReadValue(const std::string& section, const std::string& key, const std::string& fallback,
                                      std::size_t size, const std::string& file) {
    constexpr std::size_t KeptMemory = 1U << 16U; // bytes; more than any shortcut that was meant as one

    if (ReadRegularFile(SystemPath(file), ReadLimit, bytes_) != FileReading::Done)
        bytes_.clear();
    std::string value = FindInitialisationValue(bytes_, section, key, fallback, size);
    if (bytes_.capacity() > KeptMemory)
        std::string().swap(bytes_);
    return value;
}

} // namespace tarnwick

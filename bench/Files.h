#pragma once

// The floor under every walk: the same files opened, read and closed.

#include <algorithm>
#include <array>
#include <fcntl.h>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <unistd.h>
#include <vector>

namespace tarnwick::bench {

// In the order of their paths.
inline std::vector<std::string> AllFiles(const std::string& root) {
    std::vector<std::string> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(root))
        if (entry.is_regular_file())
            files.push_back(entry.path().string());
    std::ranges::sort(files);
    return files;
}

inline void ReadAll(const std::vector<std::string>& files) {
    std::array<char, 16384> bytes; // NOLINT: filled by read()
    for (const std::string& file : files) {
        const int descriptor = open(file.c_str(), O_RDONLY | O_CLOEXEC);
        if (read(descriptor, bytes.data(), bytes.size()) <= 0)
            throw std::runtime_error("can't read " + file);
        close(descriptor);
    }
}

} // namespace tarnwick::bench

#pragma once

#include <cstddef>
#include <string>

namespace tarnwick {

enum class FileReading { Done, Missing, Failed };

// Reads the first `limit` bytes of a regular file into `bytes`. Anything else under that path (a folder, a pipe, a
// device) is a failure at once: nothing is waited for.
FileReading ReadRegularFile(const std::string& path, std::size_t limit, std::string& bytes);

// A file that may not be written to is read-only, for whoever runs the program; permissions don't stop root.
bool IsWritable(const std::string& path);

// Gives the file `bytes` as its whole content, or leaves it as it was and returns false, as for a read-only one.
// Readers and a crash at any moment find the old content or the new one. The file keeps its permissions; a new one is
// its owner's alone. A symbolic link stays one: its target gets the content, whether or not it exists yet.
bool ReplaceRegularFile(const std::string& path, const std::string& bytes);

// Makes the folders of which `path` is the innermost, for their owner alone, where they are missing.
bool MakeFolders(const std::string& path);

// A path with "\" between its pieces as the system writes it; the empty text for one that it can't write.
std::string SystemPath(const std::string& path);

} // namespace tarnwick

#include "platform/posix/RegularFile.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <string_view>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace tarnwick {

namespace {

// A descriptor that closes itself.
struct Descriptor {
    explicit Descriptor(int number) : Number(number) {}
    ~Descriptor() {
        if (Number >= 0)
            close(Number);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    const int Number;
};

bool IsRegular(int descriptor) {
    struct stat status = {};
    return fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
}

bool WriteWhole(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = write(descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return fsync(descriptor) == 0;
}

// The file at the end of a chain of links, be it there or not; the empty text where links lead in a circle.
std::string TargetOf(const std::string& path) {
    constexpr int mostLinks = 40; // as the system follows
    std::filesystem::path target = path;
    std::error_code none;
    for (int followed = 0; followed <= mostLinks; ++followed) {
        const std::filesystem::path next = std::filesystem::read_symlink(target, none);
        if (none)
            return target.string();
        target = target.parent_path() / next;
    }
    return {};
}

} // namespace

FileReading ReadRegularFile(const std::string& path, std::size_t limit, std::string& bytes) {
    bytes.clear();
    // Not blocking: a pipe without a writer would hold up the open itself. A device that a link leads to is opened
    // before it is known for one: asking first would cost a call per favorite, and who puts the link there can open it,
    // too.
    const Descriptor file(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    if (file.Number < 0)
        return errno == ENOENT ? FileReading::Missing : FileReading::Failed;
    std::array<char, 16384> chunk; // NOLINT: filled by pread()
    for (;;) {
        const std::size_t room = std::min(chunk.size(), limit - bytes.size());
        // A folder, a pipe and a terminal have no place to read from.
        const ssize_t got = pread(file.Number, chunk.data(), room, static_cast<off_t>(bytes.size()));
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            return FileReading::Failed;
        bytes.append(chunk.data(), static_cast<std::size_t>(got));
        // A small file is whole after one read. What has more may be a device, which has no end.
        if (static_cast<std::size_t>(got) < room)
            return FileReading::Done;
        if (!IsRegular(file.Number))
            return FileReading::Failed;
        if (bytes.size() == limit)
            return FileReading::Done;
    }
}

bool IsWritable(const std::string& path) {
    struct stat status = {};
    return stat(path.c_str(), &status) == 0 && (status.st_mode & S_IWUSR) != 0 &&
           faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0;
}

bool ReplaceRegularFile(const std::string& path, const std::string& bytes) {
    const std::string target = TargetOf(path);
    struct stat former = {};
    const bool exists = stat(target.c_str(), &former) == 0;
    if (exists && !IsWritable(target))
        return false;
    // One at a time; a file system without locks has to do without.
    const Descriptor folder(open(target.substr(0, target.rfind('/') + 1).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder.Number < 0 || (flock(folder.Number, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK))
        return false;
    // Always the same name, so that the next save takes away what a killed one has left.
    const std::string fresh = target + ".new";
    unlink(fresh.c_str());
    bool written = false;
    {
        const Descriptor file(open(fresh.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR));
        if (file.Number < 0)
            return false;
        written = (!exists || fchmod(file.Number, former.st_mode & ALLPERMS) == 0) && WriteWhole(file.Number, bytes);
    }
    if (written && std::rename(fresh.c_str(), target.c_str()) == 0)
        return true;
    unlink(fresh.c_str());
    return false;
}

bool MakeFolders(const std::string& path) {
    for (std::size_t end = path.find('/', 1); end != std::string::npos; end = path.find('/', end + 1))
        mkdir(path.substr(0, end).c_str(), S_IRWXU);
    return mkdir(path.c_str(), S_IRWXU) == 0 || errno == EEXIST;
}

std::string SystemPath(const std::string& path) {
    if (path.find('\0') != std::string::npos)
        return {};
    std::string system = path;
    std::ranges::replace(system, '\\', '/');
    return system;
}

} // namespace tarnwick

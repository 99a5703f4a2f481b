#include "platform/posix/PosixFiles.h"

#include "platform/posix/PosixText.h"
#include "platform/posix/RegularFile.h"
#include "platform/posix/UserFolders.h"
#include "text/Ascii.h"

#include <algorithm>
#include <cstdlib>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <string_view>
#include <sys/stat.h>
#include <tuple>
#include <unistd.h>

namespace tarnwick {

namespace {

struct Entry {
    std::string Key; // FolderOrderKey() of the name
    ListedName Name;
};

struct CloseFolder {
    void operator()(DIR* folder) const { closedir(folder); }
};

bool IsDots(std::string_view name) { return name == "." || name == ".."; }

// Names that differ in case only come in the order of their bytes.
bool ComesBefore(const Entry& a, const Entry& b) { return std::tie(a.Key, a.Name.Text) < std::tie(b.Key, b.Name.Text); }

bool IsFolder(const struct stat& status) { return S_ISDIR(status.st_mode); }

// `path` is the system's.
std::string IdentityOf(const std::string& path) {
    struct stat status = {};
    if (stat(path.c_str(), &status) != 0 || !IsFolder(status))
        return {};
    return std::to_string(status.st_dev) + ":" + std::to_string(status.st_ino);
}

} // namespace

bool PosixFiles::List(const std::string& folder, std::string_view ending, std::vector<ListedName>& names) {
    const std::unique_ptr<DIR, CloseFolder> opened(opendir(SystemPath(folder).c_str()));
    if (!opened)
        return false;
    std::vector<Entry> entries;
    while (const dirent* found = readdir(opened.get())) { // NOLINT(concurrency-mt-unsafe): one thread per folder
        const std::string_view name = found->d_name;
        if (IsDots(name) || !EndsWithRegardlessOfCase(name, ending) || name.find('\\') != std::string_view::npos)
            continue;
        // Not every file system says of what kind an entry is: what may be a link is looked at as one.
        const bool isLink = found->d_type == DT_LNK || found->d_type == DT_UNKNOWN;
        entries.push_back({FolderOrderKey(name), {std::string(name), isLink}});
    }
    std::ranges::sort(entries, ComesBefore);
    names.clear();
    names.reserve(entries.size());
    for (Entry& entry : entries)
        names.push_back(std::move(entry.Name));
    return true;
}

std::string PosixFiles::FolderIdentity(const std::string& folder) { return IdentityOf(SystemPath(folder)); }

std::string PosixFiles::RealFolder(const std::string& folder) {
    const std::unique_ptr<char, decltype(&std::free)> real(realpath(SystemPath(folder).c_str(), nullptr), &std::free);
    std::string path = real ? real.get() : "";
    if (path.find('\\') != std::string::npos)
        return {}; // another path would look the same
    std::ranges::replace(path, '/', '\\');
    return path;
}

FilePlace PosixFiles::PlaceOf(const std::string& file) {
    const std::unique_ptr<char, decltype(&std::free)> real(realpath(SystemPath(file).c_str(), nullptr), &std::free);
    if (!real)
        return {};
    const std::string path = real.get();
    const std::size_t last = path.rfind('/') + 1;
    return {IdentityOf(path.substr(0, last)), path.substr(last)};
}

bool PosixFiles::Read(const std::string& file, std::size_t limit, std::string& bytes) {
    if (ReadRegularFile(SystemPath(file), limit, bytes) == FileReading::Done)
        return true;
    bytes.clear();
    return false;
}

bool PosixFiles::Remove(const std::string& path) {
    const std::string system = SystemPath(path);
    struct stat status = {};
    if (lstat(system.c_str(), &status) != 0)
        return false;
    if (S_ISLNK(status.st_mode)) {
        struct stat target = {};
        if (stat(system.c_str(), &target) == 0 && IsFolder(target))
            return false;
    } else if (!S_ISREG(status.st_mode) || !IsWritable(system)) {
        return false;
    }
    return unlink(system.c_str()) == 0;
}

std::string PosixFiles::FavoritesFolder() {
    std::string folder = FavoritesFolderOfUser();
    if (folder.find('\\') != std::string::npos)
        return {}; // another path would look the same
    std::ranges::replace(folder, '/', '\\');
    return folder;
}

} // namespace tarnwick

#include "platform/posix/PosixFiles.h"

#include "platform/posix/RegularFile.h"
#include "platform/posix/UserFolders.h"
#include "platform/posix/Utf8.h"

#include <algorithm>
#include <dirent.h>
#include <fcntl.h>
#include <limits>
#include <memory>
#include <string_view>
#include <sys/stat.h>
#include <tuple>
#include <unistd.h>

namespace tarnwick {

namespace {

struct Entry {
    std::string Key; // FolderOrderKey() of the name
    std::string Name;
};

struct CloseFolder {
    void operator()(DIR* folder) const { closedir(folder); }
};

bool IsDots(std::string_view name) { return name == "." || name == ".."; }

// The length of the character that begins a key at `at`.
std::size_t UnitBytes(std::string_view key, std::size_t at) {
    const auto lead = static_cast<unsigned char>(key[at]);
    return lead < 0x80 ? 1 : lead < 0xE0 ? 2 : 3;
}

// Both are keys of FolderOrderKey(). "*" is any text, "?" any one character.
bool Matches(std::string_view pattern, std::string_view name) {
    std::size_t p = 0;
    std::size_t n = 0;
    std::size_t star = std::string_view::npos; // the last "*" so far, and how much of the name it has taken
    std::size_t taken = 0;
    while (n < name.size()) {
        if (p < pattern.size() && pattern[p] == '*') {
            star = p++;
            taken = n;
        } else if (p < pattern.size() && pattern[p] == '?') {
            ++p;
            n += UnitBytes(name, n);
        } else if (p < pattern.size() && pattern[p] == name[n]) {
            ++p;
            ++n;
        } else if (star != std::string_view::npos) {
            taken += UnitBytes(name, taken);
            n = taken;
            p = star + 1;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', p) == std::string_view::npos;
}

bool IsSameFolder(const struct stat& a, const struct stat& b) { return a.st_dev == b.st_dev && a.st_ino == b.st_ino; }

// True when the folder that was opened as `path` (without a "/" at the end) is one of the folders above it in the path.
bool LiesBelowItself(const std::string& path, DIR* folder) {
    struct stat self = {};
    if (fstat(dirfd(folder), &self) != 0)
        return true;
    for (std::size_t end = path.find('/'); end != std::string::npos; end = path.find('/', end + 1)) {
        struct stat above = {};
        const std::string prefix = path.substr(0, std::max<std::size_t>(end, 1));
        if (prefix.size() < path.size() && stat(prefix.c_str(), &above) == 0 && IsSameFolder(self, above))
            return true;
    }
    return false;
}

std::vector<Entry> ReadFolder(const std::string& path, std::string_view pattern) {
    std::vector<Entry> entries;
    const std::unique_ptr<DIR, CloseFolder> folder(opendir(path.c_str()));
    if (!folder || LiesBelowItself(path, folder.get()))
        return entries;
    const std::string patternKey = FolderOrderKey(pattern);
    while (const dirent* found = readdir(folder.get())) { // NOLINT(concurrency-mt-unsafe): one thread a folder
        const std::string_view name = found->d_name;
        if (name.find('\\') != std::string_view::npos)
            continue;
        Entry entry = {FolderOrderKey(name), std::string(name)};
        if (Matches(patternKey, entry.Key))
            entries.push_back(std::move(entry));
    }
    return entries;
}

// "." and ".." first; names that differ in case only in the order of their bytes.
bool ComesBefore(const Entry& a, const Entry& b) {
    const bool dotsA = IsDots(a.Name);
    const bool dotsB = IsDots(b.Name);
    return std::tie(dotsB, a.Key, a.Name) < std::tie(dotsA, b.Key, b.Name);
}

bool IsFolder(const struct stat& status) { return S_ISDIR(status.st_mode); }

// A file that may not be written to is read-only, for whoever runs the program; permissions don't stop root.
bool IsWritable(const std::string& path, const struct stat& status) {
    return (status.st_mode & S_IWUSR) != 0 && faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0;
}

} // namespace

std::string PosixFiles::OpenListing(const std::string& pattern, ListingHandle& listing) {
    listing = 0;
    std::string path = SystemPath(pattern);
    const std::size_t last = path.rfind('/') + 1; // 0 without any
    const std::string name = path.substr(last);
    path.resize(last);
    while (path.size() > 1 && path.back() == '/')
        path.pop_back();
    std::vector<Entry> entries = name.empty() ? std::vector<Entry>() : ReadFolder(path.empty() ? "." : path, name);
    if (entries.empty())
        return {};

    std::ranges::sort(entries, ComesBefore);
    listing = FreeHandle();
    Listing& opened = listings_[listing];
    opened.Names.reserve(entries.size());
    for (Entry& entry : entries)
        opened.Names.push_back(std::move(entry.Name));
    return StepListing(listing);
}

std::string PosixFiles::StepListing(ListingHandle listing) {
    const auto found = listings_.find(listing);
    if (found == listings_.end() || found->second.Next == found->second.Names.size())
        return {};
    return std::move(found->second.Names[found->second.Next++]);
}

void PosixFiles::CloseListing(ListingHandle listing) { listings_.erase(listing); }

bool PosixFiles::Remove(const std::string& path) {
    const std::string system = SystemPath(path);
    const std::string_view name = std::string_view(system).substr(system.rfind('/') + 1);
    if (name.empty() || name.find_first_of("*?") != std::string_view::npos)
        return false;
    struct stat status = {};
    if (lstat(system.c_str(), &status) != 0)
        return false;
    if (S_ISLNK(status.st_mode)) {
        struct stat target = {};
        if (stat(system.c_str(), &target) == 0 && IsFolder(target))
            return false;
    } else if (!S_ISREG(status.st_mode) || !IsWritable(system, status)) {
        return false;
    }
    return unlink(system.c_str()) == 0;
}

std::string PosixFiles::FavoritesFolder() {
    std::string folder = FavoritesFolderOfUser();
    if (folder.find('\\') != std::string::npos)
        return {}; // it can't be told from another path
    std::ranges::replace(folder, '/', '\\');
    return folder;
}

ListingHandle PosixFiles::FreeHandle() {
    do
        lastHandle_ = lastHandle_ == std::numeric_limits<ListingHandle>::max() ? 1 : lastHandle_ + 1;
    while (listings_.contains(lastHandle_));
    return lastHandle_;
}

} // namespace tarnwick

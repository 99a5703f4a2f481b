#include "platform/win32/Win32Files.h"

#include "platform/win32/Win32Text.h"

#include <windows.h>

#include <shlobj.h>
#include <shlwapi.h>

#include <algorithm>
#include <optional>
#include <tuple>
#include <utility>

namespace tarnwick {

namespace {

// What tells a folder from every other one.
using Identity = std::tuple<DWORD, DWORD, DWORD>;

std::optional<Identity> IdentityOf(const std::wstring& folder) {
    const HANDLE handle = CreateFileW(folder.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                      nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        return std::nullopt;
    BY_HANDLE_FILE_INFORMATION information;
    const bool known = GetFileInformationByHandle(handle, &information) != 0;
    CloseHandle(handle);
    if (!known)
        return std::nullopt;
    return Identity(information.dwVolumeSerialNumber, information.nFileIndexHigh, information.nFileIndexLow);
}

// `folder` ends with "\".
bool ClosesCircle(const std::wstring& folder) {
    const std::optional<Identity> own = IdentityOf(folder);
    if (!own)
        return false;
    for (std::size_t slash = folder.find(L'\\'); slash + 1 < folder.size(); slash = folder.find(L'\\', slash + 1))
        if (IdentityOf(folder.substr(0, slash + 1)) == own)
            return true;
    return false;
}

bool IsDots(const std::wstring& name) { return name == L"." || name == L".."; }

std::wstring OrderKey(std::wstring name) {
    CharUpperBuffW(name.data(), static_cast<DWORD>(name.size()));
    return name;
}

// Sorted here, as not every volume keeps its names in order, and wide: a name may have more bytes than the narrow call
// has room for.
std::vector<std::string> NamesOf(const std::wstring& folder, const std::wstring& pattern) {
    WIN32_FIND_DATAW data;
    const HANDLE find = FindFirstFileW((folder + pattern).c_str(), &data);
    if (find == INVALID_HANDLE_VALUE)
        return {};
    std::vector<std::pair<std::wstring, std::wstring>> found; // with the key in front
    do {
        const std::wstring name = data.cFileName;
        // The system also matches the short name that a file may have beside its own.
        if (!IsDots(name) && PathMatchSpecW(name.c_str(), pattern.c_str()))
            found.emplace_back(OrderKey(name), name);
    } while (FindNextFileW(find, &data));
    FindClose(find);
    std::ranges::sort(found);

    std::vector<std::string> names;
    if (pattern == L"*")
        names = {".", ".."};
    for (const auto& [key, name] : found)
        names.push_back(NarrowOf(name));
    return names;
}

} // namespace

std::string Win32Files::OpenListing(const std::string& pattern, ListingHandle& listing) {
    const std::wstring wide = WideOf(pattern);
    const std::size_t behindFolder = wide.rfind(L'\\') + 1;
    const std::wstring folder = wide.substr(0, behindFolder);
    if (ClosesCircle(folder))
        return {};
    Listing opened{NamesOf(folder, wide.substr(behindFolder))};
    if (opened.Names.empty())
        return {};
    do
        lastHandle_ = static_cast<ListingHandle>((static_cast<std::uint32_t>(lastHandle_) + 1) & 0x7FFFFFFFU);
    while (lastHandle_ == 0 || listings_.contains(lastHandle_));
    listing = lastHandle_;
    listings_.emplace(listing, std::move(opened));
    return StepListing(listing);
}

std::string Win32Files::StepListing(ListingHandle listing) {
    const auto found = listings_.find(listing);
    if (found == listings_.end() || found->second.Next == found->second.Names.size())
        return {};
    return found->second.Names[found->second.Next++];
}

// The system takes "name" for "name. " and stretches wildcards: only a file that answers to exactly this name goes.
bool Win32Files::Remove(const std::string& path) {
    const std::wstring wide = WideOf(path);
    WIN32_FIND_DATAW data;
    const HANDLE find = FindFirstFileW(wide.c_str(), &data);
    if (find == INVALID_HANDLE_VALUE)
        return false;
    FindClose(find);
    constexpr DWORD kept = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY;
    const std::wstring name = wide.substr(wide.rfind(L'\\') + 1);
    if ((data.dwFileAttributes & kept) != 0 || OrderKey(data.cFileName) != OrderKey(name))
        return false;
    return DeleteFileW(wide.c_str()) != 0;
}

std::string Win32Files::FavoritesFolder() {
    PIDLIST_ABSOLUTE place = nullptr;
    if (SHGetSpecialFolderLocation(nullptr, CSIDL_FAVORITES, &place) != S_OK)
        return {};
    wchar_t path[MAX_PATH] = {};
    const bool named = SHGetPathFromIDListW(place, path) != 0;
    CoTaskMemFree(place);
    return named ? NarrowOf(path) : std::string();
}

} // namespace tarnwick

#include "platform/win32/Win32Files.h"

#include "platform/win32/Win32Text.h"
#include "text/Ascii.h"

#include <windows.h>

#include <shlobj.h>

#include <algorithm>
#include <tuple>
#include <utility>

namespace tarnwick {

namespace {

// A handle that closes itself.
class Opened {
public:
    Opened(const std::wstring& path, DWORD access, DWORD flags)
        : handle_(CreateFileW(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                              OPEN_EXISTING, flags, nullptr)) {}
    ~Opened() {
        if (*this)
            CloseHandle(handle_);
    }
    Opened(const Opened&) = delete;
    Opened& operator=(const Opened&) = delete;

    explicit operator bool() const { return handle_ != INVALID_HANDLE_VALUE; }
    HANDLE Handle() const { return handle_; }

private:
    HANDLE handle_;
};

// The path in the form that has no limit of 260 characters and is taken as it is: no ".", no "/", no dot or blank
// dropped from the end of a name.
std::wstring SystemPath(const std::string& path) {
    std::wstring wide = WideOf(path);
    if (path.find('\0') != std::string::npos)
        return {};
    if (wide.starts_with(LR"(\\?\)"))
        return wide;
    if (wide.starts_with(LR"(\\)"))
        return LR"(\\?\UNC\)" + wide.substr(2);
    return wide.size() > 2 && wide[1] == L':' ? LR"(\\?\)" + wide : std::wstring();
}

// `path` is the system's.
std::string IdentityOf(const std::wstring& path) {
    const Opened folder(path, 0, FILE_FLAG_BACKUP_SEMANTICS);
    BY_HANDLE_FILE_INFORMATION found;
    if (!folder || !GetFileInformationByHandle(folder.Handle(), &found))
        return {};
    if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0 || (found.nFileIndexHigh | found.nFileIndexLow) == 0)
        return {};
    return std::to_string(found.dwVolumeSerialNumber) + ":" + std::to_string(found.nFileIndexHigh) + ":" +
           std::to_string(found.nFileIndexLow);
}

// With every link followed, as the system writes it; the empty text for a path that leads nowhere.
std::wstring FinalPath(const std::string& path) {
    const Opened opened(SystemPath(path), 0, FILE_FLAG_BACKUP_SEMANTICS);
    std::wstring final(0x8000, L'\0');
    const DWORD length =
        opened ? GetFinalPathNameByHandleW(opened.Handle(), final.data(), static_cast<DWORD>(final.size()), 0) : 0;
    final.resize(length < final.size() ? length : 0);
    return final;
}

bool IsDots(std::wstring_view name) { return name == L"." || name == L".."; }

std::wstring OrderKey(std::wstring name) {
    CharUpperBuffW(name.data(), static_cast<DWORD>(name.size()));
    return name;
}

} // namespace

// Sorted here, as not every volume keeps its names in order, and wide: a name may have more bytes than the narrow call
// has room for.
bool Win32Files::List(const std::string& folder, std::string_view ending, std::vector<ListedName>& names) {
    WIN32_FIND_DATAW data;
    const std::wstring path = SystemPath(folder);
    const std::wstring every = path + (path.ends_with(L'\\') ? L"*" : L"\\*");
    const HANDLE find = path.empty() ? INVALID_HANDLE_VALUE
                                     : FindFirstFileExW(every.c_str(), FindExInfoBasic, &data, FindExSearchNameMatch,
                                                        nullptr, FIND_FIRST_EX_LARGE_FETCH);
    if (find == INVALID_HANDLE_VALUE)
        return false;
    std::vector<std::pair<std::wstring, ListedName>> found; // with the key in front
    do {
        const std::wstring wide = data.cFileName;
        std::string name = Utf8Of(wide);
        if (!IsDots(wide) && EndsWithRegardlessOfCase(name, ending))
            found.push_back(
                {OrderKey(wide), {std::move(name), (data.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0}});
    } while (FindNextFileW(find, &data));
    FindClose(find);
    std::ranges::sort(found, [](const auto& a, const auto& b) {
        return std::tie(a.first, a.second.Text) < std::tie(b.first, b.second.Text);
    });
    names.clear();
    for (auto& [key, name] : found)
        names.push_back(std::move(name));
    return true;
}

std::string Win32Files::FolderIdentity(const std::string& folder) { return IdentityOf(SystemPath(folder)); }

std::string Win32Files::RealFolder(const std::string& folder) { return Utf8Of(FinalPath(folder)); }

FilePlace Win32Files::PlaceOf(const std::string& file) {
    const std::wstring path = FinalPath(file);
    if (path.empty())
        return {};
    const std::size_t last = path.rfind(L'\\') + 1;
    return {IdentityOf(path.substr(0, last)), Utf8Of(path.substr(last))};
}

bool Win32Files::Read(const std::string& file, std::size_t limit, std::string& bytes) {
    bytes.clear();
    const Opened opened(SystemPath(file), GENERIC_READ, FILE_FLAG_SEQUENTIAL_SCAN);
    if (!opened || GetFileType(opened.Handle()) != FILE_TYPE_DISK)
        return false;
    char chunk[16384];
    DWORD got = 0;
    do {
        const auto room = static_cast<DWORD>(std::min(sizeof chunk, limit - bytes.size()));
        if (!ReadFile(opened.Handle(), chunk, room, &got, nullptr)) {
            bytes.clear();
            return false;
        }
        bytes.append(chunk, got);
    } while (got != 0);
    return true;
}

bool Win32Files::Remove(const std::string& path) {
    const std::wstring system = SystemPath(path);
    const DWORD attributes = GetFileAttributesW(system.c_str());
    constexpr DWORD kept = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY;
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & kept) == 0 && DeleteFileW(system.c_str()) != 0;
}

std::string Win32Files::FavoritesFolder() {
    PIDLIST_ABSOLUTE place = nullptr;
    if (SHGetSpecialFolderLocation(nullptr, CSIDL_FAVORITES, &place) != S_OK)
        return {};
    wchar_t path[MAX_PATH] = {};
    const bool named = SHGetPathFromIDListW(place, path) != 0;
    CoTaskMemFree(place);
    return named ? Utf8Of(path) : std::string();
}

} // namespace tarnwick

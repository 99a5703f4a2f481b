#pragma once

// What Tarnwick asks of a machine: one small interface per service, gathered in Services. A front end implements them,
// app/ hands them over once with UseServices(), and everything else reaches them through services().
//
// Texts are UTF-8; those from outside may hold any bytes. Paths have "\" between their pieces. Nothing here throws;
// a failure is a result that the operation names.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tarnwick {

struct Menu;
struct MenuEntry;
class Window;

// 32 bits that name a window to the machine, 0 for none.
using WindowHandle = std::int32_t;

// A name in a folder. A link may lead to a file or folder that another path names too.
struct ListedName {
    std::string Text;
    bool IsLink = false;
};

// Where a file really is, all links followed: its folder's identity and its name there.
struct FilePlace {
    std::string Folder;
    std::string Name;
};

class FileService {
public:
    virtual ~FileService() = default;

    // Puts the names in `folder` that end with `ending` (ASCII, letter case aside; every name ends with the empty text)
    // into `names`, in the order of an NTFS folder, without "." and "..". False when the folder can't be read.
    virtual bool List(const std::string& folder, std::string_view ending, std::vector<ListedName>& names) = 0;

    // A text that only this folder has, by whatever path it is reached; empty when the machine can't say.
    virtual std::string FolderIdentity(const std::string& folder) = 0;
    // The folder's path with every link in it followed, without a "\" at its end; empty when the machine can't say.
    virtual std::string RealFolder(const std::string& folder) = 0;
    // An empty folder when the machine can't say.
    virtual FilePlace PlaceOf(const std::string& file) = 0;

    // Reads the first `limit` bytes of a file. False, and no bytes, for anything but a regular file that can be read;
    // nothing is waited for.
    virtual bool Read(const std::string& file, std::size_t limit, std::string& bytes) = 0;

    // Deletes the one file of this path; of a link the link alone. False, and the file stays, for a folder, a read-only
    // or missing file. No character of the path is a wildcard.
    virtual bool Remove(const std::string& path) = 0;

    // The path of the user's Favorites folder; the empty text when the machine can't name it.
    virtual std::string FavoritesFolder() = 0;
};

// One value of a section of the settings.
struct Setting {
    std::string Key;
    std::string Value;
};

class SettingsService {
public:
    virtual ~SettingsService() = default;

    // Sets each key's stored value; one that isn't stored keeps the value that it comes with. All of them come from
    // one reading, so that a save by another program is seen whole or not at all (on Windows value by value: the
    // registry has no such reading).
    virtual void Read(const std::string& application, const std::string& section, std::vector<Setting>& settings) = 0;
    // Stores all of the values, or returns false and leaves all of them as they were. A read-only store stays.
    virtual bool Write(const std::string& application, const std::string& section,
                       const std::vector<Setting>& settings) = 0;
};

// The numbers of Windows Sockets 1.1 (winsock.h), which the operations below take and return on every machine.
inline constexpr std::uint16_t WinsockVersion = 0x0101; // major and minor version in one byte each
inline constexpr std::int32_t FamilyInternet = 2;       // AF_INET
inline constexpr std::int32_t TypeStream = 1;           // SOCK_STREAM
inline constexpr std::int32_t ProtocolTcp = 6;          // IPPROTO_TCP
inline constexpr std::int32_t LevelSocket = 65535;      // SOL_SOCKET
inline constexpr std::int32_t OptionLinger = 128;       // SO_LINGER
inline constexpr std::uint32_t NoAddress = 0xFFFFFFFF;  // INADDR_NONE
namespace SocketEvent {
inline constexpr std::int32_t Read = 1;     // FD_READ
inline constexpr std::int32_t Write = 2;    // FD_WRITE
inline constexpr std::int32_t Connect = 16; // FD_CONNECT
inline constexpr std::int32_t Close = 32;   // FD_CLOSE
inline constexpr std::int32_t All = Read | Write | Connect | Close;
} // namespace SocketEvent
namespace SocketError {
inline constexpr std::int32_t Failed = -1;                 // SOCKET_ERROR, of an operation
inline constexpr std::int32_t AddressNotAvailable = 10049; // WSAEADDRNOTAVAIL
inline constexpr std::int32_t NetworkDown = 10050;         // WSAENETDOWN
inline constexpr std::int32_t ConnectionReset = 10054;     // WSAECONNRESET
inline constexpr std::int32_t ConnectionRefused = 10061;   // WSAECONNREFUSED
inline constexpr std::int32_t SystemNotReady = 10091;      // WSASYSNOTREADY
inline constexpr std::int32_t VersionNotSupported = 10092; // WSAVERNOTSUPPORTED
} // namespace SocketError

// A socket as the machine numbers it; negative is a failure.
using SocketNumber = std::int32_t;

// SO_LINGER's value (Windows Sockets 1.1).
struct LingerRecord {
    std::uint16_t OnOff = 0;
    std::uint16_t Seconds = 0;
};

// The 16 bytes that connect() takes (Windows Sockets 1.1, sockaddr_in); port and address in network order.
struct AddressRecord {
    std::int16_t Family = 0;
    std::uint16_t Port = 0;
    std::uint32_t Address = 0;
    std::uint8_t Zero[8] = {};
};

// The look-up of a host's name, which runs by itself. Dropped before its end, it has no effect.
class HostLookup {
public:
    virtual ~HostLookup() = default;
    // Waits until it has ended or `ms`, which is not negative, have passed. True: it has ended.
    virtual bool Wait(std::int64_t ms) = 0;
    // Once it has ended: the bytes of the host's first address, as many as the address has; empty when there is none.
    virtual std::string Address() const = 0;
};

// The Windows Sockets 1.1 operations that the socket engine uses, with their results. All of them act at once; none but
// NameOfHost() and LocalName() waits for anything. A socket that was selected posts its events as window messages,
// which reach the window's procedure from the pump only, in order. Closing a socket takes away what is still queued for
// it. Where a socket is asked for, a number that is no open one fails with SocketError::Failed.
class SocketService {
public:
    virtual ~SocketService() = default;

    // Before every other operation. 0, or an error code: another version than WinsockVersion is refused.
    virtual std::int32_t Startup(std::uint16_t version) = 0;
    virtual std::int32_t Cleanup() = 0; // after every other operation; 0, or Failed

    // A stream socket of the internet family over TCP; negative for anything else, and when there is none to be had.
    virtual SocketNumber Open(std::int32_t family, std::int32_t type, std::int32_t protocol) = 0;
    // 0, or Failed: for any other option than OptionLinger of LevelSocket. `length` is the size of `value` in bytes.
    virtual std::int32_t SetOption(SocketNumber socket, std::int32_t level, std::int32_t option,
                                   const LingerRecord& value) = 0;
    virtual std::int32_t GetOption(SocketNumber socket, std::int32_t level, std::int32_t option, LingerRecord& value,
                                   std::int32_t& length) = 0;
    // From here on the socket is non-blocking and posts `message` to `window`: first parameter the socket, second the
    // event (one of SocketEvent, of those in `mask`) in the low and its error code in the high 16 bits. 0, or Failed.
    virtual std::int32_t AsyncSelect(SocketNumber socket, WindowHandle window, std::uint32_t message,
                                     std::int32_t mask) = 0;
    // Of a socket that was selected: Failed while under way. A connection that fails at once fails by its Connect
    // event, too. Address 0 is no machine, least of all this one: AddressNotAvailable.
    virtual std::int32_t Connect(SocketNumber socket, const AddressRecord& address) = 0;
    // The number of bytes taken, which may be fewer than there are, or Failed: not connected, or the peer has gone.
    virtual std::int32_t Send(SocketNumber socket, const std::string& bytes) = 0;
    // Reads once into `buffer`, at most its size, and leaves the rest of it as it is. The number of bytes, 0 at the
    // peer's close, Failed also when nothing has come yet.
    virtual std::int32_t Receive(SocketNumber socket, std::string& buffer) = 0;
    virtual std::int32_t Close(SocketNumber socket) = 0; // 0, or Failed; harmless for any number

    virtual std::uint16_t HostToNetwork(std::uint16_t port) = 0;
    // In network order, or NoAddress. An abbreviated address counts, as with inet_addr(); what follows a blank doesn't.
    virtual std::uint32_t AddressFromText(const std::string& text) = 0;
    // nullptr when it can't be started. A name with a NUL, or one that is no host's, finds nothing.
    virtual std::shared_ptr<HostLookup> LookUp(const std::string& name) = 0;
    // The name of the host with this address (network order); empty when there is none. Blocks.
    virtual std::string NameOfHost(std::uint32_t address) = 0;
    virtual std::int32_t LocalName(std::string& name) = 0; // 0, or Failed and `name` stays
};

// A window's own message procedure: returns the message's result.
using WindowProcedure = std::int32_t (*)(WindowHandle window, std::uint32_t message, std::int32_t first,
                                         std::int32_t second);
// What a window had before a procedure was installed; only the service that returned it can read it. 0 is none.
using PreviousProcedure = std::intptr_t;

enum class MessageIcon { Critical, Question, Information };
enum class MessageButtons { Ok, YesNo }; // YesNo has No as its default button
enum class MessageAnswer { Ok, Yes, No };

// What a message box shows.
struct BoxText {
    std::string Text; // lines that end with CR LF
    int Width = 0;    // pixels at 96 DPI that its lines need; 0: the desktop breaks them as it is used to
};

struct LineSize {
    int Width = 0;
    int Height = 0;
};

class WindowService {
public:
    virtual ~WindowService() = default;

    // A window has been made (nothing shows yet). Returns its handle, which stays valid until Discard().
    virtual WindowHandle Open(Window& window) = 0;
    // The model says that the window shows, or that it no longer does. The real window follows at once or at the latest
    // with the next pass of a pump; neither waits for the screen, and no handler runs inside.
    virtual void Show(Window& window) = 0;
    virtual void Hide(Window& window) = 0;
    // Shows the window over all others of the program and returns when it has been unloaded or the program has ended.
    // Events are handled meanwhile.
    virtual void ShowModal(Window& window) = 0;
    // The window has been unloaded: its real window is destroyed. The object stays valid until its handlers have
    // returned.
    virtual void Discard(Window& window) = 0;

    // The bare box and the bare menu, which leave the other windows open to input: everyone but ShowMessage() and
    // PopUp() of window/Dialogs calls those. Both block, and events are handled meanwhile. Texts are plain: no markup,
    // no access keys. Not to be called after the program's end; at the end they return.
    virtual MessageAnswer RunMessageBox(const BoxText& text, const std::string& title, MessageIcon icon,
                                        MessageButtons buttons) = 0;
    // The room that a line takes in a message box, and the widest line that a box can show without breaking it, in
    // pixels at 96 DPI.
    virtual LineSize SizeInBox(const std::string& line) = 0;
    virtual int WidestInBox() = 0;
    // Opens the menu over `window` where the user's click (or the selected row) is. Returns the chosen entry, nullptr
    // when the menu was left.
    virtual const MenuEntry* RunMenu(const Menu& menu, Window& window) = 0;

    // Installs `procedure` on the window and returns what was there before; at once, for messages to come.
    virtual PreviousProcedure InstallProcedure(WindowHandle window, WindowProcedure procedure) = 0;
    // Puts `previous` back; harmless when it is there already.
    virtual void RestoreProcedure(WindowHandle window, PreviousProcedure previous) = 0;
    virtual std::int32_t CallProcedure(PreviousProcedure previous, WindowHandle window, std::uint32_t message,
                                       std::int32_t first, std::int32_t second) = 0;

    // Handles all events that are pending (posted messages first in first out, then input, then due timers) and
    // returns; while only painting is done, nothing is handled. False: the program has ended.
    virtual bool PumpEvents() = 0;
    // Sleeps until something is pending, handles it and returns. False: the program has ended.
    virtual bool WaitForEvents() = 0;
    // Brings the windows in line at once and keeps them painted until `isDone`, which may take as many ms as it is
    // given, says so, or until `ms` have passed. Nothing is handled meanwhile: no posted message, no timer, and no
    // input, which is kept in its order, however it comes, until the next pass.
    virtual void PaintUntil(const std::function<bool(std::int64_t ms)>& isDone, std::int64_t ms) = 0;

    // Ends the program: nothing shows any more, both pumps return at once, and the event loop of the program returns.
    virtual void End() = 0;
    virtual bool HasEnded() const = 0;
};

class ClockService {
public:
    virtual ~ClockService() = default;
    // Milliseconds of a clock that never goes back.
    virtual std::int64_t Now() = 0;
};

class ShellService {
public:
    virtual ~ShellService() = default;
    // Hands the URL to the user's program for it: as one argument, never by way of a command line, in the folder of
    // this program. One that the system's call doesn't take (on Windows, of 2,083 characters or more) is dropped rather
    // than cut. The result is ignored.
    virtual void OpenUrl(WindowHandle owner, const std::string& url) = 0;
};

class TextService {
public:
    virtual ~TextService() = default;
    // The text in upper case, letter by letter and whatever the user's language. A character without an upper case of
    // its own, and a byte that is no text, stay as they are; no other letter becomes one of ASCII.
    virtual std::string Upper(std::string_view text) = 0;
};

struct Services {
    FileService& Files;
    SettingsService& Settings;
    SocketService& Sockets;
    WindowService& Windows;
    ClockService& Clock;
    ShellService& Shell;
    TextService& Text;
};

// Hands the services over; nullptr takes them back. The caller keeps ownership.
void UseServices(Services* services);
Services& services();

} // namespace tarnwick

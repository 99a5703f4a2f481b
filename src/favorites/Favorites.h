#pragma once

// The state that the windows share: the link under check and the flags of the program's course.

#include <cstdint>
#include <string>

namespace tarnwick {

// A boolean of 16 bits: 0 is false and -1 is true.
class Flag {
public:
    constexpr Flag(bool value = false) : bits_(value ? -1 : 0) {} // NOLINT(google-explicit-constructor)
    constexpr operator bool() const { return bits_ != 0; }        // NOLINT(google-explicit-constructor)

private:
    std::int16_t bits_;
};

// The one link under check. A field keeps its text until it is written again.
struct LinkRecord {
    std::string RawUrl;        // as the shortcut holds it
    std::string File;          // the shortcut's full path
    std::string ShortcutName;  // file name, later without its extension
    std::string Host;          // where to connect, empty: nothing to probe
    std::string Port;          // as text
    std::string RequestTarget; // what the request line asks for
    std::string User;
    std::string Password;
    std::string UrlShown;    // for the report
    std::string FolderShown; // for the report
};

namespace Favorites {

extern LinkRecord CurrentLink;
extern Flag LinkFinished;   // the link under check has ended
extern Flag RunCompleted;   // the run reached its end without a stop
extern Flag EndOnMainClose; // closing the main window ends the program
extern Flag SplashDone;     // the splash has run

} // namespace Favorites

} // namespace tarnwick

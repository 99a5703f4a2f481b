#include "fuzz/Targets.h"

#include "favorites/Favorites.h"
#include "favorites/Folders.h"
#include "favorites/Shortcut.h"
#include "platform/headless/HeadlessPlatform.h"
#include "platform/posix/PosixText.h"
#include "platform/posix/SettingsText.h"
#include "platform/posix/UserFolders.h"
#include "probe/Verdict.h"
#include "text/IniFile.h"
#include "text/Number.h"

#include <algorithm>
#include <stdexcept>
#include <vector>

namespace tarnwick::fuzz {

namespace {

void Require(bool holds, const char* what) {
    if (!holds)
        throw std::logic_error(what);
}

// The reader of shortcut files: the input as a whole file, and as the value in a sound one.
void Shortcut(std::string_view input) {
    const auto read = [](std::string_view file, std::size_t size = 10000) {
        return FindIniValue(file, "InternetShortcut", "URL", size);
    };
    const std::string whole = read(input);
    Require(whole.size() < 10000, "a value is longer than its buffer");
    for (const std::size_t size : {1U, 2U, 17U}) {
        const std::string cut = read(input, size);
        Require(cut.size() < size, "a cut value is longer than its buffer");
        Require(whole.starts_with(cut), "a cut value is not the beginning of the whole one");
    }
    if (!input.starts_with("\xFF\xFE")) { // UTF-16
        Require(whole.find_first_of("\r\n") == std::string::npos, "a value runs over a line's end");
        const std::string longer = std::string(input) + "\n[InternetShortcut]\nURL=later\n";
        Require(whole.empty() || read(longer) == whole, "a later section counts");
    }
    const bool plain =
        std::ranges::all_of(input, [](char c) { return c > ' ' && c != '"' && c != '\'' && c != '\x7F'; });
    if (plain && input.size() < 9000)
        Require(read("; comment\n[internetshortcut] \r\n\turl =  " + std::string(input) + " \r\n") == input,
                "a value changes on the way");
}

void Url(std::string_view input) {
    const std::string url(input);
    const auto split = [&](const std::string& before) {
        std::vector<std::string> pieces(5, before); // host, target, user, password, port
        Favorites::SplitUrl(url, pieces[0], pieces[1], pieces[2], pieces[3], pieces[4]);
        return pieces;
    };
    const std::vector<std::string> pieces = split("kept");
    if (pieces == std::vector<std::string>{"", "kept", "kept", "kept", "kept"})
        return; // a link of another scheme
    Require(pieces == split("other"), "the split depends on an earlier link");
    Require(Favorites::CurrentLink.UrlShown == url, "the URL shown is not the URL");
    for (const auto& [piece, separators] : {std::pair{0U, "/?#:"}, {2U, ":@"}, {3U, ":@"}, {4U, "/?#"}})
        Require(pieces[piece].find_first_of(separators) == std::string::npos, "a piece holds a separator");
    Require(pieces[1].starts_with('/'), "the target doesn't begin at the slash");
    for (const std::string& piece : {pieces[0], pieces[1].substr(1), pieces[2], pieces[3]})
        Require(url.find(piece) != std::string::npos, "a piece is not of the URL");
}

// The judgement of a reply's first chunk.
void Reply(std::string_view input) {
    const std::string chunk(input);
    const auto status = ReplyStatus(input);
    const std::size_t blank = chunk.find(' ');
    Require(!status || blank != std::string::npos, "a reply of one word has a status");
    if (blank != std::string::npos) {
        Require(ReplyStatus("x" + chunk.substr(blank)) == status, "the first word changes the status");
        Require(ReplyStatus(chunk + " 404 404") == status || chunk.find(' ', blank + 1) == std::string::npos,
                "what comes after the second word changes the status");
    }
}

void Number(std::string_view input) {
    const auto number = NumberFromText(input);
    if (!number)
        return;
    const std::string text(input);
    Require(text.find_first_not_of("+-. 0123456789") == std::string::npos, "a text that is no number gives one");
    Require(NumberFromText(std::to_string(*number)) == number, "the number isn't its own text's");
    Require(NumberFromText("  " + text + " ") == number, "blanks around change the number");
    const std::size_t digits = text.find_first_of(".0123456789");
    Require(NumberFromText(text.substr(0, digits) + "00" + text.substr(digits)) == number, "zeros change the number");
    if (*number > 0 && text.find('+') == std::string::npos)
        Require(NumberFromText("-" + text.substr(digits)) == -*number, "the sign changes the size");
}

// The pattern of a listing, the rest of the input's first line, over a folder with the second line in it.
void Listing(std::string_view input) {
    const std::string pattern(input.substr(0, input.find('\n')));
    const std::string name(input.substr(std::min(pattern.size() + 1, input.size())));
    HeadlessPlatform machine;
    machine.Favorites.AddFile("other.url", "");
    machine.Favorites.AddFile(name, "");
    Favorites::ListingHandle listing = 0;
    std::string found = Favorites::FindFirst(machine.Favorites.Root + pattern, listing);
    Require(found.empty() == (listing == 0), "a listing without a name is open, or the other way round");
    for (int count = 0; !found.empty(); found = Favorites::FindNext(listing)) {
        Require(++count <= 4, "a listing doesn't end");
        Require(found.size() + pattern.rfind('\\') + 2 >= pattern.size(), "a name is shorter than its ending");
    }
    Favorites::FindEnd(listing);
    Require(listing <= 1, "a listing stays open");
    Require(FolderOrderKey(name + "\\" + pattern) == FolderOrderKey(name) + "\\" + FolderOrderKey(pattern),
            "the place of a text in the order depends on what comes after it");
}

// The settings file: the input as the file that is there already, and as what is stored in it.
void Settings(std::string_view input) {
    const std::string half(input.substr(0, input.size() / 2));
    std::string text(input);
    const auto timeout = SettingIn(input, "Preferences", "Timeout");
    for (const char* key : {"Key", "Key", "Other"}) {
        PutSetting(text, "Preferences", key, input);
        Require(SettingIn(text, "Preferences", key) == input, "a value changes on the way");
        Require(SettingIn(text, "Preferences", "Timeout") == timeout, "a save changes another value");
    }
    PutSetting(text, "section " + half, "key " + half, "value");
    Require(SettingIn(text, "section " + half, "key " + half) == "value", "a name changes on the way");
}

// The file that names the user's folders.
void Folders(std::string_view input) {
    const std::string folder = FavoritesFolderIn(input, "/home/u");
    Require(folder.starts_with('/') && folder != "/home/u", "the folder isn't absolute, or the home folder");
    Require(folder == "/" || !folder.ends_with('/'), "the folder ends with a slash");
    Require(folder.find('\0') == std::string::npos && ("/" + folder + "/").find("/../") == std::string::npos &&
                folder.find("//") == std::string::npos,
            "the folder isn't written in the shortest way");
    Require(FavoritesFolderIn(std::string(input) + "\nXDG_FAVORITES_DIR=\"/last\"\n", "/home/u") == "/last",
            "the last line doesn't count");
}

} // namespace

const std::map<std::string, void (*)(std::string_view)> Targets = {
    {"shortcut", Shortcut}, {"url", Url},           {"reply", Reply},    {"number", Number},
    {"listing", Listing},   {"settings", Settings}, {"folders", Folders}};

} // namespace tarnwick::fuzz

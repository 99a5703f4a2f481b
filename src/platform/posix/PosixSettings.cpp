#include "platform/posix/PosixSettings.h"

#include "platform/posix/RegularFile.h"
#include "platform/posix/SettingsText.h"
#include "platform/posix/UserFolders.h"
#include "text/IniFile.h"

#include <string_view>

namespace tarnwick {

namespace {

// The application's own folder; the empty text when there can be none.
std::string FolderOf(const std::string& application) {
    const bool plain = !application.empty() && application != "." && application != ".." &&
                       application.find_first_of(std::string_view("/\\\0", 3)) == std::string::npos;
    const std::string configuration = ConfigurationFolder();
    return plain && !configuration.empty() ? configuration + "/" + application : std::string();
}

std::string FileIn(const std::string& folder) { return folder + "/settings.ini"; }

} // namespace

void PosixSettings::Read(const std::string& application, const std::string& section, std::vector<Setting>& settings) {
    const std::string folder = FolderOf(application);
    std::string bytes;
    if (folder.empty() || ReadRegularFile(FileIn(folder), SizeLimit, bytes) != FileReading::Done)
        return;
    const std::string text = IniText(bytes);
    for (Setting& setting : settings)
        setting.Value = SettingIn(text, section, setting.Key).value_or(setting.Value);
}

bool PosixSettings::Write(const std::string& application, const std::string& section,
                          const std::vector<Setting>& settings) {
    const std::string folder = FolderOf(application);
    if (folder.empty() || section.empty())
        return false;
    const std::string file = FileIn(folder);
    std::string bytes;
    // What can't be read in full must not be replaced.
    if (ReadRegularFile(file, SizeLimit + 1, bytes) == FileReading::Failed || bytes.size() > SizeLimit)
        return false;
    std::string text = IniText(bytes);
    for (const Setting& setting : settings) {
        if (setting.Key.empty())
            return false;
        PutSetting(text, section, setting.Key, setting.Value);
    }
    return text.size() <= SizeLimit && MakeFolders(folder) && ReplaceRegularFile(file, text);
}

} // namespace tarnwick

#pragma once

#include <string>

namespace tarnwick {

// One finding of the availability check.
struct ReportRow {
    std::string Name;    // the favorite's name
    std::string Folder;  // as the scan shows it
    std::string Url;     // as the shortcut holds it
    std::string Problem; // what is wrong with the link
    std::string File;    // the shortcut's full path
};

// Adds it at the end of the report's grid, the only place where findings are kept.
void AddReportRow(const ReportRow& row);

} // namespace tarnwick

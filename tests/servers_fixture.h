#pragma once

#include "PosixMachine.h"
#include "favorites/Favorites.h"
#include "posix_support.h"
#include "report/Form5.h"
#include "servers_support.h"
#include "shell/Form2.h"

#include <gtest/gtest.h>

#include <map>

namespace tarnwick::test {

using Strings = std::vector<std::string>;

// The whole program on real files and real connections, with every kind of finding switched on.
class ServersTest : public ::testing::Test {
protected:
    ServersTest() {
        using namespace Favorites;
        CurrentLink = {};
        LinkFinished = RunCompleted = EndOnMainClose = false;
        for (const char* key : {"Catch401", "Catch403", "Catch404", "CatchUnabled", "CatchTimedout", "CatchConnerr"})
            machine.Settings.Values[key] = "1";
        machine.Settings.Values["Timeout"] = "20";
        std::filesystem::create_directory(home / "Favorites");
        machine.Events.EachPass = [this] { Look(); };
    }

    std::string FileOf(const std::string& name) const { return home / ("Favorites/" + name + ".url"); }
    void AddFavorite(const std::string& name, const std::string& url) {
        WriteFile(FileOf(name), "[InternetShortcut]\r\nURL=" + url + "\r\n");
    }

    // The rows of the report.
    static std::vector<Strings> Report() {
        std::vector<Strings> rows;
        for (int row = 1; row <= Form5->Grid1.RowCount(); ++row) {
            Strings& cells = rows.emplace_back();
            for (int column = 1; column <= ReportColumn::File; ++column)
                cells.push_back(Form5->Grid1.CellText(row, column));
        }
        return rows;
    }
    Strings RowOf(const std::string& name, const std::string& url, const std::string& problem) const {
        return {name, "Favorites root", url, problem, Backslashed(FileOf(name))};
    }

    // What the window showed of one link: its last status, and for how long it was under check.
    struct Shown {
        std::string Status;
        std::int64_t FirstMs = 0;
        std::int64_t LastMs = 0;
    };
    std::map<std::string, Shown> shown; // by the favorite's name

    TemporaryHome home;
    PosixMachine machine;

private:
    // Each link is followed by a pass of its own, in which the next one begins.
    void Look() {
        if (!Form4.IsLoaded() || Form4->Command1.Caption != "&Stop")
            return;
        const std::int64_t now = machine.Clock.Now();
        Shown& link = shown.try_emplace(Form4->Label6.Caption, Shown{"", lastLook_, now}).first->second;
        link.Status = Form4->Label8.Caption;
        link.LastMs = lastLook_ = now;
    }

    std::int64_t lastLook_ = machine.Clock.Now();
};

} // namespace tarnwick::test

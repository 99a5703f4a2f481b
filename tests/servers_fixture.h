#pragma once

#include "Driver.h"
#include "PosixMachine.h"
#include "posix_support.h"
#include "servers_support.h"

#include <map>

namespace tarnwick::test {

// The whole program on real files and real connections, with every kind of finding switched on.
class ServersTest : public ProgramOn<PosixMachine> {
protected:
    ServersTest() {
        CatchAll();
        machine.Settings.Values["Timeout"] = "20";
        std::filesystem::create_directory(home / "Favorites");
        machine.Events.EachPass = [this] { Look(); };
    }

    std::string FileOf(const std::string& name) const { return home / ("Favorites/" + name + ".url"); }
    void AddFavorite(const std::string& name, const std::string& url) {
        WriteFile(FileOf(name), "[InternetShortcut]\r\nURL=" + url + "\r\n");
    }

    // The whole check below a ticked root: returns when the run has ended.
    void CheckRoot() {
        Form3.Show();
        OpenTree();
        if (Form4->Tree1.NodeCheck(2) == 0)
            TickNode("- Favorites Root -");
        Click(Form4->Command1);
    }

    // The rows of the report.
    static std::vector<Strings> Report() {
        std::vector<Strings> rows;
        for (int row = 1; row <= Form5->Grid1.RowCount(); ++row)
            rows.push_back(RowCells(Form5->Grid1, row));
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

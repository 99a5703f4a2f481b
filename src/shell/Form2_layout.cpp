#include "shell/Form2.h"
#include "window/Layout.h"

namespace tarnwick {

namespace {

void FillMenu(Menu& menu, const char* name, const char* caption, std::initializer_list<MenuEntry*> entries) {
    menu.Name = name;
    menu.Caption = caption;
    menu.Entries = entries;
}

void FillEntry(MenuEntry& entry, const char* name, const char* caption, bool enabled = true) {
    entry.Name = name;
    entry.Caption = caption;
    entry.Enabled = enabled;
}

void FillSeparator(MenuEntry& entry, const char* name) {
    entry.Name = name;
    entry.Separator = true;
}

} // namespace

void Form2Window::Layout() {
    Icon = "tarnwick.png";
    ApplyLayout(*this, {.Name = "Form2", .Title = "SocketOwner", .InTaskBar = false},
                {{.Field = Picture1, .Name = "Picture1", .Container = nullptr, .Place = {0, 0, 1650, 2865}}});
    Picture1.Picture = "side.jpg";

    FillMenu(mnuBad, "mnuBad", "Bad Favorite",
             {&mnuBadName, &Sep1, &mnuBadRemove, &mnuBadHide, &mnuBadGo, &mnuBadInfo});
    FillEntry(mnuBadName, "mnuBadName", "#");
    FillSeparator(Sep1, "Sep1");
    FillEntry(mnuBadRemove, "mnuBadRemove", "Remove it");
    FillEntry(mnuBadHide, "mnuBadHide", "Hide it");
    FillEntry(mnuBadGo, "mnuBadGo", "Go this site");
    FillEntry(mnuBadInfo, "mnuBadInfo", "Get info", false);

    FillMenu(mnuDup, "mnuDup", "Dup Favorite", {&mnuDup1, &Sep2, &mnuDupK1, &mnuDupK2});
    FillEntry(mnuDup1, "mnuDup1", "Duplicated Favorites");
    FillSeparator(Sep2, "Sep2");
    FillEntry(mnuDupK1, "mnuDupK1", "Remove Link 1");
    FillEntry(mnuDupK2, "mnuDupK2", "Remove Link 2");
}

} // namespace tarnwick

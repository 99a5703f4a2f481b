// The entries of the report's pop-up menu. Each takes the selected row afresh from the grid.

#include "favorites/Opening.h"
#include "report/Form5.h"
#include "report/Removal.h"
#include "shell/Form2.h"

namespace tarnwick {

void Form2Window::mnuBadRemove_Click() {
    RemoveSelectedFavorite(Form5->Grid1,
                           {{"Name: ", ReportColumn::Name},
                            {"Folder: ", ReportColumn::Folder},
                            {"Problem: ", ReportColumn::Problem},
                            {"URL: ", ReportColumn::Url}},
                           ReportColumn::File);
}

void Form2Window::mnuBadHide_Click() { Form5->Grid1.RemoveRow(Form5->Grid1.SelectedRow); }

void Form2Window::mnuBadGo_Click() {
    Favorites::OpenSite(Handle(), Form5->Grid1.CellText(Form5->Grid1.SelectedRow, ReportColumn::Url));
}

} // namespace tarnwick

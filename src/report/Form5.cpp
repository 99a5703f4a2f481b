#include "report/Form5.h"

#include "shell/Form2.h"
#include "shell/Form3.h"
#include "shell/Form9.h"
#include "shell/Look.h"
#include "window/Dialogs.h"

namespace tarnwick {

WindowObject<Form5Window> Form5;

Form5Window::Form5Window() {
    Layout();
    Grid1.HeaderClick = [this](int column) { Grid1_HeaderClick(column); };
    Grid1.MouseButton = [this](int button, int, int, int) { Grid1_MouseButton(button); };
    Command1.Click = [this] { Command1_Click(); };
    Command2.Click = [this] { Command2_Click(); };
}

void Form5Window::OnLoad() {
    TakeSharedIcon(*this);
    TakeSharedPicture(Picture1);
    Grid1.AddColumn("Name", 110);
    Grid1.AddColumn("Folder", 104);
    Grid1.AddColumn("URL", 265);
    Grid1.AddColumn("Problem", 110);
    Grid1.AddColumn("File", 100, false);
}

void Form5Window::OnUnload() { Form3.Show(); }

void Form5Window::Grid1_HeaderClick(int column) { Grid1.Sort(column); }

// The menu concerns the selected row, wherever the mouse is; its top entry names that row.
void Form5Window::Grid1_MouseButton(int button) {
    constexpr int right = 2;
    if (button != right || Grid1.SelectedRow == 0)
        return;
    Form2->mnuBadName.Caption = Grid1.CellText(Grid1.SelectedRow, ReportColumn::Name);
    PopUp(Form2->mnuBad, *this);
}

void Form5Window::Command1_Click() { Unload(); }

void Form5Window::Command2_Click() { Form9.ShowModal(); }

void AddReportRow(const ReportRow& row) {
    GridControl& grid = Form5->Grid1;
    grid.AddRow(grid.AddRecord({row.Name, row.Folder, row.Url, row.Problem, row.File})); // in the order of ReportColumn
}

} // namespace tarnwick

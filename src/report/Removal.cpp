#include "report/Removal.h"

#include "platform/Services.h"

#include <string>

namespace tarnwick {

void RemoveSelectedFavorite(Grid& grid, std::initializer_list<Particular> particulars, int fileColumn) {
    const int row = grid.SelectedRow;
    if (row == 0)
        return;
    std::string question = "Are you sure to remove the following Favorite?\r\n";
    for (const Particular& particular : particulars)
        question += std::string("\r\n") + particular.Legend + grid.CellText(row, particular.Column);
    if (services().Windows.ShowMessage(question, "Tarnwick", MessageIcon::Question, MessageButtons::YesNo) !=
        MessageAnswer::Yes)
        return;
    services().Files.Remove(grid.CellText(row, fileColumn));
    grid.RemoveRow(row);
}

} // namespace tarnwick

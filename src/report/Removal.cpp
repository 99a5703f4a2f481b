#include "report/Removal.h"

#include "services/Services.h"
#include "text/Text.h"
#include "window/Dialogs.h"

#include <string>

namespace tarnwick {

namespace {
constexpr std::size_t LongestValue = 1000; // characters; what a screen has no room for is cut by the box
}

void RemoveSelectedFavorite(Grid& grid, std::initializer_list<Particular> particulars, int fileColumn) {
    const int row = grid.SelectedRow;
    if (row == 0)
        return;
    std::string question = "Are you sure to remove the following Favorite?\r\n";
    for (const Particular& particular : particulars)
        question +=
            // One line each: a file's name may hold line ends.
            std::string("\r\n") + particular.Legend +
            Shortened(ShownLine(grid.CellText(row, particular.Column)), LongestValue);
    if (ShowMessage(question, "Tarnwick", MessageIcon::Question, MessageButtons::YesNo) != MessageAnswer::Yes)
        return;
    services().Files.Remove(grid.CellText(row, fileColumn));
    grid.RemoveRow(row);
}

} // namespace tarnwick

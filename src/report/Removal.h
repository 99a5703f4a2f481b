#pragma once

#include "window/Grid.h"

#include <initializer_list>

namespace tarnwick {

// A line of the question: a legend and the column of the selected row that it names.
struct Particular {
    const char* Legend;
    int Column;
};

// Asks about the favorite of the grid's selected row and names its particulars. On Yes its file, named by the cell in
// `fileColumn`, is deleted for good and the row is removed, whether or not the file could be deleted. Without a
// selected row nothing happens.
void RemoveSelectedFavorite(Grid& grid, std::initializer_list<Particular> particulars, int fileColumn);

} // namespace tarnwick

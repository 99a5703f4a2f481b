#include "window/Grid.h"

#include "platform/Services.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace tarnwick {

void Grid::ClearRows() {
    cells_.clear();
    cells_.shrink_to_fit();
    numbers_.clear();
    texts_.clear();
    SelectedRow = 0;
    ++revision_;
}

void Grid::AddColumn(std::string header, int width, bool visible) {
    columns_.push_back({std::move(header), width, visible});
    ++revision_;
}

void Grid::AddRow() {
    cells_.insert(cells_.end(), columns_.size(), NumberOf({}));
    ++revision_;
}

bool Grid::HasCell(int row, int column) const {
    return row >= 1 && row <= RowCount() && column >= 1 && static_cast<std::size_t>(column) <= columns_.size();
}

std::size_t Grid::CellIndex(int row, int column) const {
    return static_cast<std::size_t>(row - 1) * columns_.size() + static_cast<std::size_t>(column - 1);
}

const std::string& Grid::CellText(int row, int column) const {
    static const std::string none;
    return HasCell(row, column) ? texts_[cells_[CellIndex(row, column)]] : none;
}

void Grid::SetCellText(int row, int column, std::string_view text) {
    if (!HasCell(row, column))
        return;
    cells_[CellIndex(row, column)] = NumberOf(text);
    ++revision_;
}

void Grid::RemoveRow(int row) {
    if (!HasCell(row, 1))
        return;
    const auto first = cells_.begin() + static_cast<std::ptrdiff_t>(CellIndex(row, 1));
    cells_.erase(first, first + static_cast<std::ptrdiff_t>(columns_.size()));
    if (SelectedRow == row)
        SelectedRow = 0;
    else if (SelectedRow > row)
        --SelectedRow;
    ++revision_;
}

void Grid::Sort(int column) {
    if (!HasCell(1, column))
        return;
    const std::vector<TextNumber> rank = RankTexts();
    const std::size_t width = columns_.size();
    std::vector<int> order(static_cast<std::size_t>(RowCount()));
    std::iota(order.begin(), order.end(), 1);
    std::ranges::stable_sort(order, {}, [&](int row) { return rank[cells_[CellIndex(row, column)]]; });

    std::vector<TextNumber> sorted;
    sorted.reserve(cells_.size());
    int selected = 0;
    for (std::size_t place = 0; place < order.size(); ++place) {
        const auto from = cells_.begin() + static_cast<std::ptrdiff_t>(CellIndex(order[place], 1));
        sorted.insert(sorted.end(), from, from + static_cast<std::ptrdiff_t>(width));
        if (order[place] == SelectedRow)
            selected = static_cast<int>(place) + 1;
    }
    cells_ = std::move(sorted);
    SelectedRow = selected;
    ++revision_;
}

int Grid::FindRow(std::string_view text) const {
    const std::string wanted = services().Text.Upper(text);
    for (int step = 1; step <= RowCount(); ++step) {
        const int row = (SelectedRow + step - 1) % RowCount() + 1;
        if (services().Text.Upper(CellText(row, 1)).starts_with(wanted))
            return row;
    }
    return 0;
}

Grid::TextNumber Grid::NumberOf(std::string_view text) {
    if (const auto found = numbers_.find(text); found != numbers_.end())
        return found->second;
    const auto number = static_cast<TextNumber>(texts_.size());
    numbers_.emplace(texts_.emplace_back(text), number);
    return number;
}

// A rank for each text: equal for texts that differ in case only. Ranking the few texts once makes the sort of many
// rows one of small numbers.
std::vector<Grid::TextNumber> Grid::RankTexts() const {
    std::vector<std::pair<std::string, TextNumber>> uppers;
    uppers.reserve(texts_.size());
    for (const std::string& text : texts_)
        uppers.emplace_back(services().Text.Upper(text), static_cast<TextNumber>(uppers.size()));
    std::ranges::sort(uppers);
    std::vector<TextNumber> rank(uppers.size());
    TextNumber next = 0;
    for (std::size_t place = 0; place < uppers.size(); ++place) {
        if (place > 0 && uppers[place].first != uppers[place - 1].first)
            ++next;
        rank[uppers[place].second] = next;
    }
    return rank;
}

} // namespace tarnwick

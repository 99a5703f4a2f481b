#include "window/Grid.h"

#include "services/Services.h"

#include <algorithm>
#include <utility>

namespace tarnwick {

void Grid::ClearRows() {
    rows_.clear();
    rows_.shrink_to_fit();
    records_.resize(1);
    SelectedRow = 0;
    ++revision_;
}

void Grid::AddColumn(std::string header, int width, bool visible) {
    AddColumn(std::move(header), width, visible, {0, columns_.size()});
}

void Grid::AddColumn(std::string header, int width, bool visible, Source source) {
    columns_.push_back({std::move(header), width, visible, source});
    ++revision_;
}

Grid::Record Grid::AddRecord(std::vector<std::string> texts) {
    records_.push_back(std::move(texts));
    return static_cast<Record>(records_.size() - 1);
}

void Grid::AddRow(Record first, Record second) {
    rows_.push_back({first, second});
    ++revision_;
}

bool Grid::HasCell(int row, int column) const {
    return row >= 1 && row <= RowCount() && column >= 1 && static_cast<std::size_t>(column) <= columns_.size();
}

const std::string& Grid::TextOf(Record record, std::size_t text) const {
    static const std::string none;
    const std::vector<std::string>& texts = records_[record];
    return text < texts.size() ? texts[text] : none;
}

const std::string& Grid::CellText(int row, int column) const {
    if (!HasCell(row, column))
        return TextOf(0, 0);
    const Source from = columns_[static_cast<std::size_t>(column - 1)].From;
    return TextOf(rows_[static_cast<std::size_t>(row - 1)][from.Record], from.Text);
}

void Grid::RemoveRow(int row) {
    if (!HasCell(row, 1))
        return;
    rows_.erase(rows_.begin() + (row - 1));
    if (SelectedRow == row)
        SelectedRow = 0;
    else if (SelectedRow > row)
        --SelectedRow;
    ++revision_;
}

// Ranking the few records once makes the sort of many rows one of counting.
void Grid::Sort(int column) {
    if (!HasCell(1, column))
        return;
    const Source from = columns_[static_cast<std::size_t>(column - 1)].From;
    const std::vector<std::uint32_t> rank = RankRecords(from.Text);
    const auto rankOf = [&](const Row& row) { return rank[row[from.Record]]; };

    std::vector<std::size_t> places(rank.size() + 1); // where the next row of a rank comes
    for (const Row& row : rows_)
        ++places[rankOf(row) + 1];
    for (std::size_t next = 1; next < places.size(); ++next)
        places[next] += places[next - 1];
    std::vector<Row> sorted(rows_.size());
    int selected = 0;
    for (std::size_t row = 0; row < rows_.size(); ++row) {
        const std::size_t place = places[rankOf(rows_[row])]++;
        sorted[place] = rows_[row];
        if (static_cast<int>(row) + 1 == SelectedRow)
            selected = static_cast<int>(place) + 1;
    }
    rows_ = std::move(sorted);
    SelectedRow = selected;
    ++revision_;
}

int Grid::FindRow(std::string_view text) const {
    const std::string wanted = services().Text.Upper(text);
    const int rows = RowCount();
    for (int step = 1; step <= rows; ++step) {
        const int row = (SelectedRow + step - 1) % rows + 1;
        if (services().Text.Upper(CellText(row, 1)).starts_with(wanted))
            return row;
    }
    return 0;
}

// The records' places in the order of one of their texts; one place for those that differ in case only.
std::vector<std::uint32_t> Grid::RankRecords(std::size_t text) const {
    std::vector<std::pair<std::string, Record>> uppers;
    uppers.reserve(records_.size());
    for (std::size_t record = 0; record < records_.size(); ++record) {
        const auto number = static_cast<Record>(record);
        uppers.emplace_back(services().Text.Upper(TextOf(number, text)), number);
    }
    std::ranges::sort(uppers);
    std::vector<std::uint32_t> rank(uppers.size());
    std::uint32_t next = 0;
    for (std::size_t place = 0; place < uppers.size(); ++place) {
        if (place > 0 && uppers[place].first != uppers[place - 1].first)
            ++next;
        rank[uppers[place].second] = next;
    }
    return rank;
}

} // namespace tarnwick

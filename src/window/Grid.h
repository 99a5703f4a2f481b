#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace tarnwick {

// A grid of text cells. Rows and columns count from 1. Equal texts are kept once, so that a million rows which repeat
// the same few names and paths stay small.
class Grid {
public:
    struct Column {
        std::string Header;
        int Width = 0; // pixels at 96 dots per inch
        bool Visible = true;
    };

    int DefaultRowHeight = 17; // pixels at 96 dots per inch
    int SelectedRow = 0;       // 0: none

    void ClearRows();
    void AddColumn(std::string header, int width, bool visible = true);
    void AddRow();
    int RowCount() const { return columns_.empty() ? 0 : static_cast<int>(cells_.size() / columns_.size()); }
    // The text of a cell; the empty text for a row or column that isn't there.
    const std::string& CellText(int row, int column) const;
    void SetCellText(int row, int column, std::string_view text);
    void RemoveRow(int row);
    // Orders the rows by one column's text, ascending and regardless of case; rows that compare equal keep their order,
    // and the selection stays with its row.
    void Sort(int column);

    // The next row after the selected one, round the end, whose first column begins with `text`, regardless of case; 0
    // when there is none.
    int FindRow(std::string_view text) const;

    const std::vector<Column>& Columns() const { return columns_; }
    // Changes with every change of rows, cells or columns.
    std::uint64_t Revision() const { return revision_; }

private:
    using TextNumber = std::uint32_t;

    bool HasCell(int row, int column) const;
    std::size_t CellIndex(int row, int column) const;
    TextNumber NumberOf(std::string_view text);
    std::vector<TextNumber> RankTexts() const;

    std::vector<Column> columns_;
    std::vector<TextNumber> cells_; // row by row
    std::deque<std::string> texts_; // a deque: the keys of numbers_ point into it
    std::unordered_map<std::string_view, TextNumber> numbers_;
    std::uint64_t revision_ = 0;
};

} // namespace tarnwick

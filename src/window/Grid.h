#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace tarnwick {

// A grid of text cells. Rows and columns count from 1. The texts are in records, and a row names the one or two that it
// shows: a million rows that set the same few favorites beside each other stay small.
class Grid {
public:
    using Record = std::uint32_t; // 0: one without texts

    // Where a column finds its text: in which of a row's two records, and as which of that record's texts.
    struct Source {
        std::size_t Record = 0;
        std::size_t Text = 0;
    };

    struct Column {
        std::string Header;
        int Width = 0; // pixels at 96 DPI
        bool Visible = true;
        Source From;
    };

    int DefaultRowHeight = 17; // pixels at 96 DPI
    int SelectedRow = 0;       // 0: none

    void ClearRows();
    // A column whose texts are the rows' own, or come from `source`.
    void AddColumn(std::string header, int width, bool visible = true);
    void AddColumn(std::string header, int width, bool visible, Source source);
    Record AddRecord(std::vector<std::string> texts);
    void AddRow(Record first = 0, Record second = 0);
    int RowCount() const { return columns_.empty() ? 0 : static_cast<int>(rows_.size()); }
    // The text of a cell; the empty text for a row or column that isn't there.
    const std::string& CellText(int row, int column) const;
    // The row's records stay: another row may show them. ClearRows() gives all of them up.
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
    using Row = std::array<Record, 2>;

    bool HasCell(int row, int column) const;
    const std::string& TextOf(Record record, std::size_t text) const;
    std::vector<std::uint32_t> RankRecords(std::size_t text) const;

    std::vector<Column> columns_;
    std::vector<Row> rows_;
    std::deque<std::vector<std::string>> records_{1};
    std::uint64_t revision_ = 0;
};

} // namespace tarnwick

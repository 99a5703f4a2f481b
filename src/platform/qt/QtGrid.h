#pragma once

#include "platform/qt/QtControl.h"

#include <QAbstractTableModel>
#include <QTableView>

#include <cstdint>
#include <vector>

namespace tarnwick {

// The model's grid as Qt's views read it: a cell is fetched when it is drawn, so that rows cost nothing.
class QtGridRows : public QAbstractTableModel {
public:
    explicit QtGridRows(const Grid& grid, QObject* parent) : QAbstractTableModel(parent), grid_(&grid) {}

    int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : rows_; }
    int columnCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(numbers_.size());
    }
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    // Takes over the grid's present rows and columns; true when the columns are other ones than before.
    bool Follow();
    void Detach() { grid_ = nullptr; }

    // The number in the grid of a column of the views, which have the visible ones alone.
    int NumberOf(int section) const { return numbers_[static_cast<std::size_t>(section)]; }

private:
    const Grid* grid_;
    int rows_ = 0; // as the views know them
    int allColumns_ = 0;
    std::vector<int> numbers_;
};

class QtGridView;

class QtGrid : public QtControl {
public:
    QtGrid(GridControl& grid, QWidget& parent, QtWindow& window);
    void OpenMenu() override;
    void Detach() override { rows_.Detach(); }

protected:
    void SyncKind() override;
    void ShowColors() const override;
    ColorRole DefaultBackColor() const override { return ColorRole::WindowBackground; }

private:
    void ShowColumns();
    void ShowSelection();
    void TakeSelection();

    GridControl& grid_;
    QtWindow& window_;
    QtGridView& view_;
    QtGridRows& rows_;
    Shown<std::uint64_t> content_;
    bool writing_ = false; // a change of the selection is our own
};

} // namespace tarnwick

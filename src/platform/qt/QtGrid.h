#pragma once

#include "platform/qt/QtControl.h"

#include <QAbstractTableModel>
#include <QTableView>

#include <cstdint>

namespace tarnwick {

// The model's grid as Qt's views read it: a cell is fetched when it is drawn, so that rows cost nothing.
class QtGridRows : public QAbstractTableModel {
public:
    explicit QtGridRows(const Grid& grid, QObject* parent) : QAbstractTableModel(parent), grid_(&grid) {}

    int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : rows_; }
    int columnCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : columns_; }
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    // Takes over the grid's present rows and columns; true when the columns are other ones than before.
    bool Follow();
    void Detach() { grid_ = nullptr; }

private:
    const Grid* grid_;
    int rows_ = 0; // as told to the views
    int columns_ = 0;
};

class QtGridView;

class QtGrid : public QtControl {
public:
    QtGrid(GridControl& grid, QWidget& parent, QtWindow& window);
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
    std::uint64_t shown_ = 0;
    bool anythingShown_ = false;
    bool writing_ = false; // what the view tells now is the echo of our own writing
};

} // namespace tarnwick

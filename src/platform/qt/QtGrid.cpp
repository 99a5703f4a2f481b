#include "platform/qt/QtGrid.h"

#include "platform/qt/QtText.h"
#include "platform/qt/QtWindow.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>

#include <algorithm>

namespace tarnwick {

namespace {

constexpr int LeftButton = 1; // as the grid's mouse event numbers them
constexpr int RightButton = 2;

int ButtonNumber(Qt::MouseButton button) {
    constexpr int MiddleButton = 4;
    return button == Qt::LeftButton ? LeftButton : button == Qt::RightButton ? RightButton : MiddleButton;
}

// Shift 1, Ctrl 2, Alt 4.
int ShiftState(Qt::KeyboardModifiers keys) {
    return (keys.testFlag(Qt::ShiftModifier) ? 1 : 0) + (keys.testFlag(Qt::ControlModifier) ? 2 : 0) +
           (keys.testFlag(Qt::AltModifier) ? 4 : 0);
}

} // namespace

QVariant QtGridRows::data(const QModelIndex& index, int role) const {
    if (role == Qt::DisplayRole && grid_ != nullptr)
        return SingleLineOf(grid_->CellText(index.row() + 1, index.column() + 1));
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue<Qt::Alignment>(Qt::AlignLeft | Qt::AlignVCenter);
    return {};
}

QVariant QtGridRows::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || grid_ == nullptr || section >= columns_)
        return {};
    if (role == Qt::DisplayRole)
        return SingleLineOf(grid_->Columns()[static_cast<std::size_t>(section)].Header);
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue<Qt::Alignment>(Qt::AlignLeft | Qt::AlignVCenter);
    return {};
}

// Which rows have come, gone or moved is not known and does not matter: the views hold no texts. They are told of the
// rows that there are more or fewer, at the end, and to draw all anew.
bool QtGridRows::Follow() {
    const int rows = grid_->RowCount();
    const int columns = static_cast<int>(grid_->Columns().size());
    if (columns != columns_) {
        beginResetModel();
        rows_ = rows;
        columns_ = columns;
        endResetModel();
        return true;
    }
    if (rows > rows_) {
        beginInsertRows({}, rows_, rows - 1);
        rows_ = rows;
        endInsertRows();
    } else if (rows < rows_) {
        beginRemoveRows({}, rows, rows_ - 1);
        rows_ = rows;
        endRemoveRows();
    }
    if (rows_ > 0 && columns_ > 0)
        emit dataChanged(index(0, 0), index(rows_ - 1, columns_ - 1));
    return false;
}

class QtGridView : public QTableView {
public:
    QtGridView(GridControl& grid, QWidget& parent, QtWindow& window)
        : QTableView(&parent), grid_(grid), window_(window) {
        setSelectionBehavior(SelectRows);
        setSelectionMode(SingleSelection);
        setEditTriggers(NoEditTriggers);
        setTabKeyNavigation(false);
        setWordWrap(false);
        setCornerButtonEnabled(false);
        setContextMenuPolicy(Qt::PreventContextMenu);
        verticalHeader()->hide();
        verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
        verticalHeader()->setMinimumSectionSize(1);
        horizontalHeader()->setMinimumSectionSize(1);
        horizontalHeader()->setHighlightSections(false);
        horizontalHeader()->setSectionsClickable(true);
    }

protected:
    // The right button leaves the selection alone.
    void mousePressEvent(QMouseEvent* event) override {
        if (event->button() == Qt::LeftButton)
            QTableView::mousePressEvent(event);
        const QPoint place = viewport()->mapToParent(event->position().toPoint());
        RaiseButton(event->globalPosition().toPoint(), ButtonNumber(event->button()), event->modifiers(), place);
    }
    void mouseDoubleClickEvent(QMouseEvent* event) override { mousePressEvent(event); }
    void mouseMoveEvent(QMouseEvent* event) override {
        if (event->buttons() == Qt::LeftButton)
            QTableView::mouseMoveEvent(event);
    }

    void keyPressEvent(QKeyEvent* event) override {
        const bool menuKey = event->key() == Qt::Key_Menu ||
                             (event->key() == Qt::Key_F10 && event->modifiers().testFlag(Qt::ShiftModifier));
        if (menuKey)
            RaiseMenuKey();
        else if (!SelectFirst(*event))
            QTableView::keyPressEvent(event);
    }

private:
    void RaiseButton(QPoint onScreen, int button, Qt::KeyboardModifiers keys, QPoint place) {
        if (window_.Takes(grid_))
            window_.RaiseAt(onScreen, grid_.MouseButton, button, ShiftState(keys), place.x(), place.y());
    }

    // Opens the menu where its row is, for the mouse may be anywhere.
    void RaiseMenuKey() {
        QPoint place = viewport()->rect().topLeft();
        if (const QModelIndexList rows = selectionModel()->selectedRows(); !rows.isEmpty()) {
            scrollTo(rows.first());
            place = visualRect(rows.first()).bottomLeft();
        }
        RaiseButton(viewport()->mapToGlobal(place), RightButton, Qt::NoModifier, viewport()->mapToParent(place));
    }

    // With no row selected an arrow key selects the row that the keyboard is at, not the one beside it.
    bool SelectFirst(const QKeyEvent& event) {
        const bool arrow = event.key() == Qt::Key_Down || event.key() == Qt::Key_Up;
        if (!arrow || selectionModel()->hasSelection() || model()->rowCount() == 0)
            return false;
        setCurrentIndex(currentIndex().isValid() ? currentIndex() : model()->index(0, 0));
        return true;
    }

    GridControl& grid_;
    QtWindow& window_;
};

QtGrid::QtGrid(GridControl& grid, QWidget& parent, QtWindow& window)
    : QtControl(grid, *new QtGridView(grid, parent, window)), grid_(grid), window_(window),
      view_(static_cast<QtGridView&>(Widget())), rows_(*new QtGridRows(grid, &view_)) {
    AddPart(*view_.viewport());
    view_.setModel(&rows_);
    QObject::connect(view_.selectionModel(), &QItemSelectionModel::selectionChanged, &window,
                     [this] { TakeSelection(); });
    QObject::connect(view_.horizontalHeader(), &QHeaderView::sectionClicked, &window, [this](int column) {
        if (window_.Takes(grid_))
            window_.Raise(grid_.HeaderClick, column + 1);
    });
}

void QtGrid::SyncKind() {
    writing_ = true;
    if (!anythingShown_ || shown_ != grid_.Revision()) {
        anythingShown_ = true;
        shown_ = grid_.Revision();
        if (rows_.Follow())
            ShowColumns();
    }
    if (view_.verticalHeader()->defaultSectionSize() != grid_.DefaultRowHeight)
        view_.verticalHeader()->setDefaultSectionSize(grid_.DefaultRowHeight);
    ShowSelection();
    writing_ = false;
}

void QtGrid::ShowColumns() {
    int number = 0;
    for (const Grid::Column& column : grid_.Columns()) {
        view_.setColumnHidden(number, !column.Visible);
        if (column.Visible)
            view_.setColumnWidth(number, column.Width);
        ++number;
    }
}

void QtGrid::ShowColors() const {
    QtControl::ShowColors();
    view_.setAutoFillBackground(false);
}

void QtGrid::ShowSelection() {
    QItemSelectionModel& selection = *view_.selectionModel();
    const int row = grid_.SelectedRow - 1;
    if (row < 0 || row >= rows_.rowCount())
        selection.clearSelection();
    else if (!selection.isRowSelected(row))
        selection.setCurrentIndex(rows_.index(row, std::max(0, view_.currentIndex().column())),
                                  QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

void QtGrid::TakeSelection() {
    if (writing_ || !window_.Takes(grid_))
        return;
    const QModelIndexList rows = view_.selectionModel()->selectedRows();
    grid_.SelectedRow = rows.isEmpty() ? 0 : rows.first().row() + 1;
}

} // namespace tarnwick

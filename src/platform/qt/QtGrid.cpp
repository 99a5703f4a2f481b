#include "platform/qt/QtGrid.h"

#include "platform/qt/QtText.h"
#include "platform/qt/QtWindow.h"

#include <QHeaderView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QStyle>
#include <QToolTip>

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
        return SingleLineOf(grid_->CellText(index.row() + 1, NumberOf(index.column())));
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue<Qt::Alignment>(Qt::AlignLeft | Qt::AlignVCenter);
    return {};
}

QVariant QtGridRows::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || grid_ == nullptr || section >= columnCount())
        return {};
    if (role == Qt::DisplayRole)
        return SingleLineOf(grid_->Columns()[static_cast<std::size_t>(NumberOf(section) - 1)].Header);
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue<Qt::Alignment>(Qt::AlignLeft | Qt::AlignVCenter);
    return {};
}

// Which rows have come, gone or moved is not known and does not matter: the views hold no texts. They hear of the rows
// that there are more or fewer, at the end, and draw all anew.
bool QtGridRows::Follow() {
    const int rows = grid_->RowCount();
    const int columns = static_cast<int>(grid_->Columns().size());
    if (columns != allColumns_) {
        beginResetModel();
        rows_ = rows;
        allColumns_ = columns;
        numbers_.clear();
        for (int number = 1; number <= columns; ++number)
            if (grid_->Columns()[static_cast<std::size_t>(number - 1)].Visible)
                numbers_.push_back(number);
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
    if (rows_ > 0 && columnCount() > 0)
        emit dataChanged(index(0, 0), index(rows_ - 1, columnCount() - 1));
    return false;
}

class QtGridView : public QTableView {
public:
    QtGridView(GridControl& grid, QWidget& parent, QtWindow& window)
        : QTableView(&parent), grid_(grid), window_(window) {
        setSelectionBehavior(SelectRows);
        setSelectionMode(SingleSelection);
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

    // Opens the menu where its row is, for the mouse may be anywhere.
    void OpenMenu() {
        QPoint place = viewport()->rect().topLeft();
        if (const QModelIndexList rows = selectionModel()->selectedRows(); !rows.isEmpty()) {
            scrollTo(rows.first());
            place = visualRect(rows.first()).bottomLeft();
        }
        PassButton(viewport()->mapToGlobal(place), RightButton, Qt::NoModifier, viewport()->mapToParent(place));
    }

    void keyboardSearch(const QString& text) override {
        window_.Pass([&grid = grid_, text = FromQt(text)](Input& input) { input.SelectByText(grid, text); });
    }

protected:
    // Only the left button changes the selection, and only on a row.
    void mousePressEvent(QMouseEvent* event) override {
        const QPoint place = event->position().toPoint();
        if (event->button() == Qt::LeftButton && indexAt(place).isValid())
            QTableView::mousePressEvent(event);
        PassButton(event->globalPosition().toPoint(), ButtonNumber(event->button()), event->modifiers(),
                   viewport()->mapToParent(place));
    }
    void mouseDoubleClickEvent(QMouseEvent* event) override { mousePressEvent(event); }
    void mouseMoveEvent(QMouseEvent*) override {} // dragging selects nothing

    // A row is selected whole: Home and End go by rows.
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers keys) override {
        const bool byRow = action == MoveHome || action == MoveEnd;
        return QTableView::moveCursor(action, byRow ? keys | Qt::ControlModifier : keys);
    }

    // With no row selected an arrow key selects the row that the keyboard is at, not the one beside it.
    void keyPressEvent(QKeyEvent* event) override {
        const bool arrow = event->key() == Qt::Key_Down || event->key() == Qt::Key_Up;
        if (arrow && !selectionModel()->hasSelection() && model()->rowCount() > 0)
            setCurrentIndex(currentIndex().isValid() ? currentIndex() : model()->index(0, 0));
        else
            QTableView::keyPressEvent(event);
    }

    bool viewportEvent(QEvent* event) override {
        if (event->type() != QEvent::ToolTip)
            return QTableView::viewportEvent(event);
        const auto& help = static_cast<const QHelpEvent&>(*event);
        QToolTip::showText(help.globalPos(), TipFor(indexAt(help.pos())), viewport());
        return true;
    }

private:
    void PassButton(QPoint onScreen, int button, Qt::KeyboardModifiers keys, QPoint place) {
        window_.PassAt(onScreen, [&grid = grid_, button, shift = ShiftState(keys), place](Input& input) {
            input.PressGrid(grid, button, shift, place.x(), place.y());
        });
    }

    // A text that its cell cuts off.
    QString TipFor(const QModelIndex& cell) const {
        const QString text = cell.data().toString();
        const int margins = 2 * (style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, this) + 1);
        if (!cell.isValid() || fontMetrics().horizontalAdvance(text) + margins < columnWidth(cell.column()))
            return {};
        return LiteralToolTip(FromQt(text));
    }

    GridControl& grid_;
    QtWindow& window_;
};

QtGrid::QtGrid(GridControl& grid, QWidget& parent, QtWindow& window)
    : QtControl(grid, *new QtGridView(grid, parent, window)), grid_(grid), window_(window),
      view_(static_cast<QtGridView&>(Real())), rows_(*new QtGridRows(grid, &view_)) {
    AddPart(*view_.viewport());
    AddPart(*view_.horizontalHeader()->viewport());
    view_.setModel(&rows_);
    QObject::connect(view_.selectionModel(), &QItemSelectionModel::selectionChanged, &window,
                     [this] { TakeSelection(); });
    QObject::connect(view_.horizontalHeader(), &QHeaderView::sectionClicked, &window, [this](int section) {
        window_.Pass(
            [&grid = grid_, column = rows_.NumberOf(section)](Input& input) { input.ClickHeader(grid, column); });
    });
}

void QtGrid::SyncKind() {
    writing_ = true;
    if (content_.Differs(grid_.Revision()) && rows_.Follow())
        ShowColumns();
    if (view_.verticalHeader()->defaultSectionSize() != grid_.DefaultRowHeight)
        view_.verticalHeader()->setDefaultSectionSize(grid_.DefaultRowHeight);
    ShowSelection();
    writing_ = false;
}

void QtGrid::OpenMenu() { view_.OpenMenu(); }

void QtGrid::ShowColumns() {
    for (int section = 0; section < rows_.columnCount(); ++section)
        view_.setColumnWidth(section, grid_.Columns()[static_cast<std::size_t>(rows_.NumberOf(section) - 1)].Width);
}

void QtGrid::ShowColors() const {
    QtControl::ShowColors();
    view_.setAutoFillBackground(false);
}

void QtGrid::ShowSelection() {
    QItemSelectionModel& selection = *view_.selectionModel();
    const QModelIndex row = rows_.index(grid_.SelectedRow - 1, std::max(0, view_.currentIndex().column()));
    if (!row.isValid())
        selection.clearSelection();
    else if (!selection.isRowSelected(row.row()))
        selection.setCurrentIndex(row, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

void QtGrid::TakeSelection() {
    if (writing_)
        return;
    const QModelIndexList rows = view_.selectionModel()->selectedRows();
    const int row = rows.isEmpty() ? 0 : rows.first().row() + 1;
    window_.Pass([&grid = grid_, row](Input& input) { input.Select(grid, row); });
}

} // namespace tarnwick

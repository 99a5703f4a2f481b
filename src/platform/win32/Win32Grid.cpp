#include "platform/win32/Win32Grid.h"

#include "platform/win32/Win32Look.h"
#include "platform/win32/Win32Text.h"
#include "platform/win32/Win32Window.h"

#include <windows.h>

#include <commctrl.h>
#include <windowsx.h>

#include <algorithm>

namespace tarnwick {

namespace {

constexpr int RightButton = 2;

// The right button opens the menu of the selected row, and selects nothing itself.
LRESULT CALLBACK GridProcedure(HWND window, UINT message, WPARAM first, LPARAM second, UINT_PTR /*number*/,
                               DWORD_PTR grid) {
    switch (message) {
    case WM_RBUTTONDOWN:
        SetFocus(window);
        return 0;
    case WM_RBUTTONUP:
        reinterpret_cast<Win32Grid*>(grid)->OpenMenuAt(GET_X_LPARAM(second), GET_Y_LPARAM(second));
        return 0;
    case WM_CONTEXTMENU:
        return 0;
    default:
        return DefSubclassProc(window, message, first, second);
    }
}

} // namespace

Win32Grid::Win32Grid(Win32Window& owner, GridControl& model, HWND__* parent, int number)
    : Win32Control(owner, model, parent, number,
                   {WC_LISTVIEWW, LVS_REPORT | LVS_OWNERDATA | LVS_SINGLESEL | LVS_SHOWSELALWAYS, WS_EX_CLIENTEDGE}),
      grid_(model) {
    constexpr DWORD styles = LVS_EX_FULLROWSELECT | LVS_EX_GRIDLINES;
    Send(LVM_SETEXTENDEDLISTVIEWSTYLE, styles, styles);
    SetWindowSubclass(Real(), GridProcedure, 0, reinterpret_cast<DWORD_PTR>(this));
}

Win32Grid::~Win32Grid() {
    if (rowSpacer_ != nullptr)
        ImageList_Destroy(rowSpacer_);
}

void Win32Grid::OnNotify(tagNMHDR& notice) {
    if (notice.code == LVN_GETDISPINFOW) {
        LVITEMW& item = reinterpret_cast<NMLVDISPINFOW&>(notice).item;
        const auto column = static_cast<std::size_t>(item.iSubItem);
        if ((item.mask & LVIF_TEXT) == 0 || item.cchTextMax <= 0 || column >= columns_.size())
            return;
        const std::wstring text = SingleLineOf(grid_.CellText(item.iItem + 1, columns_[column]));
        lstrcpynW(item.pszText, text.c_str(), item.cchTextMax);
    } else if (Owner().IsEcho()) {
        return;
    } else if (notice.code == LVN_COLUMNCLICK) {
        const auto column = static_cast<std::size_t>(reinterpret_cast<NMLISTVIEW&>(notice).iSubItem);
        if (column < columns_.size())
            Owner().Raise(grid_.HeaderClick, columns_[column]);
    } else if (notice.code == LVN_ITEMCHANGED) {
        grid_.SelectedRow = selectedRow_ =
            static_cast<int>(Send(LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED)) + 1;
    }
}

void Win32Grid::OpenMenuAt(int x, int y) {
    POINT place = {x, y};
    ClientToScreen(Real(), &place);
    Owner().SetMenuPlace(place.x, place.y);
    Owner().Raise(grid_.MouseButton, RightButton, 0, x, y);
}

void Win32Grid::OpenMenuByKey() {
    RECT row = {};
    if (grid_.SelectedRow > 0)
        ListView_GetItemRect(Real(), grid_.SelectedRow - 1, &row, LVIR_LABEL);
    RECT area;
    GetClientRect(Real(), &area);
    OpenMenuAt(row.left, std::clamp(row.bottom, 0L, area.bottom));
}

void Win32Grid::SyncContent() {
    if (columnCount_ != grid_.Columns().size())
        ShowColumns();
    const bool changed = revision_ != grid_.Revision();
    if (changed) {
        revision_ = grid_.Revision();
        Send(LVM_SETITEMCOUNT, static_cast<WPARAM>(grid_.RowCount()), LVSICF_NOSCROLL);
        InvalidateRect(Real(), nullptr, FALSE);
    }
    if (changed || selectedRow_ != grid_.SelectedRow)
        ShowSelection();
}

void Win32Grid::ShowColumns() {
    columnCount_ = grid_.Columns().size();
    while (Send(LVM_DELETECOLUMN, 0) != FALSE) {
    }
    columns_.clear();
    for (std::size_t i = 0; i < columnCount_; ++i) {
        const Grid::Column& column = grid_.Columns()[i];
        if (!column.Visible)
            continue;
        std::wstring header = SingleLineOf(column.Header);
        LVCOLUMNW row = {};
        row.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_SUBITEM;
        row.pszText = header.data();
        row.cx = ScaledPixels(column.Width, dots_);
        row.iSubItem = static_cast<int>(columns_.size());
        Send(LVM_INSERTCOLUMNW, columns_.size(), reinterpret_cast<LPARAM>(&row));
        columns_.push_back(static_cast<int>(i) + 1);
    }
}

void Win32Grid::ShowSelection() {
    selectedRow_ = grid_.SelectedRow;
    LVITEMW state = {};
    state.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    Send(LVM_SETITEMSTATE, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&state));
    if (selectedRow_ == 0)
        return;
    state.state = LVIS_SELECTED | LVIS_FOCUSED;
    Send(LVM_SETITEMSTATE, static_cast<WPARAM>(selectedRow_ - 1), reinterpret_cast<LPARAM>(&state));
}

// A list view's rows are as high as its images need; one that shows nothing sets the height.
void Win32Grid::Scale(int dots) {
    dots_ = dots;
    const HIMAGELIST spacer = ImageList_Create(1, ScaledPixels(grid_.DefaultRowHeight, dots) - 1, ILC_COLOR, 1, 1);
    Send(LVM_SETIMAGELIST, LVSIL_SMALL, reinterpret_cast<LPARAM>(spacer));
    if (rowSpacer_ != nullptr)
        ImageList_Destroy(rowSpacer_);
    rowSpacer_ = spacer;
    ShowColumns();
}

} // namespace tarnwick

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

// As the grid's mouse event numbers them.
constexpr int LeftButton = 1;
constexpr int RightButton = 2;

// The right button opens the menu of the selected row, and selects nothing itself. A click below the last row leaves
// the selection alone.
LRESULT CALLBACK GridProcedure(HWND window, UINT message, WPARAM first, LPARAM second, UINT_PTR /*number*/,
                               DWORD_PTR control) {
    auto& grid = *reinterpret_cast<Win32Grid*>(control);
    const int x = GET_X_LPARAM(second);
    const int y = GET_Y_LPARAM(second);
    switch (message) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
        if (grid.IsOnRow(x, y))
            DefSubclassProc(window, message, first, second);
        else
            SetFocus(window);
        grid.PressAt(LeftButton, x, y);
        return 0;
    case WM_RBUTTONDOWN:
        SetFocus(window);
        return 0;
    case WM_RBUTTONUP:
        grid.PressAt(RightButton, x, y);
        return 0;
    case WM_CONTEXTMENU:
        return 0;
    case WM_MOUSEMOVE:
        grid.FollowMouse(x, y);
        break;
    case WM_CHAR: // the system would collect letters that follow each other
        if (first <= L' ')
            break;
        grid.Type(static_cast<wchar_t>(first));
        return 0;
    default:
        break;
    }
    return DefSubclassProc(window, message, first, second);
}

// What every header of the class answers with by itself.
WNDPROC headerProcedure = nullptr;

// A header looks the same under the mouse as elsewhere; only with the button down do the moves widen a column. A grid
// asks its header about every row, and a subclass would be looked up each time: a million rows took minutes.
LRESULT CALLBACK HeaderProcedure(HWND window, UINT message, WPARAM first, LPARAM second) {
    return message == WM_MOUSEMOVE && (first & MK_LBUTTON) == 0
               ? 0
               : CallWindowProcW(headerProcedure, window, message, first, second);
}

// Shift 1, Ctrl 2, Alt 4.
int ShiftState() {
    return (GetKeyState(VK_SHIFT) < 0 ? 1 : 0) + (GetKeyState(VK_CONTROL) < 0 ? 2 : 0) +
           (GetKeyState(VK_MENU) < 0 ? 4 : 0);
}

} // namespace

Win32Grid::Win32Grid(Win32Window& owner, GridControl& model, HWND__* parent, int number)
    : Win32Control(owner, model, parent, number,
                   {WC_LISTVIEWW, LVS_REPORT | LVS_OWNERDATA | LVS_SINGLESEL | LVS_SHOWSELALWAYS | LVS_SHAREIMAGELISTS,
                    WS_EX_CLIENTEDGE}),
      grid_(model) {
    constexpr DWORD styles = LVS_EX_FULLROWSELECT | LVS_EX_GRIDLINES;
    Send(LVM_SETEXTENDEDLISTVIEWSTYLE, styles, styles);
    SetWindowSubclass(Real(), GridProcedure, 0, reinterpret_cast<DWORD_PTR>(this));
    headerProcedure = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrW(ListView_GetHeader(Real()), GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(HeaderProcedure)));
}

Win32Grid::~Win32Grid() { ImageList_Destroy(rowSpacer_); }

std::string Win32Grid::CellText(int row, int column) const {
    const auto shown = static_cast<std::size_t>(column);
    return column >= 0 && shown < columns_.size() ? grid_.CellText(row + 1, columns_[shown]) : std::string();
}

std::intptr_t Win32Grid::OnNotify(tagNMHDR& notice) {
    switch (notice.code) {
    case LVN_GETDISPINFOW: {
        LVITEMW& item = reinterpret_cast<NMLVDISPINFOW&>(notice).item;
        if ((item.mask & LVIF_TEXT) != 0 && item.cchTextMax > 0)
            lstrcpynW(item.pszText, SingleLineOf(CellText(item.iItem, item.iSubItem)).c_str(), item.cchTextMax);
        return 0;
    }
    case LVN_COLUMNCLICK: {
        const auto column = static_cast<std::size_t>(reinterpret_cast<NMLISTVIEW&>(notice).iSubItem);
        if (column < columns_.size())
            Owner().Pass([&grid = grid_, number = columns_[column]](Input& input) { input.ClickHeader(grid, number); });
        return 0;
    }
    case LVN_ITEMCHANGED:
        if (!Owner().IsEcho()) {
            const auto row = static_cast<int>(Send(LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
            Owner().Pass([&grid = grid_, row](Input& input) { input.Select(grid, row + 1); });
            selectedRow_.Differs(row + 1);
        }
        return 0;
    default:
        return 0;
    }
}

void Win32Grid::Type(wchar_t letter) {
    Owner().Pass(
        [&grid = grid_, text = Utf8Of(std::wstring(1, letter))](Input& input) { input.SelectByText(grid, text); });
}

bool Win32Grid::IsOnRow(int x, int y) const {
    LVHITTESTINFO hit = {};
    hit.pt = {x, y};
    return Send(LVM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit)) >= 0;
}

void Win32Grid::PressAt(int button, int x, int y) {
    POINT place = {x, y};
    ClientToScreen(Real(), &place);
    Owner().SetMenuPlace(place.x, place.y);
    Owner().Pass([&grid = grid_, button, shift = ShiftState(), x, y](Input& input) {
        input.PressGrid(grid, button, shift, x, y);
    });
}

// A cell that is cut off shows its whole text as a tool tip.
void Win32Grid::FollowMouse(int x, int y) {
    LVHITTESTINFO hit = {};
    hit.pt = {x, y};
    Send(LVM_SUBITEMHITTEST, 0, reinterpret_cast<LPARAM>(&hit));
    if (std::pair(hit.iItem, hit.iSubItem) == tipCell_)
        return;
    tipCell_ = {hit.iItem, hit.iSubItem};
    std::string text = hit.iItem < 0 ? std::string() : CellText(hit.iItem, hit.iSubItem);
    RECT cell = {};
    if (!text.empty()) {
        ListView_GetSubItemRect(Real(), hit.iItem, hit.iSubItem, LVIR_BOUNDS, &cell);
        cell.right = cell.left + ListView_GetColumnWidth(Real(), hit.iSubItem);
        const int margins = ScaledPixels(12, dpi_);
        const std::wstring shown = SingleLineOf(text);
        if (Send(LVM_GETSTRINGWIDTHW, 0, reinterpret_cast<LPARAM>(shown.c_str())) + margins <= cell.right - cell.left)
            text.clear();
    }
    Owner().ToolTips().ShowPart(Real(), cell, text);
}

void Win32Grid::OpenMenu() {
    RECT row = {};
    if (grid_.SelectedRow > 0)
        ListView_GetItemRect(Real(), grid_.SelectedRow - 1, &row, LVIR_LABEL);
    RECT area;
    GetClientRect(Real(), &area);
    PressAt(RightButton, row.left, std::clamp(row.bottom, 0L, area.bottom));
}

void Win32Grid::SyncContent() {
    if (columnCount_.Differs(grid_.Columns().size()))
        ShowColumns();
    const bool changed = content_.Differs(grid_.Revision());
    if (changed) {
        tipCell_ = {-1, -1};
        Send(LVM_SETITEMCOUNT, static_cast<WPARAM>(grid_.RowCount()), LVSICF_NOSCROLL);
        InvalidateRect(Real(), nullptr, FALSE);
    }
    if (selectedRow_.Differs(grid_.SelectedRow) || changed)
        ShowSelection();
}

void Win32Grid::ShowColumns() {
    while (Send(LVM_DELETECOLUMN, 0) != FALSE) {
    }
    columns_.clear();
    for (std::size_t i = 0; i < grid_.Columns().size(); ++i) {
        const Grid::Column& column = grid_.Columns()[i];
        if (!column.Visible)
            continue;
        std::wstring header = SingleLineOf(column.Header);
        LVCOLUMNW row = {};
        row.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_SUBITEM;
        row.pszText = header.data();
        row.cx = ScaledPixels(column.Width, dpi_);
        row.iSubItem = static_cast<int>(columns_.size());
        Send(LVM_INSERTCOLUMNW, columns_.size(), reinterpret_cast<LPARAM>(&row));
        columns_.push_back(static_cast<int>(i) + 1);
    }
}

void Win32Grid::ShowSelection() {
    LVITEMW state = {};
    state.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    Send(LVM_SETITEMSTATE, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&state));
    if (grid_.SelectedRow == 0)
        return;
    state.state = LVIS_SELECTED | LVIS_FOCUSED;
    Send(LVM_SETITEMSTATE, static_cast<WPARAM>(grid_.SelectedRow - 1), reinterpret_cast<LPARAM>(&state));
}

// A list view's rows are as high as its images need; one that shows nothing sets the height.
void Win32Grid::Scale(int dpi) {
    dpi_ = dpi;
    const HIMAGELIST spacer = ImageList_Create(1, ScaledPixels(grid_.DefaultRowHeight, dpi) - 1, ILC_COLOR, 1, 1);
    Send(LVM_SETIMAGELIST, LVSIL_SMALL, reinterpret_cast<LPARAM>(spacer));
    ImageList_Destroy(rowSpacer_);
    rowSpacer_ = spacer;
    ShowColumns();
}

} // namespace tarnwick

#include "platform/win32/Win32Tree.h"

#include "platform/win32/Win32CheckImages.h"
#include "platform/win32/Win32Look.h"
#include "platform/win32/Win32Text.h"
#include "platform/win32/Win32Window.h"

#include <windows.h>

#include <commctrl.h>

namespace tarnwick {

namespace {

// The state images of nodes.
constexpr UINT NoBox = 0;
constexpr UINT EmptyBox = 1;
constexpr UINT TickedBox = 2;

UINT StateOf(const Tree::Node& node) { return !node.HasCheck ? NoBox : node.Check == 0 ? EmptyBox : TickedBox; }

} // namespace

Win32Tree::Win32Tree(Win32Window& owner, TreeControl& model, HWND__* parent, int number)
    : Win32Control(owner, model, parent, number,
                   {WC_TREEVIEWW,
                    TVS_HASLINES | TVS_LINESATROOT | TVS_HASBUTTONS | TVS_DISABLEDRAGDROP | TVS_SHOWSELALWAYS,
                    WS_EX_CLIENTEDGE}),
      tree_(model) {
    // The system takes this style only after the window has been made.
    SetWindowLongPtrW(Real(), GWL_STYLE, GetWindowLongPtrW(Real(), GWL_STYLE) | TVS_CHECKBOXES);
    ImageList_Destroy(TreeView_SetImageList(Real(), nullptr, TVSIL_STATE));
}

Win32Tree::~Win32Tree() { ImageList_Destroy(boxes_); }

// A screen reader changes a check as well as mouse and key do. It has changed only after these notices, so it is looked
// at a moment later; not every system sends the one that all changes have in common.
std::intptr_t Win32Tree::OnNotify(tagNMHDR& notice) {
    if (Owner().IsEcho())
        return 0;
    if (notice.code == TVN_ITEMCHANGEDW) {
        Post(reinterpret_cast<const NMTVITEMCHANGE&>(notice).lParam);
    } else if (notice.code == NM_CLICK || notice.code == NM_DBLCLK) {
        const DWORD place = GetMessagePos();
        TVHITTESTINFO hit = {};
        hit.pt = {static_cast<short>(LOWORD(place)), static_cast<short>(HIWORD(place))};
        ScreenToClient(Real(), &hit.pt);
        TreeView_HitTest(Real(), &hit);
        if ((hit.flags & TVHT_ONITEMSTATEICON) != 0)
            Post(IndexOf(hit.hItem));
    } else if (notice.code == TVN_KEYDOWN && reinterpret_cast<NMTVKEYDOWN&>(notice).wVKey == VK_SPACE) {
        Post(IndexOf(TreeView_GetSelection(Real())));
    }
    return 0;
}

std::intptr_t Win32Tree::IndexOf(HTREEITEM item) const {
    TVITEMW row = {};
    row.mask = TVIF_PARAM;
    row.hItem = item;
    return Send(TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&row)) == FALSE ? 0 : row.lParam;
}

void Win32Tree::OnPosted(std::intptr_t what) {
    if (what < 1 || what > static_cast<std::intptr_t>(items_.size()))
        return;
    const int index = static_cast<int>(what);
    const std::int32_t real = RealState(index) == TickedBox ? 1 : 0;
    if (real != tree_.NodeCheck(index))
        Owner().Pass([&tree = tree_, index](Input& input) { input.Tick(tree, index); });
    // What the model has not taken, and the box that the space bar gives a heading.
    ShowCheck(index);
}

unsigned Win32Tree::RealState(int index) const {
    return static_cast<unsigned>(Send(TVM_GETITEMSTATE,
                                      reinterpret_cast<WPARAM>(items_[static_cast<std::size_t>(index - 1)]),
                                      TVIS_STATEIMAGEMASK)) >>
           12U;
}

void Win32Tree::SyncContent() {
    if (!tree_.Finished())
        return;
    const bool checks = checks_.Differs(tree_.CheckRevision());
    if (nodes_.Differs(tree_.Revision()))
        ShowNodes();
    else if (checks)
        ShowChecks();
}

void Win32Tree::ShowChecks() const {
    for (int index = 1; index <= static_cast<int>(items_.size()); ++index)
        ShowCheck(index);
}

void Win32Tree::ShowNodes() {
    const int count = tree_.Nodes().Count();
    Send(WM_SETREDRAW, FALSE);
    Send(TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(TVI_ROOT));
    items_.clear();
    lastBelow_.assign(static_cast<std::size_t>(count) + 1, nullptr);
    for (int index = 1; index <= count; ++index)
        AddNode(index);
    for (HTREEITEM item : items_)
        Send(TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(item));
    Send(TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(TreeView_GetRoot(Real())));
    Send(WM_SETREDRAW, TRUE);
    InvalidateRect(Real(), nullptr, TRUE);
}

void Win32Tree::AddNode(int index) {
    const Tree::Node& node = tree_.NodeAt(index);
    const auto parent = static_cast<std::size_t>(node.Parent);
    std::wstring text = SingleLineOf(node.Text);
    TVINSERTSTRUCTW row = {};
    row.hParent = node.Parent == 0 ? TVI_ROOT : items_[parent - 1];
    // After the last one by name: the system would look for it through all the others.
    row.hInsertAfter = lastBelow_[parent] == nullptr ? TVI_FIRST : lastBelow_[parent];
    row.item.mask = TVIF_TEXT | TVIF_PARAM;
    row.item.pszText = text.data();
    row.item.lParam = index;
    items_.push_back(reinterpret_cast<HTREEITEM>(Send(TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&row))));
    lastBelow_[parent] = items_.back();
    ShowCheck(index);
}

// A control may report every state that is set, even one that it has already: that must come to an end.
void Win32Tree::ShowCheck(int index) const {
    const UINT state = StateOf(tree_.NodeAt(index));
    if (RealState(index) == state)
        return;
    TVITEMW item = {};
    item.mask = TVIF_STATE;
    item.hItem = items_[static_cast<std::size_t>(index - 1)];
    item.stateMask = TVIS_STATEIMAGEMASK;
    item.state = INDEXTOSTATEIMAGEMASK(state);
    Send(TVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
}

void Win32Tree::Scale(int dpi) {
    dpi_ = dpi;
    ShowColors();
}

void Win32Tree::ShowColors() {
    Win32Control::ShowColors();
    TreeView_SetTextColor(Real(), ColorValue(tree_.ForeColor, ColorRole::ButtonText));
    const HIMAGELIST former = boxes_;
    boxes_ = MakeCheckImages(dpi_);
    TreeView_SetImageList(Real(), boxes_, TVSIL_STATE);
    ImageList_Destroy(former);
}

} // namespace tarnwick

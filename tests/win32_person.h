#pragma once

// The contract's person in front of the real windows.

#include "Person.h"
#include "platform/win32/Win32Look.h"
#include "win32_support.h"

#include <commctrl.h>

#include <memory>

namespace tarnwick::test {

class Win32Person : public Person {
public:
    Win32Person() { SetCursorPos(0, 0); } // off the windows, which would see it move
    ~Win32Person() override {
        MSG quit;
        PeekMessageW(&quit, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE);
    }

    void PressOn(const Window& window, const Control& control) override {
        Post(WM_LBUTTONDOWN, Real(window, control), 5, 5);
    }
    void LetGo(const Window& window, const Control& control) override {
        const HWND captor = GetCapture() == nullptr ? Real(window, control) : GetCapture();
        POINT place = {5, 5};
        MapWindowPoints(Real(window, control), captor, &place, 1);
        Post(WM_LBUTTONUP, captor, place.x, place.y);
    }
    void ClickRow(const Window& window, const GridControl& grid, int row, int button) override {
        const HWND real = Real(window, grid);
        RECT place;
        ListView_GetItemRect(real, row > 0 ? row - 1 : grid.RowCount() - 1, &place, LVIR_BOUNDS);
        ClickAt(real, place.left + 5, row > 0 ? place.top + 5 : place.bottom + 10,
                button == 1 ? WM_LBUTTONDOWN : WM_RBUTTONDOWN);
    }
    void ClickHeader(const Window& window, const GridControl& grid, int column) override {
        int shown = 0;
        for (int number = 0; number < column - 1; ++number)
            shown += grid.Columns()[static_cast<std::size_t>(number)].Visible ? 1 : 0;
        const HWND header = ListView_GetHeader(Real(window, grid));
        RECT place;
        Header_GetItemRect(header, shown, &place);
        ClickAt(header, place.left + 20, place.top + 5);
    }
    void ClickNode(const Window& window, const TreeControl& tree, int node) override {
        const HWND real = Real(window, tree);
        RECT text;
        TreeView_GetItemRect(real, ItemOf(real, node), &text, TRUE);
        POINT place = {text.left - 8, (text.top + text.bottom) / 2};
        ClientToScreen(real, &place);
        SetCursorPos(place.x, place.y); // the tree asks where the mouse is
        ScreenToClient(real, &place);
        ClickAt(real, place.x, place.y);
    }
    void MoveMouse(const Window& window, int x, int y) override {
        const HWND real = WindowOf(window.Handle());
        Post(WM_MOUSEMOVE, real, PixelsOf(x, DotsOf(real)), PixelsOf(y, DotsOf(real)));
    }
    void Type(const Window& window, const KeyPress& key) override {
        const HWND target = GetFocus() == nullptr ? WindowOf(window.Handle()) : GetFocus();
        const LPARAM flags = 1 | (key.Repeated ? LPARAM{1} << 30 : 0) | (key.Alt ? LPARAM{1} << 29 : 0);
        constexpr WPARAM codes[] = {VK_TAB, VK_RETURN, VK_SPACE, VK_LEFT, VK_RIGHT, VK_UP, VK_DOWN, VK_APPS, VK_SPACE};
        const WPARAM code = codes[static_cast<std::size_t>(key.Which)];
        BYTE keys[256] = {};
        keys[VK_SHIFT] = key.Shift ? 0x80 : 0;
        SetKeyboardState(keys);
        if (key.Which == Key::Letter && key.Letter != " ") {
            PostMessageW(target, key.Alt ? WM_SYSCHAR : WM_CHAR, WideOf(key.Letter).front(), flags);
        } else {
            PostMessageW(target, WM_KEYDOWN, code, flags);
            PostMessageW(target, WM_KEYUP, code, flags | (LPARAM{3} << 30));
        }
        Settle();
        SetKeyboardState(std::fill_n(keys, 256, BYTE{0}) - 256);
    }
    void Close(const Window& window) override { Post(WM_CLOSE, WindowOf(window.Handle())); }
    void ActOn(const Window& window, const Control& control) override { Post(BM_CLICK, Real(window, control)); }
    void Settle() override {
        for (int pass = 0; pass < 3; ++pass)
            services().Windows.PumpEvents();
    }
    void Soon(std::function<void()> act) override {
        static std::vector<std::function<void()>> acts;
        acts.push_back(std::move(act));
        SetTimer(nullptr, 0, 50, [](HWND, UINT, UINT_PTR timer, DWORD) {
            KillTimer(nullptr, timer);
            const std::function<void()> next = std::move(acts.front());
            acts.erase(acts.begin());
            next();
        });
    }
    void Answer(MessageAnswer answer) override {
        Soon([answer] { PostMessageW(GetActiveWindow(), WM_COMMAND, answer == MessageAnswer::Yes ? IDYES : IDNO, 0); });
    }
    void Choose(int entry) override {
        Soon([this, entry] {
            for (int step = 0; step < entry; ++step)
                PostMessageW(GetActiveWindow(), WM_KEYDOWN, VK_DOWN, 1);
            if (entry > 0)
                PostMessageW(GetActiveWindow(), WM_KEYDOWN, VK_RETURN, 1);
            Soon([] { EndMenu(); }); // a greyed entry leaves it open
        });
    }

    bool Shows(const Window& window) override { return IsWindowVisible(WindowOf(window.Handle())) != FALSE; }
    std::string Title(const Window& window) override { return TextOf(WindowOf(window.Handle())); }
    std::string Text(const Window& window, const Control& control) override { return TextOf(Real(window, control)); }
    bool IsMarked(const Window& window, const Control& control) override {
        return SendMessageW(Real(window, control), BM_GETCHECK, 0, 0) == BST_CHECKED;
    }
    bool IsTicked(const Window& window, const TreeControl& tree, int node) override {
        return TreeView_GetCheckState(Real(window, tree), ItemOf(Real(window, tree), node)) == 1;
    }
    int SelectedRow(const Window& window, const GridControl& grid) override {
        return ListView_GetNextItem(Real(window, grid), -1, LVNI_SELECTED) + 1;
    }
    bool HasFocus(const Window& window, const Control& control) override { return GetFocus() == Real(window, control); }
    bool Reads(const Window& window, const Control& control) override {
        return IsWindowVisible(Real(window, control)) != FALSE;
    }

    HWND Real(const Window& window, const Control& control) { return Machine.Windows.RealOf(window, control); }
    static std::string TextOf(HWND window) {
        wchar_t text[1000] = {};
        GetWindowTextW(window, text, 1000);
        return Utf8Of(text);
    }
    static HTREEITEM ItemOf(HWND tree, int node) {
        HTREEITEM item = TreeView_GetRoot(tree);
        while (--node > 0)
            item = TreeView_GetNextVisible(tree, item);
        return item;
    }

    Win32Machine Machine;

private:
    void Post(UINT message, HWND real, long x = 0, long y = 0) {
        PostMessageW(real, message, 0, MAKELPARAM(x, y));
        Settle();
    }
    void ClickAt(HWND real, long x, long y, UINT down = WM_LBUTTONDOWN) {
        PostMessageW(real, down, 0, MAKELPARAM(x, y));
        Post(down + 1, real, x, y);
    }
};

} // namespace tarnwick::test

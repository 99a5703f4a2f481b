#pragma once

// The contract's person in front of the real windows.

#include "Person.h"
#include "platform/win32/Win32Look.h"
#include "win32_support.h"

#include <commctrl.h>

namespace tarnwick::test {

class Win32Person : public Person {
public:
    explicit Win32Person(SampleWindow& sample) : Person(sample) { SetCursorPos(0, 0); } // off the windows: no moves
    ~Win32Person() override {
        MSG quit;
        PeekMessageW(&quit, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE);
    }

    void PressOn(Control& control) override { Post(WM_LBUTTONDOWN, Real(control), 5, 5); }
    void LetGo(Control& control) override {
        const HWND captor = GetCapture() == nullptr ? Real(control) : GetCapture();
        POINT place = {5, 5};
        MapWindowPoints(Real(control), captor, &place, 1);
        Post(WM_LBUTTONUP, captor, place.x, place.y);
    }
    void ClickRow(int row, int button) override {
        RECT place;
        ListView_GetItemRect(Real(w.Grid1), row > 0 ? row - 1 : w.Grid1.RowCount() - 1, &place, LVIR_BOUNDS);
        ClickAt(Real(w.Grid1), place.left + 5, row > 0 ? place.top + 5 : place.bottom + 10,
                button == 1 ? WM_LBUTTONDOWN : WM_RBUTTONDOWN);
    }
    void ClickNode(int node) override {
        const HWND real = Real(w.Tree1);
        RECT text;
        TreeView_GetItemRect(real, ItemOf(node), &text, TRUE);
        POINT place = {text.left - 8, (text.top + text.bottom) / 2};
        ClientToScreen(real, &place);
        SetCursorPos(place.x, place.y); // the tree asks where the mouse is
        ScreenToClient(real, &place);
        ClickAt(real, place.x, place.y);
    }
    void MoveMouse(int x, int y) override {
        Post(WM_MOUSEMOVE, Form(), PixelsOf(x, DotsOf(Form())), PixelsOf(y, DotsOf(Form())));
    }
    void Type(const KeyPress& key) override {
        const HWND target = GetFocus() == nullptr ? Form() : GetFocus();
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
    void Close() override { Post(WM_CLOSE, Form()); }
    void ActOn(Control& control) override { Post(BM_CLICK, Real(control)); }
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

    bool Shows(const Window& window) override { return IsWindowVisible(WindowOf(window.Handle())) != FALSE; }
    std::string Text(const Control& control) override { return TextOf(Real(control)); }
    bool IsMarked(const Control& control) override {
        return SendMessageW(Real(control), BM_GETCHECK, 0, 0) == BST_CHECKED;
    }
    int SelectedRow() override { return ListView_GetNextItem(Real(w.Grid1), -1, LVNI_SELECTED) + 1; }
    bool HasFocus(const Control& control) override { return GetFocus() == Real(control); }
    bool Reads(const Control& control) override { return IsWindowVisible(Real(control)) != FALSE; }

    HWND Form() { return WindowOf(w.Handle()); }
    HWND Real(const Control& control) { return Machine.Windows.RealOf(w, control); }
    static std::string TextOf(HWND window) {
        wchar_t text[1000] = {};
        GetWindowTextW(window, text, 1000);
        return Utf8Of(text);
    }
    HTREEITEM ItemOf(int node) {
        HTREEITEM item = TreeView_GetRoot(Real(w.Tree1));
        while (--node > 0)
            item = TreeView_GetNextVisible(Real(w.Tree1), item);
        return item;
    }

    void Post(UINT message, HWND real, long x = 0, long y = 0) {
        PostMessageW(real, message, 0, MAKELPARAM(x, y));
        Settle();
    }
    void ClickAt(HWND real, long x, long y, UINT down = WM_LBUTTONDOWN) {
        PostMessageW(real, down, 0, MAKELPARAM(x, y));
        Post(down + 1, real, x, y);
    }

    Win32Machine Machine;
};

} // namespace tarnwick::test

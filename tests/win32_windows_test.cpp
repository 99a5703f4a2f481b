// What Windows alone asks of a window, beside the contract of every desktop.

#include "contract_windows.h"
#include "platform/win32/Win32Look.h"
#include "win32_support.h"

#include <commctrl.h>

#include <thread>

namespace tarnwick::test {
namespace {

// The contract's person in front of the real windows.
class Win32Person : public Person {
public:
    explicit Win32Person(SampleWindow& sample) : Person(sample) { SetCursorPos(0, 0); } // off the windows: no moves
    ~Win32Person() override {
        if (hook_ != nullptr)
            UnhookWinEvent(hook_);
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
    void ClickEarly(Control& control, const std::function<void()>& change) override {
        for (const UINT message : {WM_LBUTTONDOWN, WM_LBUTTONUP})
            PostMessageW(Real(control), message, 0, MAKELPARAM(5, 5));
        Sleep(50);
        change();
        services().Windows.Show(w);
        Settle();
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
        Post(WM_MOUSEMOVE, Form(), PixelsOf(x, DpiOf(Form())), PixelsOf(y, DpiOf(Form())));
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
    // Readers send what they do: it doesn't wait in the queue.
    void TypeByReader(const KeyPress&) override { ActOn(w.Command1); }
    void Paste(const std::string& text) override {
        SendMessageW(Real(w.Text1), EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(WideOf(text).c_str()));
        Settle();
    }
    void Close() override {
        SendFromOutside(Form(), WM_CLOSE);
        Settle();
    }
    void ActOn(Control& control) override {
        SendFromOutside(Real(control), BM_CLICK);
        Settle();
    }
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
    std::size_t Picture(const Control* control) override {
        const HWND real = control == nullptr ? Form() : Real(*control);
        RECT area;
        GetClientRect(real, &area);
        RedrawWindow(real, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
        const HDC screen = GetDC(real);
        const HDC surface = CreateCompatibleDC(screen);
        const HBITMAP bitmap = CreateCompatibleBitmap(screen, area.right, area.bottom);
        const HGDIOBJ former = SelectObject(surface, bitmap);
        BitBlt(surface, 0, 0, area.right, area.bottom, screen, 0, 0, SRCCOPY);
        SelectObject(surface, former);
        std::string bits(static_cast<std::size_t>(area.right * area.bottom * 4), '\0');
        GetBitmapBits(bitmap, static_cast<LONG>(bits.size()), bits.data());
        DeleteObject(bitmap);
        DeleteDC(surface);
        ReleaseDC(real, screen);
        return std::hash<std::string>()(IsWindowVisible(real) ? bits : "");
    }
    std::string Title() override { return TextOf(Form()); }
    Log Spoken() override {
        static Log spoken;
        constexpr DWORD liveRegionChanged = 0x8019; // EVENT_OBJECT_LIVEREGIONCHANGED
        if (hook_ == nullptr)
            hook_ = SetWinEventHook(
                liveRegionChanged, liveRegionChanged, nullptr,
                [](HWINEVENTHOOK, DWORD, HWND of, LONG, LONG, DWORD, DWORD) { spoken.push_back(TextOf(of)); },
                GetCurrentProcessId(), 0, WINEVENT_OUTOFCONTEXT);
        Settle();
        return std::exchange(spoken, {});
    }
    bool IsMarked(const Control& control) override {
        return SendMessageW(Real(control), BM_GETCHECK, 0, 0) == BST_CHECKED;
    }
    int SelectedRow() override { return ListView_GetNextItem(Real(w.Grid1), -1, LVNI_SELECTED) + 1; }
    bool HasFocus(const Control& control) override { return GetFocus() == Real(control); }
    bool Reads(const Control& control) override { return IsWindowVisible(Real(control)) != FALSE; }

    HWND Form() { return WindowOf(w.Handle()); }
    HWND Real(const Control& control) {
        std::pair<const Control*, HWND> found{&control, nullptr};
        EnumChildWindows(
            Form(),
            [](HWND child, LPARAM wanted) -> BOOL {
                auto& [model, real] = *reinterpret_cast<std::pair<const Control*, HWND>*>(wanted);
                const auto* own = reinterpret_cast<const Win32Control*>(GetWindowLongPtrW(child, GWLP_USERDATA));
                const auto of = GetDlgCtrlID(child) > 0 && own != nullptr && own->Real() == child;
                real = of && &own->Model() == model ? child : real;
                return TRUE;
            },
            reinterpret_cast<LPARAM>(&found));
        return found.second;
    }
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
    static void SendFromOutside(HWND real, UINT message) {
        std::thread([real, message] { SendNotifyMessageW(real, message, 0, 0); }).join();
    }
    void ClickAt(HWND real, long x, long y, UINT down = WM_LBUTTONDOWN) {
        PostMessageW(real, down, 0, MAKELPARAM(x, y));
        Post(down + 1, real, x, y);
    }

    Win32Machine Machine;

private:
    HWINEVENTHOOK hook_ = nullptr;
};

} // namespace

std::unique_ptr<Person> MakePerson(SampleWindow& sample) { return std::make_unique<Win32Person>(sample); }

namespace {

class Win32WindowsTest : public WindowFixture {
protected:
    HWND Form() { return person.Form(); }
    HWND Real(const Control& control) { return person.Real(control); }
    // The right end of the part of `of` that shows the tool tip of this number.
    static LONG ToolTipEnd(HWND of, UINT_PTR number) {
        TTTOOLINFOW tip = {sizeof tip, 0, of, number, {}, nullptr, nullptr, 0, nullptr};
        for (HWND found = nullptr; (found = FindWindowExW(nullptr, found, TOOLTIPS_CLASSW, nullptr)) != nullptr;)
            if (GetWindowThreadProcessId(found, nullptr) == GetCurrentThreadId())
                SendMessageW(found, TTM_GETTOOLINFOW, 0, reinterpret_cast<LPARAM>(&tip));
        return tip.rect.right;
    }

    static std::string ToolTipText(HWND of, UINT_PTR number) {
        wchar_t text[2000] = {};
        TTTOOLINFOW tip = {sizeof tip, 0, of, number, {}, nullptr, text, 0, nullptr};
        for (HWND found = nullptr; (found = FindWindowExW(nullptr, found, TOOLTIPS_CLASSW, nullptr)) != nullptr;)
            if (GetWindowThreadProcessId(found, nullptr) == GetCurrentThreadId())
                SendMessageW(found, TTM_GETTEXTW, 2000, reinterpret_cast<LPARAM>(&tip));
        return Utf8Of(text);
    }
    static std::vector<COLORREF> Pixels(HWND of, const RECT& part) {
        std::vector<COLORREF> pixels;
        UpdateWindow(of);
        const HDC surface = GetDC(of);
        for (LONG y = part.top; y < part.bottom; ++y)
            for (LONG x = part.left; x < part.right; ++x)
                pixels.push_back(GetPixel(surface, x, y));
        ReleaseDC(of, surface);
        return pixels;
    }

    Win32Person& person = static_cast<Win32Person&>(p);
};

TEST_F(Win32WindowsTest, ShowsDataAsPlainTextAndACutCellWholeAsItsToolTip) {
    const std::string markup = "<b>R&D</b>\t&x\r\n\xC2\xA9";
    w.Grid1.ClearRows();
    w.Grid1.AddRow(w.Grid1.AddRecord({markup, "", std::string(5000, 'x')}));
    for (int i = 0; i < 1000000; ++i)
        w.Grid1.AddRow(); // no more work than a few
    Show();
    w.Title = w.Frame1.Caption = markup;
    p.Settle();
    EXPECT_EQ(person.TextOf(Form()), "<b>R&D</b> &x \xC2\xA9");
    EXPECT_EQ(p.Text(w.Frame1), "<b>R&&D</b> &&x \xC2\xA9");
    EXPECT_NE(GetWindowLongW(Real(w.Label1), GWL_STYLE) & SS_NOPREFIX, 0);
    const std::wstring shown[] = {L"<b>R&D</b> &x \u00A9", std::wstring(99, L'x')};
    for (const int column : {0, 1}) {
        wchar_t text[100] = {};
        ListView_GetItemText(Real(w.Grid1), 0, column, text, 100);
        EXPECT_EQ(text, shown[column]);
    }
    RECT place;
    GetClientRect(Form(), &place);
    EXPECT_EQ(place.right, PixelsOf(6000, DpiOf(Form())));
    for (const int row : {0, 1}) {
        ListView_GetItemRect(Real(w.Grid1), row, &place, LVIR_BOUNDS);
        SendMessageW(Real(w.Grid1), WM_MOUSEMOVE, 0, MAKELPARAM(place.left + 130, place.top + 5));
        EXPECT_EQ(ToolTipEnd(Real(w.Grid1), 1), row == 0 ? 180 : 0);
    }
    Header_GetItemRect(ListView_GetHeader(Real(w.Grid1)), 1, &place);
    person.ClickAt(ListView_GetHeader(Real(w.Grid1)), place.left + 20, place.top + 5);
    EXPECT_EQ(Raised(), Log{"Header 3"});
}

TEST_F(Win32WindowsTest, AnswersWhatThePersonAnswers) {
    Show();
    for (const auto& [command, answer] : {std::pair{IDYES, MessageAnswer::Yes}, {IDNO, MessageAnswer::No}}) {
        p.Soon([command = command] { PostMessageW(GetActiveWindow(), WM_COMMAND, static_cast<WPARAM>(command), 0); });
        EXPECT_EQ(ShowMessage("?", "T", MessageIcon::Question, MessageButtons::YesNo), answer);
    }
    MenuEntry first{"", "&First", false, true, [&] { w.Log.push_back("first"); }};
    MenuEntry grey{"", "Grey", false, false, [&] { w.Log.push_back("grey"); }};
    Menu menu{"menu", "Menu", {&first, &grey}};
    using Keys = std::vector<WPARAM>;
    for (const Keys& keys : {Keys{VK_DOWN, VK_RETURN}, Keys{VK_DOWN, VK_DOWN, VK_RETURN}, Keys{VK_ESCAPE}}) {
        p.Soon([this, keys] {
            for (const WPARAM key : keys)
                PostMessageW(GetActiveWindow(), WM_KEYDOWN, key, 1);
            p.Soon([] { EndMenu(); }); // a greyed entry leaves it open
        });
        PopUp(menu, w);
    }
    EXPECT_EQ(Raised(), Log{"first"});
}

TEST_F(Win32WindowsTest, AsksWhateverAFavoriteHoldsOnTheSmallestScreen) {
    Show();
    for (const char* name : {"W ", "\xEF\xB7\xBD", "\xE0\xB8\xB3"}) { // words, one wide letter, one that breaks nowhere
        std::string text = "Question\r\n";
        for (int count = 0; count < 4000; ++count)
            text += count % 1000 == 0 ? "\r\n" : name;
        RECT box = {};
        p.Soon([&box] {
            GetWindowRect(GetActiveWindow(), &box);
            PostMessageW(GetActiveWindow(), WM_COMMAND, IDNO, 0);
        });
        ShowMessage(text, "T", MessageIcon::Question, MessageButtons::YesNo);
        EXPECT_GT(box.right - box.left, 100) << name;
        EXPECT_LE(box.right - box.left, 1024) << name;
        EXPECT_LE(box.bottom - box.top, 600) << name;
    }
}

TEST_F(Win32WindowsTest, BreaksALongToolTip) {
    w.Grid1.ClearRows();
    w.Grid1.AddRow(w.Grid1.AddRecord({std::string(5000, 'x')}));
    Show();
    SendMessageW(Real(w.Grid1), WM_MOUSEMOVE, 0, MAKELPARAM(30, 30));
    EXPECT_EQ(ToolTipText(Real(w.Grid1), 1).find('\n'), 100U);
    EXPECT_LT(ToolTipText(Real(w.Grid1), 1).size(), 1050U);
}

TEST_F(Win32WindowsTest, ShowsWhatALabelCutsAsItsToolTip) {
    Show();
    const HWND label = Real(w.Value1);
    for (const std::string& text : {std::string(200, 'x'), std::string("short")}) {
        w.Value1.Caption = text;
        p.Settle();
        EXPECT_EQ(ToolTipText(Real(w.Frame1), reinterpret_cast<UINT_PTR>(label)).substr(0, 100),
                  text.size() > 100 ? text.substr(0, 100) : "");
    }
}

TEST_F(Win32WindowsTest, ServesAScreenReader) {
    Show();
    std::string order; // it reads from front to back
    for (HWND child = GetTopWindow(Form()); child != nullptr; child = GetWindow(child, GW_HWNDNEXT))
        for (const Control* control : w.Controls)
            if (Real(*control) == child)
                order += *control->Name + " ";
    EXPECT_EQ(order, "Label1 Frame1 Command1 Command2 Grid1 Picture1 Frame2 Tree1 Check1 Option2 ");

    // It changes the item, without a click or a key.
    const HWND tree = Real(w.Tree1);
    for (const int node : {1, 2}) {
        TreeView_SetItemState(tree, person.ItemOf(node), INDEXTOSTATEIMAGEMASK(2), TVIS_STATEIMAGEMASK);
        NMTVITEMCHANGE change = {{tree, 0, static_cast<UINT>(TVN_ITEMCHANGEDW)}, 0, nullptr, 0, 0, node};
        SendMessageW(Form(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&change)); // Wine doesn't
    }
    p.Settle();
    EXPECT_EQ(w.Log, Log{"Check 211"});
    w.Tree1.SetNodeCheck(3, 0);
    p.Settle();
    EXPECT_EQ(TreeView_GetCheckState(tree, person.ItemOf(1)), UINT(-1)) << "a heading has no box";
    EXPECT_EQ(TreeView_GetCheckState(tree, person.ItemOf(3)), 0U);
}

// Themed buttons have their parent paint their ground.
TEST_F(Win32WindowsTest, FollowsItsFrameAndPaintsItsGroundWhereItIsAsked) {
    Show();
    w.BackColor = Color::Rgb(1, 2, 3);
    w.Frame1.BackColor = Color::Rgb(4, 5, 6);
    w.Icon = "tarnwick.ico";
    while (const HWND tip = FindWindowExW(nullptr, nullptr, TOOLTIPS_CLASSW, nullptr))
        DestroyWindow(tip); // Wine lifts no window over others that owns one
    w.TopMost = true;
    p.Settle();
    EXPECT_NE(GetWindowLongW(Form(), GWL_EXSTYLE) & WS_EX_TOPMOST, 0);
    EXPECT_NE(SendMessageW(Form(), WM_GETICON, ICON_BIG, 0), 0);
    const HDC surface = CreateCompatibleDC(nullptr);
    const HBITMAP bitmap = CreateBitmap(100, 100, 1, 32, nullptr);
    SelectObject(surface, bitmap);
    for (const auto& [asked, color] : {std::pair(Form(), RGB(1, 2, 3)), std::pair(Real(w.Frame1), RGB(4, 5, 6))})
        for (const UINT message : {WM_ERASEBKGND, WM_PRINTCLIENT}) {
            PatBlt(surface, 0, 0, 100, 100, WHITENESS);
            SendMessageW(asked, message, reinterpret_cast<WPARAM>(surface), PRF_CLIENT);
            EXPECT_EQ(GetPixel(surface, 30, 30), color) << message;
        }
    DeleteDC(surface);
    DeleteObject(bitmap);
}

TEST_F(Win32WindowsTest, FollowsScaleAndColours) {
    Show();
    const int dpi = DpiOf(Form());
    RECT place;
    GetWindowRect(Form(), &place);
    SendMessageW(Form(), WM_DPICHANGED, MAKEWPARAM(dpi * 2, dpi * 2), reinterpret_cast<LPARAM>(&place));
    GetClientRect(Real(w.Text1), &place);
    EXPECT_GE(place.right, PixelsOf(600, dpi) * 2 - 4);
    LOGFONTW font;
    GetObjectW(reinterpret_cast<HFONT>(SendMessageW(Real(w.Label1), WM_GETFONT, 0, 0)), sizeof font, &font);
    EXPECT_EQ(font.lfHeight, -22);
    EXPECT_EQ(ListView_GetColumnWidth(Real(w.Grid1), 0), 180);
    EXPECT_EQ(ToolTipEnd(Form(), reinterpret_cast<UINT_PTR>(Real(w.Label1))), PixelsOf(1500, dpi) * 2);
    int box[2] = {};
    ImageList_GetIconSize(TreeView_GetImageList(Real(w.Tree1), TVSIL_STATE), &box[0], &box[1]);
    EXPECT_EQ(box[1], 32);

    int role = COLOR_BTNTEXT;
    const COLORREF former = GetSysColor(role);
    for (const COLORREF color : {COLORREF{RGB(1, 2, 3)}, former}) {
        SetSysColors(1, &role, &color);
        SendMessageW(Form(), WM_SYSCOLORCHANGE, 0, 0);
        EXPECT_EQ(TreeView_GetTextColor(Real(w.Tree1)), color);
    }
}

TEST_F(Win32WindowsTest, AHeaderLooksTheSameUnderTheMouse) {
    Show();
    const HWND header = ListView_GetHeader(Real(w.Grid1));
    SetWindowLongW(header, GWL_STYLE, GetWindowLongW(header, GWL_STYLE) | HDS_HOTTRACK); // as themes do
    const std::vector<COLORREF> before = Pixels(header, {0, 0, 100, 20});
    person.Post(WM_MOUSEMOVE, header, 20, 5);
    EXPECT_EQ(Pixels(header, {0, 0, 100, 20}), before);
}

TEST_F(Win32WindowsTest, DrawsItsTreeAsThePlainOneOfTheSystem) {
    Show();
    const HWND tree = Real(w.Tree1);
    const DWORD style = static_cast<DWORD>(GetWindowLongW(tree, GWL_STYLE)) & ~DWORD{TVS_CHECKBOXES | WS_CHILD};
    const HWND plain = CreateWindowExW(0, WC_TREEVIEWW, nullptr, style | WS_POPUP | WS_VISIBLE, 500, 0, 300, 100,
                                       nullptr, nullptr, nullptr, nullptr);
    for (HTREEITEM item = TreeView_GetRoot(tree), parent = nullptr; item != nullptr;
         item = TreeView_GetNextVisible(tree, item)) {
        wchar_t text[100] = {};
        TVINSERTSTRUCTW row = {parent == nullptr ? TVI_ROOT : parent, TVI_LAST, {}};
        row.item = {TVIF_TEXT, item, 0, 0, text, 100, 0, 0, 0, 0};
        TreeView_GetItem(tree, &row.item);
        const HTREEITEM made = TreeView_InsertItem(plain, &row);
        parent = parent == nullptr ? made : parent;
        TreeView_Expand(plain, parent, TVE_EXPAND);
    }
    const RECT buttonsAndLines = {0, 0, TreeView_GetIndent(tree), 3 * TreeView_GetItemHeight(tree)};
    const RECT ground = {150, 60, 160, 70};
    EXPECT_EQ(Pixels(tree, buttonsAndLines), Pixels(plain, buttonsAndLines));
    EXPECT_EQ(Pixels(tree, ground), std::vector<COLORREF>(100, GetSysColor(COLOR_WINDOW)));
    const HDC surface = GetDC(tree);
    SendMessageW(Form(), WM_CTLCOLOREDIT, reinterpret_cast<WPARAM>(surface), reinterpret_cast<LPARAM>(tree));
    EXPECT_EQ(GetBkColor(surface), GetSysColor(COLOR_WINDOW)) << "what the control may ask for";
    ReleaseDC(tree, surface);
    DestroyWindow(plain);
}

// Any program may send these.
TEST_F(Win32WindowsTest, TrustsNoWindowThatIsNotItsOwn) {
    Show();
    const HWND other = CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
    SetWindowLongPtrW(other, GWLP_USERDATA, 1);
    for (const UINT message : {UINT{WM_COMMAND}, UINT{WM_CTLCOLORBTN}, UINT{WM_CTLCOLORSTATIC}})
        SendMessageW(Form(), message, 0, reinterpret_cast<LPARAM>(other));
    SendMessageW(Form(), WM_APP, reinterpret_cast<WPARAM>(other), 1);
    for (const LPARAM what : {LPARAM{-1}, LPARAM{0}, LPARAM{4}, LPARAM{1} << 40})
        SendMessageW(Form(), WM_APP, reinterpret_cast<WPARAM>(Real(w.Tree1)), what);
    DestroyWindow(other);
    EXPECT_EQ(w.Log, Log{});
}

TEST_F(Win32WindowsTest, WindowsLeaveNothingBehind) {
    w.Picture1.Picture = "side.jpg";
    w.Icon = "tarnwick.ico";
    std::vector<DWORD> settled, counts;
    for (int round = 0; round <= 40; ++round) {
        Show();
        Sample.Unload();
        p.Settle();
        counts = {GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS),
                  GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS), 0};
        GetProcessHandleCount(GetCurrentProcess(), &counts.back());
        if (round == 10)
            settled = counts;
    }
    EXPECT_EQ(counts, settled);
}

TEST_F(Win32WindowsTest, ProcedureSeesMessagesAndPassesThemOnWhole) {
    static PreviousProcedure own;
    own = services().Windows.InstallProcedure(
        w.Handle(), [](WindowHandle window, std::uint32_t message, std::int32_t first, std::int32_t second) {
            return services().Windows.CallProcedure(own, window, message, first, second);
        });
    SetWindowTextW(Form(), L"a text behind a pointer"); // of 64 bits
    for (int restored = 0; restored < 3; ++restored) {
        EXPECT_EQ(person.TextOf(Form()), "a text behind a pointer");
        services().Windows.RestoreProcedure(w.Handle(), own);
    }
}

} // namespace
} // namespace tarnwick::test

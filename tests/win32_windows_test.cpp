// What Windows alone asks of a window, beside the contract of every desktop.

#include "contract_windows.h"
#include "win32_person.h"

namespace tarnwick::test {

INSTANTIATE_TEST_SUITE_P(Win32, WindowContract, ::testing::Values(&Make<Win32Person>));

namespace {

class Win32WindowsTest : public WindowFixture {
protected:
    Win32WindowsTest() : WindowFixture(Make<Win32Person>()) {}

    HWND Form() { return WindowOf(w.Handle()); }
    HWND Real(const Control& control) { return person.Real(w, control); }
    // The width of the part of `of` that shows a tool tip.
    static LONG ToolTipWidth(HWND of) {
        static TTTOOLINFOW tool;
        tool = {};
        tool.cbSize = sizeof tool;
        EnumThreadWindows(
            GetCurrentThreadId(),
            [](HWND found, LPARAM wanted) {
                for (WPARAM number = 0;
                     SendMessageW(found, TTM_ENUMTOOLSW, number, reinterpret_cast<LPARAM>(&tool)) != 0; ++number)
                    if (tool.hwnd == reinterpret_cast<HWND>(wanted))
                        return FALSE;
                return TRUE;
            },
            reinterpret_cast<LPARAM>(of));
        return tool.rect.right;
    }

    Win32Person& person = static_cast<Win32Person&>(p);
    WindowService& windows = person.Machine.Windows;
};

TEST_F(Win32WindowsTest, ShowsDataAsPlainTextAndACutCellWholeAsItsToolTip) {
    w.Frame1.Caption = "<b>R&D</b>\t&x\r\n\xC2\xA9";
    w.Grid1.SetCellText(1, 1, w.Frame1.Caption);
    w.Grid1.SetCellText(1, 3, std::string(5000, 'x'));
    for (int i = 0; i < 1000000; ++i)
        w.Grid1.AddRow(); // no more work than a few
    Show();
    EXPECT_NE(GetWindowLongW(Real(w.Label1), GWL_STYLE) & SS_NOPREFIX, 0);
    EXPECT_EQ(person.TextOf(Real(w.Frame1)), "<b>R&&D</b> &&x \xC2\xA9");
    wchar_t text[100] = {};
    ListView_GetItemText(Real(w.Grid1), 0, 0, text, 100);
    EXPECT_EQ(std::wstring(text), L"<b>R&D</b> &x \u00A9");
    ListView_GetItemText(Real(w.Grid1), 0, 1, text, 100);
    EXPECT_EQ(std::wstring(text), std::wstring(99, L'x'));
    RECT place;
    GetClientRect(Form(), &place);
    EXPECT_EQ(place.right, PixelsOf(6000, DotsOf(Form())));
    for (const int row : {0, 1}) {
        ListView_GetItemRect(Real(w.Grid1), row, &place, LVIR_BOUNDS);
        SendMessageW(Real(w.Grid1), WM_MOUSEMOVE, 0, MAKELPARAM(place.left + 130, place.top + 5));
        EXPECT_EQ(ToolTipWidth(Real(w.Grid1)), row == 0 ? 200 : 0);
    }
}

TEST_F(Win32WindowsTest, ServesAScreenReader) {
    Show();
    std::string order; // it reads from front to back
    for (HWND child = GetTopWindow(Form()); child != nullptr; child = GetWindow(child, GW_HWNDNEXT))
        for (const Control* control : w.Controls)
            if (Real(*control) == child)
                order += control->Name + " ";
    EXPECT_EQ(order, "Label1 Frame1 Command1 Command2 Grid1 Picture1 Frame2 Tree1 Check1 Option2 ");

    // It changes the item, without a click or a key.
    const HWND tree = Real(w.Tree1);
    for (const int node : {1, 2}) {
        TreeView_SetItemState(tree, person.ItemOf(tree, node), INDEXTOSTATEIMAGEMASK(2), TVIS_STATEIMAGEMASK);
        const auto number = static_cast<UINT_PTR>(GetDlgCtrlID(tree));
        NMTVITEMCHANGE change = {{tree, number, static_cast<UINT>(TVN_ITEMCHANGEDW)}, 0, nullptr, 0, 0, node};
        SendMessageW(Form(), WM_NOTIFY, number, reinterpret_cast<LPARAM>(&change)); // Wine doesn't
    }
    p.Settle();
    EXPECT_EQ(w.Log, Log{"Check 211"});
    EXPECT_EQ(TreeView_GetCheckState(tree, person.ItemOf(tree, 1)), UINT(-1)) << "a heading has no box";
}

// Themed buttons have their parent paint behind them.
TEST_F(Win32WindowsTest, PaintsItsGroundWhereItIsAsked) {
    w.BackColor = Color::Rgb(1, 2, 3);
    w.Frame1.BackColor = Color::Rgb(4, 5, 6);
    Show();
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
    w.Label1.ToolTip = "tip";
    Show();
    const int dots = DotsOf(Form());
    RECT place;
    GetWindowRect(Form(), &place);
    SendMessageW(Form(), WM_DPICHANGED, MAKEWPARAM(dots * 2, dots * 2), reinterpret_cast<LPARAM>(&place));
    GetClientRect(Real(w.Text1), &place);
    EXPECT_GE(place.right, PixelsOf(600, dots) * 2 - 4);
    LOGFONTW font;
    GetObjectW(reinterpret_cast<HFONT>(SendMessageW(Real(w.Label1), WM_GETFONT, 0, 0)), sizeof font, &font);
    EXPECT_EQ(font.lfHeight, -22);
    EXPECT_EQ(ListView_GetColumnWidth(Real(w.Grid1), 0), 200);
    EXPECT_EQ(ToolTipWidth(Form()), PixelsOf(1500, dots) * 2);
    int width = 0;
    int height = 0;
    ImageList_GetIconSize(TreeView_GetImageList(Real(w.Tree1), TVSIL_STATE), &width, &height);
    EXPECT_EQ(height, 32);

    int role = COLOR_BTNTEXT;
    const COLORREF former = GetSysColor(role);
    for (const COLORREF color : {COLORREF{RGB(1, 2, 3)}, former}) {
        SetSysColors(1, &role, &color);
        SendMessageW(Form(), WM_SYSCOLORCHANGE, 0, 0);
        EXPECT_EQ(TreeView_GetTextColor(Real(w.Tree1)), color);
    }
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
    std::vector<DWORD> first;
    std::vector<DWORD> counts(3);
    for (int round = 0; round <= 40; ++round) {
        Sample->Picture1.Picture = "side.jpg";
        Sample->Label1.ToolTip = "tip";
        Sample->Icon = "tarnwick.ico";
        Show();
        Sample.Unload();
        p.Settle();
        GetProcessHandleCount(GetCurrentProcess(), &counts[0]);
        counts[1] = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);
        counts[2] = GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS);
        if (round == 10)
            first = counts;
    }
    EXPECT_EQ(counts, first);
}

// A tick that opens a message box must not keep the other ticks, nor posted messages, waiting.
TEST_F(Win32WindowsTest, TicksAndMessagesComeInTheSystemsLoops) {
    static int messages = 0;
    const PreviousProcedure own =
        windows.InstallProcedure(w.Handle(), [](WindowHandle, std::uint32_t message, std::int32_t, std::int32_t) {
            messages += message == 1025 ? 1 : 0;
            return std::int32_t{0};
        });
    int ticks = 0;
    Start(w.Timer1, 20, [&] {
        ++ticks;
        PostMessageW(Form(), 1025, 0, 0);
        if (ticks == 1)
            ShowMessage("box", "box", MessageIcon::Information, MessageButtons::Ok);
        else if (ticks == 4)
            PostMessageW(GetActiveWindow(), WM_COMMAND, IDOK, 0);
    });
    for (int pass = 0; pass < 1000 && ticks < 4; ++pass)
        windows.WaitForEvents();
    EXPECT_GE(ticks, 4);
    EXPECT_GE(messages, 3);
    windows.RestoreProcedure(w.Handle(), own);
}

TEST_F(Win32WindowsTest, ProcedureSeesMessagesAndPassesThemOnWhole) {
    static PreviousProcedure own;
    own = windows.InstallProcedure(
        w.Handle(), [](WindowHandle window, std::uint32_t message, std::int32_t first, std::int32_t second) {
            return services().Windows.CallProcedure(own, window, message, first, second);
        });
    SetWindowTextW(Form(), L"a text behind a pointer"); // of 64 bits
    for (int restored = 0; restored < 3; ++restored) {
        EXPECT_EQ(person.TextOf(Form()), "a text behind a pointer");
        windows.RestoreProcedure(w.Handle(), own);
    }
}

} // namespace
} // namespace tarnwick::test

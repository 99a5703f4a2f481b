#include "SampleWindow.h"
#include "win32_support.h"
#include "window/Dialogs.h"

#include <commctrl.h>

namespace tarnwick::test {
namespace {

using Log = std::vector<std::string>;

const std::string Markup = "<b>R&D</b>\t&x";

class Win32WindowsTest : public ::testing::Test {
protected:
    void ShowSample() {
        Sample->Option1.Value = true;
        Sample.Show();
        SetActiveWindow(WindowOf(Sample->Handle()));
        Pump();
    }
    void Pump() {
        for (int pass = 0; pass < 3; ++pass)
            Machine.Windows.PumpEvents();
    }
    // Brings the screen in line, as a pump does a moment later at the latest.
    void Sync() {
        Sleep(40);
        Pump();
    }
    HWND Real(const Control& control) {
        const HWND real = Machine.Windows.RealOf(*Sample, control);
        if (real == nullptr)
            throw std::runtime_error("no real " + control.Name);
        return real;
    }
    void Press(WPARAM key) {
        Key(GetFocus(), key);
        Pump();
    }
    std::string Focused() {
        for (const Control* control : Sample->Controls)
            if (Machine.Windows.RealOf(*Sample, *control) == GetFocus())
                return control->Name;
        return "none";
    }
    // The screen's place of a control relative to the client area.
    RECT PlaceOf(const Control& control) {
        RECT place;
        GetWindowRect(Real(control), &place);
        MapWindowPoints(nullptr, WindowOf(Sample->Handle()), reinterpret_cast<POINT*>(&place), 2);
        return place;
    }
    std::wstring CellText(int row, int column) {
        wchar_t text[100] = {};
        ListView_GetItemText(Real(Sample->Grid1), row, column, text, 100);
        return text;
    }
    HTREEITEM NodeAt(int index) {
        HTREEITEM item = TreeView_GetRoot(Real(Sample->Tree1));
        if (index > 1)
            item = TreeView_GetChild(Real(Sample->Tree1), item);
        for (int i = 2; i < index; ++i)
            item = TreeView_GetNextSibling(Real(Sample->Tree1), item);
        return item;
    }
    UINT StateImageOf(int index) {
        return TreeView_GetItemState(Real(Sample->Tree1), NodeAt(index), TVIS_STATEIMAGEMASK) >> 12;
    }

    WindowObject<SampleWindow> Sample; // outlives the machine, which gives its window up
    WindowObject<SampleWindow> Other;
    Win32Machine Machine;
};

TEST_F(Win32WindowsTest, BuildsTheTableInPlace) {
    Sample->Check1.Visible = false;
    Sample->Command2.Enabled = false;
    ShowSample();
    const HWND form = WindowOf(Sample->Handle());
    const int dots = DotsOf(form);
    RECT client;
    GetClientRect(form, &client);
    EXPECT_EQ(client.right, PixelsOf(6000, dots));
    EXPECT_EQ(client.bottom, PixelsOf(6000, dots));
    EXPECT_FALSE(IsWindowVisible(Real(Sample->Check1)));
    EXPECT_FALSE(IsWindowEnabled(Real(Sample->Command2)));
    EXPECT_TRUE(IsWindowVisible(Real(Sample->Command1)) && IsWindowEnabled(Real(Sample->Command1)));
    const RECT text = PlaceOf(Sample->Text1);
    EXPECT_EQ(text.left, PixelsOf(1650, dots));
    EXPECT_EQ(text.top, PixelsOf(300, dots) + PixelsOf(300, dots));
    EXPECT_EQ(GetParent(Real(Sample->Text1)), Real(Sample->Frame1));
    EXPECT_EQ(Machine.Windows.RealOf(*Sample, Sample->Line1), nullptr);
    EXPECT_EQ(StateImageOf(1), 0U);
    EXPECT_EQ(StateImageOf(2), 1U);
    EXPECT_EQ(StateImageOf(3), 2U);
}

TEST_F(Win32WindowsTest, ShowsDataAsPlainTextEverywhere) {
    Sample->Label1.Caption = Markup;
    Sample->Frame1.Caption = Markup;
    Sample->Title = Markup;
    Sample->Text1.MaxLength = 0;
    Sample->Text1.Text = Markup;
    Sample->Grid1.SetCellText(1, 1, Markup);
    Sample->Grid1.SetCellText(1, 3, std::string(5000, 'x'));
    ShowSample();
    const std::wstring shown = L"<b>R&D</b> &x";
    EXPECT_EQ(TextOf(Real(Sample->Label1)), shown);
    EXPECT_NE(GetWindowLongW(Real(Sample->Label1), GWL_STYLE) & SS_NOPREFIX, 0);
    EXPECT_EQ(TextOf(Real(Sample->Frame1)), L"<b>R&&D</b> &&x");
    EXPECT_EQ(TextOf(Real(Sample->Text1)), shown);
    EXPECT_EQ(TextOf(WindowOf(Sample->Handle())), shown);
    EXPECT_EQ(CellText(0, 0), shown);
    EXPECT_EQ(CellText(0, 1).substr(0, 50), std::wstring(50, L'x'));
}

TEST_F(Win32WindowsTest, RaisesWhatTheUserDoes) {
    ShowSample();
    SampleWindow& window = *Sample;
    for (const Control* control : {static_cast<Control*>(&window.Command2), static_cast<Control*>(&window.Check1),
                                   static_cast<Control*>(&window.Option2)}) {
        Click(Real(*control));
        Pump();
    }
    Click(WindowOf(window.Handle()), 20, 45); // Label2, which lets the mouse through
    Pump();
    EXPECT_EQ(window.Log, (Log{"Command2", "Check1", "Option2", "Label2"}));
    EXPECT_EQ(window.Check1.Value, 1);
    EXPECT_TRUE(window.Option2.Value && !window.Option1.Value);
    Sync();
    EXPECT_EQ(SendMessageW(Real(window.Check1), BM_GETCHECK, 0, 0), BST_CHECKED);
    EXPECT_EQ(SendMessageW(Real(window.Option1), BM_GETCHECK, 0, 0), BST_UNCHECKED);

    SetFocus(Real(window.Text1));
    for (const WPARAM letter : {L'1', L'2', L'3'})
        PostMessageW(Real(window.Text1), WM_CHAR, letter, 1);
    Pump();
    EXPECT_EQ(window.Text1.Text, "12");
    window.Text1.SelectAll();
    Sync();
    PostMessageW(Real(window.Text1), WM_CHAR, L'9', 1);
    Pump();
    EXPECT_EQ(window.Text1.Text, "9");
}

TEST_F(Win32WindowsTest, TakesTheKeyboard) {
    ShowSample();
    SampleWindow& window = *Sample;
    Log order;
    for (int step = 0; step < 7; ++step) {
        order.push_back(Focused());
        Press(VK_TAB);
    }
    EXPECT_EQ(order, (Log{"Text1", "Command1", "Command2", "Grid1", "Tree1", "Check1", "Option1"}));
    EXPECT_EQ(Focused(), "Text1") << "of the option buttons only the chosen one is a stop";

    Press(VK_RETURN); // the default button
    SetFocus(Real(window.Command2));
    Press(VK_RETURN);
    PostMessageW(GetFocus(), WM_KEYDOWN, VK_RETURN, 1 | 1 << 30); // held down
    PostMessageW(GetFocus(), WM_SYSCHAR, L'o', 1 | 1 << 29);      // Alt+O
    Press(VK_ESCAPE);
    EXPECT_EQ(window.Log, (Log{"Command1", "Command2", "Command1"}));
    EXPECT_EQ(Focused(), "Command1");

    window.Log.clear();
    SetFocus(Real(window.Option1));
    Press(VK_DOWN);
    EXPECT_EQ(Focused(), "Option2");
    Press(VK_RIGHT);
    EXPECT_EQ(window.Log, (Log{"Option2", "Option1"}));
    EXPECT_TRUE(window.Option1.Value && !window.Option2.Value);

    window.Log.clear();
    SetFocus(Real(window.Grid1));
    Press(VK_DOWN);
    const int selected = window.Grid1.SelectedRow;
    Press(VK_DOWN);
    EXPECT_EQ(window.Grid1.SelectedRow, selected + 1);
    Press(VK_APPS);
    EXPECT_EQ(window.Log, Log{"Button 2"});
}

TEST_F(Win32WindowsTest, FocusLeavesWhatCanNotBeReached) {
    ShowSample();
    SampleWindow& window = *Sample;
    window.SetFocus(window.Tree1);
    Sync();
    EXPECT_EQ(Focused(), "Tree1");
    window.Frame2.Visible = true; // lies over the tree
    Sync();
    EXPECT_EQ(Focused(), "Check1");
    window.Check1.Enabled = false;
    Sync();
    EXPECT_EQ(Focused(), "Option1");
    Click(Real(window.Frame2), 20, 20);
    Pump();
    EXPECT_EQ(window.Tree1.NodeCheck(2), 0) << "a frame lets no click through";
}

TEST_F(Win32WindowsTest, TreeTellsChecksAndKeepsItsHeadingBare) {
    ShowSample();
    SampleWindow& window = *Sample;
    const HWND tree = Real(window.Tree1);
    SetFocus(tree);
    for (const int index : {2, 1, 3}) {
        TreeView_SelectItem(tree, NodeAt(index));
        Press(VK_SPACE);
    }
    EXPECT_EQ(window.Log, (Log{"Check 2 1 1", "Check 3 0 0"})); // the field first, then the handler
    EXPECT_EQ(StateImageOf(1), 0U);
    window.Tree1.SetNodeCheck(3, 1);
    Sync();
    EXPECT_EQ(StateImageOf(3), 2U);
    EXPECT_EQ(window.Log.size(), 2U);
}

TEST_F(Win32WindowsTest, GridKeepsTheSelectionWithItsRow) {
    ShowSample();
    SampleWindow& window = *Sample;
    const HWND grid = Real(window.Grid1);
    const auto selected = [&]() -> std::wstring {
        Sync();
        const int row = ListView_GetNextItem(grid, -1, LVNI_SELECTED);
        return row < 0 ? L"" : CellText(row, 0);
    };
    RECT row;
    ListView_GetItemRect(grid, 0, &row, LVIR_LABEL);
    Click(grid, row.left + 5, row.top + 5);
    Sync();
    EXPECT_EQ(window.Grid1.SelectedRow, 1);
    ListView_GetItemRect(grid, 2, &row, LVIR_LABEL);
    Click(grid, row.left + 5, row.top + 5, WM_RBUTTONDOWN);
    Pump();
    EXPECT_EQ(window.Log, (Log{"Button 1", "Button 2"}));
    EXPECT_EQ(selected(), L"c") << "the right button selects nothing";

    window.Grid1.Sort(1);
    EXPECT_EQ(selected(), L"c");
    EXPECT_EQ(window.Grid1.SelectedRow, 3);
    window.Grid1.RemoveRow(1);
    EXPECT_EQ(selected(), L"c");
    EXPECT_EQ(ListView_GetItemCount(grid), 2);
    window.Grid1.RemoveRow(2);
    EXPECT_EQ(selected(), L"");
    EXPECT_EQ(window.Grid1.SelectedRow, 0);

    NMLISTVIEW header = {};
    header.hdr = {grid, static_cast<UINT_PTR>(GetDlgCtrlID(grid)), static_cast<UINT>(LVN_COLUMNCLICK)};
    header.iSubItem = 1;
    SendMessageW(GetParent(grid), WM_NOTIFY, header.hdr.idFrom, reinterpret_cast<LPARAM>(&header));
    EXPECT_EQ(window.Log.back(), "Header 3") << "hidden columns count";
}

TEST_F(Win32WindowsTest, GridFollowsLettersAndKeepsItsSelectionBelowTheLastRow) {
    ShowSample();
    SampleWindow& window = *Sample;
    const HWND grid = Real(window.Grid1);
    SetFocus(grid);
    window.Grid1.SelectedRow = 1;
    Sync();
    for (const auto& [letter, row] : {std::pair('B', 2), std::pair('z', 2)}) {
        PostMessageW(grid, WM_CHAR, static_cast<WPARAM>(letter), 1);
        Pump();
        EXPECT_EQ(window.Grid1.SelectedRow, row) << letter;
    }
    RECT row;
    ListView_GetItemRect(grid, 2, &row, LVIR_BOUNDS);
    Click(grid, row.left + 5, row.bottom + 10);
    Pump();
    EXPECT_EQ(window.Grid1.SelectedRow, 2);
}

// A screen reader changes the item, without a click or a key.
TEST_F(Win32WindowsTest, TreeSeesATickThatNoClickHasMade) {
    ShowSample();
    const HWND tree = Real(Sample->Tree1);
    for (const int index : {1, 2}) {
        TreeView_SetItemState(tree, NodeAt(index), INDEXTOSTATEIMAGEMASK(2), TVIS_STATEIMAGEMASK);
        NMTVITEMCHANGE change = {}; // Wine doesn't send it
        change.hdr = {tree, static_cast<UINT_PTR>(GetDlgCtrlID(tree)), static_cast<UINT>(TVN_ITEMCHANGEDW)};
        change.lParam = index;
        SendMessageW(GetParent(tree), WM_NOTIFY, change.hdr.idFrom, reinterpret_cast<LPARAM>(&change));
    }
    Pump();
    EXPECT_EQ(Sample->Log, (Log{"Check 2 1 1"}));
    EXPECT_EQ(StateImageOf(1), 0U) << "a heading has no box";
}

// Themed buttons have their parent paint behind them.
TEST_F(Win32WindowsTest, PaintsItsGroundWhereItIsAsked) {
    Sample->BackColor = Color::Rgb(1, 2, 3);
    Sample->Frame1.BackColor = Color::Rgb(4, 5, 6);
    ShowSample();
    const HDC screen = GetDC(nullptr);
    const HDC surface = CreateCompatibleDC(screen);
    const HBITMAP bitmap = CreateCompatibleBitmap(screen, 100, 100);
    SelectObject(surface, bitmap);
    for (const auto& [asked, color] :
         {std::pair(WindowOf(Sample->Handle()), RGB(1, 2, 3)), std::pair(Real(Sample->Frame1), RGB(4, 5, 6))})
        for (const UINT message : {WM_ERASEBKGND, WM_PRINTCLIENT}) {
            PatBlt(surface, 0, 0, 100, 100, WHITENESS);
            SendMessageW(asked, message, reinterpret_cast<WPARAM>(surface), PRF_CLIENT);
            EXPECT_EQ(GetPixel(surface, 30, 30), color) << message;
        }
    DeleteDC(surface);
    DeleteObject(bitmap);
    ReleaseDC(nullptr, screen);
}

TEST_F(Win32WindowsTest, FollowsTheScaleOfItsMonitor) {
    Sample->Label1.ToolTip = "tip";
    ShowSample();
    const HWND form = WindowOf(Sample->Handle());
    const int dots = DotsOf(form);
    const RECT text = PlaceOf(Sample->Text1);
    RECT place;
    GetWindowRect(form, &place);
    SendMessageW(form, WM_DPICHANGED, MAKEWPARAM(dots * 2, dots * 2), reinterpret_cast<LPARAM>(&place));
    EXPECT_EQ(PlaceOf(Sample->Text1).left, text.left * 2);
    LOGFONTW font;
    GetObjectW(reinterpret_cast<HFONT>(SendMessageW(Real(Sample->Label1), WM_GETFONT, 0, 0)), sizeof font, &font);
    EXPECT_EQ(font.lfHeight, -22);
    EXPECT_EQ(ListView_GetColumnWidth(Real(Sample->Grid1), 0), 200);
    int width = 0;
    int height = 0;
    ImageList_GetIconSize(TreeView_GetImageList(Real(Sample->Tree1), TVSIL_STATE), &width, &height);
    EXPECT_EQ(height, 32);
    TTTOOLINFOW tool = {};
    tool.cbSize = sizeof tool;
    EnumThreadWindows(
        GetCurrentThreadId(),
        [](HWND found, LPARAM info) { return SendMessageW(found, TTM_ENUMTOOLSW, 0, info) == 0 ? TRUE : FALSE; },
        reinterpret_cast<LPARAM>(&tool));
    EXPECT_EQ(tool.rect.right, PixelsOf(1500, dots) * 2);
}

TEST_F(Win32WindowsTest, FollowsTheColoursOfTheDesktop) {
    ShowSample();
    int role = COLOR_BTNTEXT;
    const COLORREF former = GetSysColor(role);
    COLORREF color = RGB(1, 2, 3);
    SetSysColors(1, &role, &color);
    SendMessageW(WindowOf(Sample->Handle()), WM_SYSCOLORCHANGE, 0, 0);
    EXPECT_EQ(TreeView_GetTextColor(Real(Sample->Tree1)), color);
    color = former;
    SetSysColors(1, &role, &color);
}

// Any program may send these.
TEST_F(Win32WindowsTest, TrustsNoWindowThatIsNotItsOwn) {
    ShowSample();
    const HWND form = WindowOf(Sample->Handle());
    const HWND other =
        CreateWindowExW(0, L"STATIC", L"other", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
    SetWindowLongPtrW(other, GWLP_USERDATA, 1);
    for (const UINT message : {UINT{WM_COMMAND}, UINT{WM_CTLCOLORBTN}, UINT{WM_CTLCOLORSTATIC}})
        SendMessageW(form, message, 0, reinterpret_cast<LPARAM>(other));
    SendMessageW(form, WM_APP, reinterpret_cast<WPARAM>(other), 1);
    for (const LPARAM what : {LPARAM{-1}, LPARAM{0}, LPARAM{4}, LPARAM{1} << 40})
        SendMessageW(form, WM_APP, reinterpret_cast<WPARAM>(Real(Sample->Tree1)), what);
    DestroyWindow(other);
    EXPECT_EQ(Sample->Log, Log{});
}

TEST_F(Win32WindowsTest, WindowsLeaveNothingBehind) {
    Sample->Picture1.Picture = "side.jpg";
    Sample->Label1.ToolTip = "tip";
    std::vector<DWORD> first;
    for (int round = 0; round <= 100; ++round) {
        Sample->Picture1.Picture = "side.jpg";
        Sample->Label1.ToolTip = "tip";
        Sample->Icon = "tarnwick.ico";
        Sample.Show();
        Pump();
        Sample.Unload();
        Pump();
        DWORD handles = 0;
        GetProcessHandleCount(GetCurrentProcess(), &handles);
        const std::vector<DWORD> counts = {GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS),
                                           GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS), handles};
        if (round == 10)
            first = counts;
        if (round == 100) {
            EXPECT_EQ(counts, first);
        }
    }
}

TEST_F(Win32WindowsTest, AMillionRowsAreNoMoreWorkThanAFew) {
    for (int i = 0; i < 1000000; ++i)
        Sample->Grid1.AddRow();
    Sample->Grid1.SetCellText(1000003, 1, "last");
    ShowSample();
    EXPECT_EQ(ListView_GetItemCount(Real(Sample->Grid1)), 1000003);
    EXPECT_EQ(CellText(1000002, 0), L"last");
}

TEST_F(Win32WindowsTest, WritingFieldsIsNoInput) {
    ShowSample();
    SampleWindow& window = *Sample;
    window.Check1.Value = 1;
    window.Option1.Value = false;
    window.Option2.Value = true;
    window.Text1.Text = "12";
    window.Tree1.SetNodeCheck(2, 1);
    window.Grid1.SelectedRow = 2;
    Sync();
    EXPECT_EQ(SendMessageW(Real(window.Check1), BM_GETCHECK, 0, 0), BST_CHECKED);
    EXPECT_EQ(SendMessageW(Real(window.Option2), BM_GETCHECK, 0, 0), BST_CHECKED);
    EXPECT_EQ(TextOf(Real(window.Text1)), L"12");
    EXPECT_EQ(StateImageOf(2), 2U);
    EXPECT_EQ(ListView_GetNextItem(Real(window.Grid1), -1, LVNI_SELECTED), 1);
    EXPECT_EQ(window.Log, Log{});
}

TEST_F(Win32WindowsTest, InputMeetsTheModelAsItIsNow) {
    ShowSample();
    Sample->Command1.Enabled = false; // not on the screen yet
    SetFocus(Real(Sample->Text1));
    Press(VK_RETURN);
    Click(Real(Sample->Command1));
    Machine.Windows.PumpEvents();
    EXPECT_EQ(Sample->Log, Log{});
}

TEST_F(Win32WindowsTest, UnloadsFromItsOwnHandlerAndByItsCloseBox) {
    ShowSample();
    const HWND form = WindowOf(Sample->Handle());
    Sample->Command1.Click = [this] { Sample.Unload(); };
    const HWND other = Real(Sample->Command2);
    Click(Real(Sample->Command1));
    Click(other);
    Pump();
    EXPECT_FALSE(Sample.IsLoaded());
    EXPECT_FALSE(IsWindowVisible(form));

    ShowSample();
    const HWND again = WindowOf(Sample->Handle());
    PostMessageW(again, WM_CLOSE, 0, 0);
    PostMessageW(again, WM_CLOSE, 0, 0);
    Pump();
    EXPECT_FALSE(Sample.IsLoaded());
    EXPECT_FALSE(IsWindow(again));

    Sample->Border = FrameStyle::None;
    ShowSample();
    PostMessageW(WindowOf(Sample->Handle()), WM_CLOSE, 0, 0);
    Pump();
    EXPECT_TRUE(Sample.IsLoaded()) << "no frame, no close box";
}

TEST_F(Win32WindowsTest, ModalWindowBlocksTheOthersUntilItIsUnloaded) {
    Log& log = Sample->Log;
    Sample->Command1.Click = [&] {
        Other.ShowModal();
        log.push_back(Other.IsLoaded() ? "loaded" : "gone");
    };
    ShowSample();
    Soon([&] {
        log.push_back(IsWindowEnabled(WindowOf(Sample->Handle())) ? "open" : "blocked");
        Other.Unload();
    });
    Click(Real(Sample->Command1));
    Pump();
    EXPECT_EQ(log, (Log{"blocked", "gone"}));
    EXPECT_TRUE(IsWindowEnabled(WindowOf(Sample->Handle())));
}

TEST_F(Win32WindowsTest, AnswersOfAQuestion) {
    ShowSample();
    for (const auto& [answer, wanted] : {std::pair(0, MessageAnswer::No), std::pair(IDYES, MessageAnswer::Yes)}) {
        std::wstring text;
        Soon([&, button = answer] {
            text = TextOf(GetDlgItem(Box(), 0xFFFF)); // MSGBOX_IDTEXT
            if (button != 0)
                PostMessageW(Box(), WM_COMMAND, static_cast<WPARAM>(button), 0);
            else
                Key(GetFocus(), VK_RETURN); // the default button
        });
        EXPECT_EQ(Machine.Windows.ShowMessage(Markup, "T", MessageIcon::Question, MessageButtons::YesNo), wanted);
        EXPECT_EQ(text, L"<b>R&D</b> &x");
        EXPECT_TRUE(IsWindowEnabled(WindowOf(Sample->Handle())));
    }
}

TEST_F(Win32WindowsTest, MenuRaisesTheChosenEntryAndNeverAGreyedOne) {
    ShowSample();
    Log log;
    MenuEntry first, line, greyed, last;
    first.Caption = Markup;
    line.Separator = true;
    greyed.Caption = "greyed";
    greyed.Enabled = false;
    last.Caption = "last";
    for (const auto& [entry, name] :
         {std::pair(&first, "first"), std::pair(&greyed, "greyed"), std::pair(&last, "last")})
        entry->Click = [&log, name = std::string(name)] { log.push_back(name); };
    Menu menu{"menu", "Menu", {&first, &line, &greyed, &last}};
    for (const WPARAM key : {VK_DOWN, VK_UP}) {
        Soon([&] {
            Key(WindowOf(Sample->Handle()), key);
            Key(WindowOf(Sample->Handle()), VK_RETURN);
        });
        PopUp(menu, *Sample);
    }
    EXPECT_EQ(log, (Log{"first", "last"}));
}

// A tick that opens a message box must not keep the other ticks, nor posted messages, waiting.
TEST_F(Win32WindowsTest, TicksAndMessagesComeInTheSystemsLoops) {
    static int messages;
    messages = 0;
    const PreviousProcedure own = Machine.Windows.InstallProcedure(
        Sample->Handle(), [](WindowHandle, std::uint32_t message, std::int32_t, std::int32_t) {
            messages += message == 1025 ? 1 : 0;
            return std::int32_t{0};
        });
    int ticks = 0;
    Sample->Timer1.Tick = [&] {
        ++ticks;
        PostMessageW(WindowOf(Sample->Handle()), 1025, 0, 0);
        if (ticks == 1)
            Machine.Windows.ShowMessage("box", "box", MessageIcon::Information, MessageButtons::Ok);
        else if (ticks == 4)
            PostMessageW(Box(), WM_COMMAND, IDOK, 0);
    };
    Sample->Timer1.SetInterval(20);
    Sample->Timer1.Enable();
    Machine.PumpUntil([&] { return ticks >= 4; });
    EXPECT_GE(messages, 3);
    Machine.Windows.RestoreProcedure(Sample->Handle(), own);
}

TEST_F(Win32WindowsTest, ProcedureSeesMessagesAndPassesThemOnWhole) {
    static PreviousProcedure own;
    own = Machine.Windows.InstallProcedure(
        Sample->Handle(), [](WindowHandle window, std::uint32_t message, std::int32_t first, std::int32_t second) {
            return services().Windows.CallProcedure(own, window, message, first, second);
        });
    ASSERT_NE(own, 0);
    const HWND form = WindowOf(Sample->Handle());
    const auto whole = std::make_unique<std::wstring>(L"a text behind a pointer"); // a pointer of 64 bits
    SetWindowTextW(form, whole->c_str());
    EXPECT_EQ(TextOf(form), *whole);
    Machine.Windows.RestoreProcedure(Sample->Handle(), own);
    Machine.Windows.RestoreProcedure(Sample->Handle(), own);
    EXPECT_EQ(TextOf(form), *whole);
}

TEST_F(Win32WindowsTest, WaitReturnsForATickAndShowsWhatHasChanged) {
    ShowSample();
    std::wstring shown;
    Sample->Timer1.Tick = [&] { shown = TextOf(Real(Sample->Label1)); };
    Sample->Timer1.SetInterval(50);
    Sample->Timer1.Enable();
    Sample->Label1.Caption = "new";
    while (shown.empty())
        Machine.Windows.WaitForEvents();
    EXPECT_EQ(shown, L"new");
}

TEST_F(Win32WindowsTest, EndLeavesEveryLoop) {
    Log& log = Sample->Log;
    Sample->Command1.Click = [&] {
        Other.ShowModal();
        log.push_back("modal");
        Machine.Windows.WaitForEvents(); // would sleep for ever
        log.push_back("wait");
    };
    ShowSample();
    const HWND form = WindowOf(Sample->Handle());
    Sample->Timer1.Tick = [&] {
        Sample->Timer1.Disable();
        Soon([&] { Machine.Windows.End(); });
        const MessageAnswer answer =
            Machine.Windows.ShowMessage("?", "?", MessageIcon::Question, MessageButtons::YesNo);
        log.push_back(answer == MessageAnswer::No ? "no" : "yes");
    };
    Sample->Timer1.SetInterval(50);
    Sample->Timer1.Enable();
    Click(Real(Sample->Command1));
    Machine.Windows.Run();
    EXPECT_EQ(log, (Log{"no", "modal", "wait"}));
    EXPECT_FALSE(IsWindowVisible(form));
    MSG quit;
    PeekMessageW(&quit, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE);
}

} // namespace
} // namespace tarnwick::test

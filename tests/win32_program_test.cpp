// The whole program on real windows, files, settings and connections, driven by mouse and keyboard.

#include "availability/Form4.h"
#include "duplicates/Form7.h"
#include "favorites/Favorites.h"
#include "report/Form5.h"
#include "shell/Form1.h"
#include "shell/Form3.h"
#include "shell/Form9.h"
#include "win32_support.h"

#include <commctrl.h>

#include <atomic>
#include <thread>

namespace tarnwick::test {
namespace {

// Answers each connection by the first piece of the request's path.
class Site {
public:
    Site() : listener_(Bound(listening_)), refusing_(Bound(closed_)) {
        listen(listener_, 16);
        thread_ = std::thread([this] { Serve(); });
    }
    ~Site() {
        ended_ = true;
        closesocket(listener_);
        closesocket(refusing_);
        thread_.join();
    }
    Site(const Site&) = delete;
    Site& operator=(const Site&) = delete;

    std::string Url(const std::string& path) const { return "http://127.0.0.1:" + std::to_string(listening_) + path; }
    std::string RefusingUrl() const { return "http://127.0.0.1:" + std::to_string(closed_) + "/"; }

private:
    static SOCKET Bound(int& port) {
        const SOCKET made = socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
        sockaddr_in address = {};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        int length = sizeof address;
        bind(made, reinterpret_cast<sockaddr*>(&address), length);
        getsockname(made, reinterpret_cast<sockaddr*>(&address), &length);
        port = ntohs(address.sin_port);
        return made;
    }

    void Serve() {
        std::vector<SOCKET> silent;
        while (!ended_) {
            const SOCKET visitor = accept(listener_, nullptr, nullptr);
            if (visitor == INVALID_SOCKET)
                break;
            char request[2000] = {};
            recv(visitor, request, sizeof request - 1, 0);
            const std::string_view head = request;
            if (head.find(" /slow") != std::string_view::npos) {
                silent.push_back(visitor);
                continue;
            }
            const std::string status = head.find(" /missing") == std::string_view::npos ? "200 OK" : "404 Not Found";
            const std::string reply = "HTTP/1.0 " + status + "\r\n\r\n";
            send(visitor, reply.data(), static_cast<int>(reply.size()), 0);
            closesocket(visitor);
        }
        for (const SOCKET visitor : silent)
            closesocket(visitor);
    }

    struct Network {
        Network() {
            WSADATA data;
            WSAStartup(0x0101, &data);
        }
        ~Network() { WSACleanup(); }
    } network_;
    int listening_ = 0;
    int closed_ = 0;
    const SOCKET listener_;
    const SOCKET refusing_;
    std::atomic<bool> ended_ = false;
    std::thread thread_;
};

class FilesElsewhere : public Win32Files {
public:
    explicit FilesElsewhere(std::string root) : root_(std::move(root)) {}
    std::string FavoritesFolder() override { return root_; }

private:
    const std::string root_;
};

class Win32ProgramTest : public ::testing::Test {
protected:
    Win32ProgramTest() {
        Favorites::CurrentLink = {};
        Favorites::LinkFinished = false;
        Favorites::RunCompleted = false;
        Favorites::EndOnMainClose = false;
        Favorites::SplashDone = false;
    }
    ~Win32ProgramTest() override {
        WindowSlot::DropAll();
        RegDeleteTreeA(HKEY_CURRENT_USER, root_.c_str());
        MSG quit;
        PeekMessageW(&quit, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE);
    }

    void AddFavorite(const std::string& name, const std::string& url) {
        home_.MakeFile("Favorites\\" + name + ".url", "[InternetShortcut]\r\nURL=" + url + "\r\n");
    }
    bool HasFavorite(const std::string& name) { return home_.Has("Favorites\\" + name + ".url"); }

    void PumpUntil(const std::function<bool()>& done) {
        const std::int64_t end = clock_.Now() + 20000;
        while (!done() && clock_.Now() < end) {
            windows_.PumpEvents();
            Sleep(1);
        }
        ASSERT_TRUE(done());
    }

    // From the start of the process to the main window.
    void Start() {
        Form9.Show();
        windows_.PumpEvents();
        EXPECT_TRUE(IsWindowVisible(WindowOf(Form9->Handle())));
        PumpUntil([] { return Form3.IsLoaded() && Form3->IsVisible(); });
        EXPECT_FALSE(Form9.IsLoaded());
    }

    HWND Real(const Window& window, const Control& control) { return windows_.RealOf(window, control); }
    void Press(const Window& window, const Control& control, const std::function<bool()>& done) {
        ASSERT_NE(Real(window, control), nullptr) << window.Name << " " << control.Name;
        Click(Real(window, control));
        PumpUntil(done);
    }

    // Selects the row and takes an entry of its menu, so many steps down.
    void TakeEntry(const Window& window, const GridControl& grid, int row, int steps) {
        const HWND real = Real(window, grid);
        ListView_EnsureVisible(real, row - 1, FALSE);
        RECT place;
        ListView_GetItemRect(real, row - 1, &place, LVIR_LABEL);
        Click(real, place.left + 4, place.top + 4);
        PumpUntil([&] { return grid.SelectedRow == row; });
        Soon([form = WindowOf(window.Handle()), steps] {
            for (int step = 0; step < steps; ++step)
                Key(form, VK_DOWN);
            Key(form, VK_RETURN);
        });
        const int rows = grid.RowCount();
        Click(real, 4, place.top + 4, WM_RBUTTONDOWN);
        PumpUntil([&] { return grid.RowCount() < rows; });
    }

    TemporaryFolder home_;
    const std::string root_ = "Software\\Tarnwick tests\\program " + std::to_string(GetCurrentProcessId());
    SteadyClock clock_;
    FilesElsewhere files_{home_ / "Favorites"};
    Win32Settings settings_{root_};
    Win32Sockets sockets_;
    Win32Windows windows_{clock_};
    RecordingShell shell_;
    Win32Text text_;
    ServicesInUse inUse_{{files_, settings_, sockets_, windows_, clock_, shell_, text_}};
};

TEST_F(Win32ProgramTest, FromTheSplashToARemovedFavorite) {
    const Site site;
    AddFavorite("good", site.Url("/good"));
    AddFavorite("Привет", site.Url("/missing/a"));
    AddFavorite("Sub\\R&D", site.Url("/missing/b"));
    AddFavorite("Sub\\refused", site.RefusingUrl());
    AddFavorite("Sub\\silent", site.Url("/slow"));
    for (const char* key : {"Catch404", "CatchConnerr", "CatchTimedout", "Timeout"})
        settings_.Write("Tarnwick", "Preferences", {{key, "1"}});
    Start();
    Press(*Form3, Form3->Command1, [] { return Form4->IsVisible() && !Form3.IsLoaded(); });
    Press(*Form4, Form4->Command1, [] { return Form4->Command1.Caption == "&Start"; });
    const HWND tree = Real(*Form4, Form4->Tree1);
    SetFocus(tree);
    TreeView_SelectItem(tree, TreeView_GetChild(tree, TreeView_GetRoot(tree)));
    Key(tree, VK_SPACE);
    PumpUntil([] { return Form4->Tree1.NodeCheck(2) == 1; });
    Press(*Form4, Form4->Command1, [] { return Form4->Command1.Caption == "&Report"; });
    EXPECT_NE(TextOf(Real(*Form4, Form4->Label11)).find(L"4 bad Favorite(s) found at this time."), std::wstring::npos);
    Press(*Form4, Form4->Command1, [] { return Form5->IsVisible() && !Form4->IsVisible(); });

    std::vector<std::string> problems;
    for (int row = 1; row <= Form5->Grid1.RowCount(); ++row)
        problems.push_back(Form5->Grid1.CellText(row, 1) + ": " + Form5->Grid1.CellText(row, 4));
    EXPECT_EQ(problems, (std::vector<std::string>{"Привет: Not found (404)", "R&D: Not found (404)",
                                                  "refused: Connection error", "silent: Timed out"}));
    AnswerBox(IDYES);
    TakeEntry(*Form5, Form5->Grid1, 2, 2); // "Remove it"
    EXPECT_FALSE(HasFavorite("Sub\\R&D"));
    TakeEntry(*Form5, Form5->Grid1, 1, 3); // "Hide it"
    for (const char* name : {"good", "Привет", "Sub\\refused", "Sub\\silent"})
        EXPECT_TRUE(HasFavorite(name)) << name;
    Press(*Form5, Form5->Command1, [] { return Form3.IsLoaded() && Form3->IsVisible() && !Form5.IsLoaded(); });
}

TEST_F(Win32ProgramTest, RemovesOneOfAPair) {
    AddFavorite("one", "http://a.example/");
    AddFavorite("Sub\\two", "HTTP://A.example/");
    AddFavorite("Sub\\three", "http://b.example/");
    Start();
    Press(*Form3, Form3->Option2, [] { return Form3->Option2.Value; });
    Press(*Form3, Form3->Command1, [] { return Form7.IsLoaded() && Form7->IsVisible(); });
    Press(*Form7, Form7->Command1, [] { return Form7->Command1.Caption == "&Finish"; });
    EXPECT_EQ(Form7->Grid1.RowCount(), 1);
    AnswerBox(IDYES);
    TakeEntry(*Form7, Form7->Grid1, 1, 3); // "Remove Link 2"
    EXPECT_FALSE(HasFavorite("Sub\\two"));
    EXPECT_TRUE(HasFavorite("one") && HasFavorite("Sub\\three"));
    Press(*Form7, Form7->Command1, [] { return Form3.IsLoaded() && Form3->IsVisible(); });
}

TEST_F(Win32ProgramTest, KeepsTheOptionsAndEndsWithItsMainWindow) {
    Start();
    int opened = 0;
    Soon([&] {
        ++opened;
        PostMessageW(GetFocus(), WM_CHAR, L'7', 1); // in place of the selected time-out
        Click(Real(*Form1, Form1->Check3));
        Key(Real(*Form1, Form1->Text1), VK_RETURN);
    });
    Press(*Form3, Form3->Command2, [&] { return opened == 1 && !Form1.IsLoaded(); });
    EXPECT_EQ(settings_.Read("Tarnwick", "Preferences", "Timeout", ""), "7");
    std::wstring shown;
    Soon([&] {
        ++opened;
        shown = TextOf(Real(*Form1, Form1->Text1));
        EXPECT_EQ(Form1->Check3.Value, 1);
        PostMessageW(WindowOf(Form1->Handle()), WM_CLOSE, 0, 0);
    });
    Press(*Form3, Form3->Command2, [&] { return opened == 2 && !Form1.IsLoaded(); });
    EXPECT_EQ(shown, L"7");

    PostMessageW(WindowOf(Form3->Handle()), WM_CLOSE, 0, 0);
    windows_.Run();
    EXPECT_FALSE(Form3.IsLoaded());
}

} // namespace
} // namespace tarnwick::test

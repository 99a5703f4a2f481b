#include "Driver.h"

#include "shell/Number.h"

namespace tarnwick {
namespace {

using ShellTest = Program;

TEST(NumberTest, ConvertsDecimalText) {
    const std::pair<const char*, std::int32_t> numbers[] = {{"0", 0},
                                                            {" 5", 5},
                                                            {"5  ", 5},
                                                            {"-1", -1},
                                                            {"+7", 7},
                                                            {"2.5", 2},
                                                            {"3.5", 4},
                                                            {"2.51", 3},
                                                            {"-2.5", -2},
                                                            {".5", 0},
                                                            {"1.5000", 2},
                                                            {"2.50001", 3},
                                                            {"5.", 5},
                                                            {"0000000000012", 12},
                                                            {"2147483647", 2147483647},
                                                            {"2147483647.4", 2147483647},
                                                            {"-2147483648", -2147483647 - 1},
                                                            {"-2147483648.5", -2147483647 - 1}};
    for (const auto& [text, number] : numbers)
        EXPECT_EQ(NumberFromText(text), number) << "\"" << text << "\"";
    for (const char* text : {"2147483647.5", "2147483648", "99999999999999999999999", "", "  ", "-", ".", "12abc",
                             "1 2", "0x10", "1e3", "--1"})
        EXPECT_EQ(NumberFromText(text), std::nullopt) << "\"" << text << "\"";
}

TEST_F(ShellTest, SplashLeadsToTheMainWindow) {
    Form9.Show();
    EXPECT_TRUE(Form9->TopMost);
    EXPECT_EQ(Form9->Label8.Caption, "Current release: v.3.00.0028");
    Click(Form9->Label10); // a click neither closes nor shortens it
    machine.Clock.Advance(1999);
    machine.Windows.PumpEvents();
    EXPECT_TRUE(Form9.IsLoaded());
    EXPECT_FALSE(Form4.IsLoaded());
    machine.Clock.Advance(1);
    machine.Windows.PumpEvents();
    EXPECT_FALSE(Form9.IsLoaded());
    EXPECT_TRUE(tarnwick::Favorites::SplashDone);
    ASSERT_TRUE(Form3.IsLoaded() && Form3->IsVisible());
    EXPECT_EQ(Form3->Edge, 5);
    EXPECT_EQ(Form3->Picture1.Picture, Form2->Picture1.Picture);
    EXPECT_TRUE(tarnwick::Favorites::EndOnMainClose);
    EXPECT_FALSE(Form2->IsVisible() || Form4->IsVisible() || Form5->IsVisible());
}

TEST_F(ShellTest, AboutClosesOnAClickAndReturnsToItsCaller) {
    StartProgram();
    Choose(Form3->Option2);
    machine.Windows.InPass(1, [&] {
        EXPECT_FALSE(Form9->Timer1.Enabled());
        EXPECT_FALSE(Form9->TopMost);
        Click(Form9->Label10);
    });
    Click(Form3->Command3);
    EXPECT_FALSE(Form9.IsLoaded());
    EXPECT_TRUE(Form3->Option2.Value);

    Choose(Form3->Option1);
    OpenTree();
    machine.Windows.InPass(1, [&] { Click(Form9->Label10); });
    Click(Form4->Command2);
    EXPECT_TRUE(Form4->IsVisible());
    EXPECT_FALSE(Form3.IsLoaded());
    EXPECT_EQ(Form4->Command1.Caption, "&Start");
}

TEST_F(ShellTest, EveryReturnSelectsTheFirstChoice) {
    StartProgram();
    Choose(Form3->Option2);
    Click(Form3->Command1);
    EXPECT_FALSE(Form3.IsLoaded());
    EXPECT_FALSE(tarnwick::Favorites::EndOnMainClose);
    Form7->Unload();
    ASSERT_TRUE(Form3.IsLoaded() && Form3->IsVisible());
    EXPECT_TRUE(Form3->Option1.Value);
    EXPECT_TRUE(tarnwick::Favorites::EndOnMainClose);
    EXPECT_FALSE(machine.Windows.HasEnded());
}

TEST_F(ShellTest, SettingsSurviveNonsense) {
    machine.Settings.Values = {{"Timeout", "soon"}, {"Catch404", ""}, {"ProxyPort", "abc"}, {"Keep-alive", "-1"}};
    LoadPreferences();
    EXPECT_EQ(Preferences.Timeout, 10);
    EXPECT_EQ(Preferences.Catch404, 1);
    EXPECT_EQ(Preferences.ProxyPort, "abc");
    EXPECT_EQ(Preferences.KeepAlive, -1);
    EXPECT_TRUE(machine.Settings.Written.empty());
    EXPECT_EQ(machine.Settings.Places, std::set<std::string>{"Tarnwick/Preferences"});
}

class OptionsTest : public Program {
protected:
    // Shows the Options window and acts as its user; whatever is still open afterwards is closed by its close box.
    void InOptions(const std::function<void()>& user) {
        machine.Windows.InPass(1, [this, user] {
            user();
            Form1.Unload();
        });
        Click(Form3->Command2);
    }

    void Toggle(CheckBox& box) {
        box.Value = 1 - box.Value;
        Click(box);
    }

    void SetUp() override { StartProgram(); }
};

TEST_F(OptionsTest, ShowsWhatIsStored) {
    InOptions([&] {
        EXPECT_EQ(Form1->Text1.Text, "10");
        EXPECT_EQ(Form1->Text3.Text, "8080");
        EXPECT_EQ(Form1->Text1.SelectRevision, 1U);
        for (const Control* control : Form1->Controls)
            if (control->Kind == ControlKind::CheckBox) {
                EXPECT_EQ(static_cast<const CheckBox*>(control)->Value, control == &Form1->Check5 ? 1 : 0);
            }
        EXPECT_FALSE(Form1->Text2.Enabled || Form1->Text3.Enabled);
        EXPECT_EQ(Form1->Text2.BackColor, Color::Of(ColorRole::ButtonFace));
        Toggle(Form1->Check2);
        EXPECT_TRUE(Form1->Text2.Enabled && Form1->Text3.Enabled);
        EXPECT_EQ(Form1->Text3.BackColor, Color::Of(ColorRole::WindowBackground));
        EXPECT_EQ(Form1->Text3.Text, "8080");
    });
    machine.Settings.Values = {{"UseProxy", "1"}, {"CatchUnabled", "1"}};
    InOptions([&] {
        EXPECT_TRUE(Form1->Text2.Enabled);
        EXPECT_TRUE(machine.Windows.Messages.empty()) << "loading a ticked box warns nobody";
    });
}

TEST_F(OptionsTest, ConfirmingStoresEveryKeyAsTyped) {
    InOptions([&] {
        Form1->Text1.Text = " 5";
        Form1->Text3.Text = "abc"; // the proxy is off: not tested, and kept
        Click(Form1->Command1);
        EXPECT_FALSE(Form1.IsLoaded());
    });
    EXPECT_EQ(machine.Settings.Written,
              (Strings{"Timeout", "Keep-alive", "UseProxy", "ProxyAddress", "ProxyPort", "Catch401", "Catch403",
                       "Catch404", "CatchUnabled", "CatchConnerr", "CatchTimedout"}));
    EXPECT_EQ(machine.Settings.Values["Timeout"], " 5");
    EXPECT_EQ(Preferences.Timeout, 5);
    InOptions([&] {
        EXPECT_EQ(Form1->Text1.Text, "5");
        EXPECT_EQ(Form1->Text3.Text, "abc");
    });
}

TEST_F(OptionsTest, EachTestRefusesAndStoresNothing) {
    struct Case {
        const char *timeout, *port;
        int proxy, category;
        const char *title, *message;
        TextBox Form1Window::*focus;
    };
    const Case cases[] = {
        {"", "abc", 1, 0, "Belvane Tarnwick", "Timeout value must be numeric", &Form1Window::Text1},
        {"5", "abc", 1, 0, "Belvane Tarnwick", "Proxy Port value must be numeric", &Form1Window::Text3},
        {"5", "99999999999", 1, 1, "Belvane Tarnwick", "Proxy Port value must be numeric", &Form1Window::Text3},
        {"5", "abc", 0, 0, "Tarnwick", "You must to choose at least one category to catch.", nullptr},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.message);
        machine.Windows.Messages.clear();
        InOptions([&] {
            Form1->Text1.Text = row.timeout;
            Form1->Text3.Text = row.port;
            Form1->Check2.Value = row.proxy;
            Form1->Check5.Value = row.category;
            TextBox* focus = row.focus == nullptr ? nullptr : &((*Form1).*row.focus);
            const unsigned selected = focus == nullptr ? 0 : focus->SelectRevision;
            Click(Form1->Command1);
            ASSERT_TRUE(Form1.IsLoaded());
            EXPECT_EQ(Form1->FocusRequest, focus);
            EXPECT_EQ(focus == nullptr ? 1 : focus->SelectRevision, selected + 1);
        });
        EXPECT_EQ(machine.Windows.Messages.size(), 1U);
        ExpectMessage(row.message, MessageIcon::Critical, row.title);
        EXPECT_TRUE(machine.Settings.Written.empty());
    }
}

TEST_F(OptionsTest, WarnsEachTimeARiskyCategoryIsTicked) {
    InOptions([&] {
        Toggle(Form1->Check8);
        Toggle(Form1->Check8);
        EXPECT_EQ(machine.Windows.Messages.size(), 1U);
        for (CheckBox* box : {&Form1->Check8, &Form1->Check6, &Form1->Check7, &Form1->Check3})
            Toggle(*box);
        EXPECT_EQ(Form1->Check8.Value, 1);
        Click(Form1->Command2);
    });
    ASSERT_EQ(machine.Windows.Messages.size(), 4U);
    EXPECT_EQ(machine.Windows.Messages[0],
              (HeadlessWindows::ShownMessage{
                  "WARNING!\r\nTimed out links not ever are broken links.\r\n"
                  "This can occur under different circunstances:\r\n"
                  "- Your internet connection is not correctly stabilished\r\n"
                  "- The computer is not connected to the internet\r\n"
                  "- The remote host is currently operating slow\r\n- A low timeout value is currently setted\r\n\r\n"
                  "Take care when remove Favorites in this category.",
                  "Tarnwick", MessageIcon::Information, MessageButtons::Ok}));
    EXPECT_TRUE(machine.Windows.Messages[2].Text.ends_with(
        "- The remote host is currently down\r\n\r\nTake care when remove Favorites in this category."));
    EXPECT_TRUE(machine.Windows.Messages[3].Text.starts_with("WARNING!\r\nLinks under connection errors not ever"));
    EXPECT_TRUE(machine.Settings.Written.empty()) << "canceled";
}

TEST_F(OptionsTest, TheLinkUnderlinesAndOpensTheMakersSite) {
    InOptions([&] {
        Form1->Raise(Form1->Label4.MouseMove);
        EXPECT_TRUE(Form1->Label4.Font.Underline);
        for (const auto& leave : {Form1->MouseMove, Form1->Frame3.MouseMove, Form1->Command2.MouseMove}) {
            Form1->Raise(Form1->Label4.MouseMove);
            Form1->Raise(leave);
            EXPECT_FALSE(Form1->Label4.Font.Underline);
        }
        Click(Form1->Label4);
        EXPECT_TRUE(Form1.IsLoaded());
    });
    EXPECT_EQ(machine.Shell.Urls.size(), 1U);
}

} // namespace
} // namespace tarnwick

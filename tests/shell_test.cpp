#include "Driver.h"

#include "text/Number.h"

#include <optional>
#include <tuple>

namespace tarnwick {
namespace {

using ShellTest = Program;

TEST(NumberTest, ConvertsDecimalText) {
    const std::pair<std::optional<std::int32_t>, Strings> numbers[] = {
        {0, {"0", ".5", "-0"}},
        {5, {" 5", "5  ", "5.", "+5", "0000000000005"}},
        {2, {"2.5", "1.5000", "2.4999"}},
        {3, {"2.51", "2.50001"}},
        {4, {"3.5"}},
        {-2, {"-2.5"}},
        {2147483647, {"2147483647", "2147483647.4"}},
        {-2147483647 - 1, {"-2147483648", "-2147483648.5"}},
        {std::nullopt, {"2147483647.5", "2147483648", "99999999999999999999999", "", "  ", "-", "."}},
        {std::nullopt, {"12abc", "1 2", "0x10", "1e3", "--1"}}};
    for (const auto& [number, texts] : numbers)
        for (const std::string& text : texts)
            EXPECT_EQ(NumberFromText(text), number) << "\"" << text << "\"";
}

TEST_F(ShellTest, SplashLeadsToTheMainWindow) {
    Form9.Show();
    EXPECT_TRUE(Form9->TopMost);
    EXPECT_EQ(Form9->Label8.Caption, "Current release: v.3.00.0028");
    Click(Form9->Label10); // a click neither closes nor shortens it
    machine.Clock.Advance(1999);
    machine.Windows.PumpEvents();
    EXPECT_TRUE(Form9.IsLoaded() && !Form4.IsLoaded());
    machine.Clock.Advance(1);
    machine.Windows.PumpEvents();
    EXPECT_FALSE(Form9.IsLoaded());
    ASSERT_TRUE(Form3.IsLoaded() && Form3->IsVisible());
    EXPECT_TRUE(Form3->Edge == 5 && Form3->Label2[1].BackColor.Role == ColorRole::ButtonShadow);
    EXPECT_EQ(Form3->Label2[1].ForeColor.Role, ColorRole::HighlightText);
    EXPECT_EQ(Form3->Picture1.Picture, "side.jpg");
    EXPECT_TRUE(Form2.IsLoaded() && Form4.IsLoaded() && Form5.IsLoaded());
    EXPECT_FALSE(Form2->IsVisible() || Form4->IsVisible() || Form5->IsVisible());
}

TEST_F(ShellTest, AboutLeavesEverythingAndAReturnSelectsTheFirstChoice) {
    int seen = 0;
    const auto seeAbout = [&](CommandButton& button) {
        machine.Windows.InPass(1, [&] {
            EXPECT_FALSE(Form9->Timer1.Enabled() || Form9->TopMost);
            Click(Form9->Label10);
            ++seen;
        });
        Click(button);
        EXPECT_EQ(std::exchange(seen, 0), 1) << "no About window";
        EXPECT_FALSE(Form9.IsLoaded());
    };
    StartProgram();
    Click(Form3->Option2);
    seeAbout(Form3->Command3);
    machine.Settings.Values = {{"Timeout", "soon"}, {"Catch404", ""}, {"Keep-alive", "-1"}};
    Click(Form3->Command1);
    EXPECT_FALSE(Form3.IsLoaded());
    seeAbout(Form7->Command2);
    CloseBox(*Form7);
    ASSERT_TRUE(Form3.IsLoaded() && Form3->IsVisible());
    EXPECT_EQ(std::tuple(Preferences.Timeout, Preferences.Catch404, Preferences.KeepAlive), std::tuple(10, 1, -1));
    EXPECT_TRUE(Form3->Option1.Value);
    Form4->Label11.Caption = "of an earlier run";
    OpenTree();
    EXPECT_EQ(Form4->Label11.Caption, Form4Window::HelpText);
    seeAbout(Form4->Command2);
    EXPECT_EQ(Form4->Command1.Caption, "&Start");
    EXPECT_TRUE(Form4->IsVisible() && !Form3.IsLoaded());
    Form5.Show();
    seeAbout(Form5->Command2);
    EXPECT_FALSE(machine.Windows.HasEnded());
}

TEST_F(ShellTest, EachBoxHasAKeyOfItsOwnAndTheProxysFieldsFollowTheirs) {
    const std::pair<const char*, CheckBox Form1Window::*> keys[] = {
        {"Keep-alive", &Form1Window::Check1},   {"Catch401", &Form1Window::Check3},
        {"UseProxy", &Form1Window::Check2},     {"Catch403", &Form1Window::Check4},
        {"Catch404", &Form1Window::Check5},     {"CatchUnabled", &Form1Window::Check6},
        {"CatchConnerr", &Form1Window::Check7}, {"CatchTimedout", &Form1Window::Check8}};
    StartProgram();
    InOptions([] {
        EXPECT_EQ(Form1->Text1.Text + Form1->Text2.Text + Form1->Text3.Text, "10proxy.invalid8080");
        EXPECT_EQ(Form1->Text1.SelectRevision, 1U);
    });
    // Any two neighbours hold a category, without which nothing is stored.
    for (std::size_t first = 0; first < std::size(keys); ++first) {
        auto& stored = machine.Settings.Values;
        for (const auto& [key, box] : keys)
            stored[key] = "0";
        stored[keys[first].first] = stored[keys[(first + 1) % std::size(keys)].first] = "1";
        auto wanted = stored;
        InOptions([&] {
            for (const auto& [key, box] : keys)
                EXPECT_EQ(std::to_string((*Form1.*box).Value), wanted[key]) << key;
            const bool proxy = wanted["UseProxy"] == "1";
            for (const bool on : {proxy, !proxy}) {
                for (const TextBox* field : {&Form1->Text2, &Form1->Text3}) {
                    EXPECT_EQ(field->Enabled, on);
                    EXPECT_EQ(field->BackColor, Color::Of(on ? ColorRole::WindowBackground : ColorRole::ButtonFace));
                }
                Click(Form1->Check2);
            }
            wanted["Timeout"] = Form1->Text1.Text = " 5";
            wanted["ProxyAddress"] = Form1->Text2.Text = "a.example";
            // Of no matter while the proxy is off.
            wanted["ProxyPort"] = Form1->Text3.Text = proxy ? "3128" : "abc";
            Click(Form1->Command1);
            EXPECT_FALSE(Form1.IsLoaded());
        });
        EXPECT_EQ(stored, wanted);
        EXPECT_EQ(std::tuple(Preferences.Timeout, Preferences.ProxyAddress, Preferences.ProxyPort),
                  std::tuple(5, "a.example", wanted["ProxyPort"]));
    }
    EXPECT_EQ(machine.Settings.Places, std::set<std::string>{"Tarnwick/Preferences"});
    EXPECT_TRUE(machine.Windows.Messages.empty()) << "loading a ticked box warns nobody";
}

TEST_F(ShellTest, RefusesAndStoresNothing) {
    const std::tuple<const char*, const char*, int, int, std::string, TextBox Form1Window::*> cases[] = {
        {"", "abc", 1, 0, "Timeout value must be numeric", &Form1Window::Text1},
        {"5", "abc", 1, 0, "Proxy Port value must be numeric", &Form1Window::Text3},
        {"5", "99999999999", 1, 0, "Proxy Port value must be numeric", &Form1Window::Text3},
        {"5", "abc", 0, 0, "You must to choose at least one category to catch.", nullptr},
        {"5", "abc", 0, 1, "The options could not be stored.", nullptr}};
    StartProgram();
    for (const auto& [timeout, port, proxy, category, message, field] : cases) {
        SCOPED_TRACE(message);
        machine.Windows.Messages.clear();
        machine.Faults.Call = category == 0 ? "" : "Write";
        InOptions([&] {
            Form1->Text1.Text = timeout;
            Form1->Text3.Text = port;
            Form1->Check2.Value = proxy;
            Form1->Check5.Value = category;
            const TextBox* focus = field == nullptr ? nullptr : &((*Form1).*field);
            const unsigned selected = focus == nullptr ? 0 : focus->SelectRevision;
            Click(Form1->Command1);
            ASSERT_TRUE(Form1.IsLoaded());
            EXPECT_EQ(Form1->FocusRequest, focus);
            EXPECT_TRUE(focus == nullptr || focus->SelectRevision == selected + 1);
            Click(Form1->Command2);
            EXPECT_FALSE(Form1.IsLoaded());
        });
        EXPECT_EQ(machine.Windows.Messages.size(), 1U);
        ExpectMessage(message, MessageIcon::Critical, field == nullptr ? "Tarnwick" : "Belvane Tarnwick");
        EXPECT_TRUE(machine.Settings.Written.empty());
    }
}

TEST_F(ShellTest, WarnsEachTimeARiskyCategoryIsTicked) {
    const std::tuple<CheckBox Form1Window::*, std::string, std::string> cases[] = {
        {&Form1Window::Check6, "Unabled to connect links", "- The remote host is currently down\r\n"},
        {&Form1Window::Check7, "Links under connection errors", "- The protocol is invalid for Tarnwick\r\n"},
        {&Form1Window::Check8, "Timed out links",
         "- The remote host is currently operating slow\r\n- A low timeout value is currently setted\r\n"}};
    StartProgram();
    std::size_t warnings = 0;
    InOptions([&] {
        for (const auto& [box, about, causes] : cases)
            for (int time = 0; time < 2; ++time) {
                Click(*Form1.*box);
                ExpectMessage("WARNING!\r\n" + about +
                                  " not ever are broken links.\r\n"
                                  "This can occur under different circunstances:\r\n"
                                  "- Your internet connection is not correctly stabilished\r\n"
                                  "- The computer is not connected to the internet\r\n" +
                                  causes + "\r\nTake care when remove Favorites in this category.",
                              MessageIcon::Information);
                Click(*Form1.*box);
                EXPECT_EQ(machine.Windows.Messages.size(), ++warnings) << "unticked";
            }
        Click(Form1->Check3);
    });
    EXPECT_EQ(machine.Windows.Messages.size(), warnings);
    EXPECT_TRUE(machine.Settings.Written.empty()) << "closed by its close box";
}

TEST_F(ShellTest, TheLinkUnderlinesAndOpensTheMakersSite) {
    StartProgram();
    InOptions([&] {
        EXPECT_EQ(Form1->Text1.MaxLength, 2);
        EXPECT_EQ(*Form1->Label4.ToolTip, "Visit us!");
        for (const auto& leave : {Form1->MouseMove, Form1->Frame3.MouseMove, Form1->Command2.MouseMove}) {
            Form1->Raise(Form1->Label4.MouseMove);
            EXPECT_TRUE(Form1->Label4.Font.Underline);
            Form1->Raise(leave);
            EXPECT_FALSE(Form1->Label4.Font.Underline);
        }
        Click(Form1->Label4);
        EXPECT_TRUE(Form1.IsLoaded());
    });
    EXPECT_EQ(machine.Shell.Urls, Strings{"https://www.belvane.example/"});
}

} // namespace
} // namespace tarnwick

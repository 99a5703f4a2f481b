#include "Driver.h"

#include "favorites/Number.h"

#include <tuple>

namespace tarnwick {
namespace {

using ShellTest = Program;

TEST(NumberTest, ConvertsDecimalText) {
    const std::pair<std::int32_t, Strings> numbers[] = {{0, {"0", ".5", "-0"}},
                                                        {5, {" 5", "5  ", "5.", "+5"}},
                                                        {12, {"0000000000012"}},
                                                        {2, {"2.5", "1.5000", "2.4999"}},
                                                        {3, {"2.51", "2.50001"}},
                                                        {4, {"3.5"}},
                                                        {-1, {"-1"}},
                                                        {-2, {"-2.5"}},
                                                        {2147483647, {"2147483647", "2147483647.4"}},
                                                        {-2147483647 - 1, {"-2147483648", "-2147483648.5"}}};
    for (const auto& [number, texts] : numbers)
        for (const std::string& text : texts)
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
    Click(Form3->Option2);
    machine.Windows.InPass(1, [&] {
        EXPECT_FALSE(Form9->Timer1.Enabled());
        EXPECT_FALSE(Form9->TopMost);
        Click(Form9->Label10);
    });
    Click(Form3->Command3);
    EXPECT_FALSE(Form9.IsLoaded());
    EXPECT_TRUE(Form3->Option2.Value);

    Click(Form3->Option1);
    OpenTree();
    machine.Windows.InPass(1, [&] { Click(Form9->Label10); });
    Click(Form4->Command2);
    EXPECT_TRUE(Form4->IsVisible());
    EXPECT_FALSE(Form3.IsLoaded());
    EXPECT_EQ(Form4->Command1.Caption, "&Start");
}

TEST_F(ShellTest, EveryReturnSelectsTheFirstChoice) {
    StartProgram();
    Click(Form3->Option2);
    Click(Form3->Command1);
    EXPECT_FALSE(Form3.IsLoaded());
    EXPECT_FALSE(tarnwick::Favorites::EndOnMainClose);
    machine.Settings.Values["Timeout"] = "33";
    CloseBox(*Form7);
    ASSERT_TRUE(Form3.IsLoaded() && Form3->IsVisible());
    EXPECT_EQ(Preferences.Timeout, 33);
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
    void SetUp() override { StartProgram(); }

    // Shows the Options window and acts as its user; what is still open afterwards is closed by its close box.
    void InOptions(const std::function<void()>& user) {
        machine.Windows.InPass(1, [this, user] {
            user();
            if (Form1.IsLoaded())
                CloseBox(*Form1);
        });
        Click(Form3->Command2);
    }
};

TEST_F(OptionsTest, TheFieldsOfTheProxyFollowItsBox) {
    const auto expectFields = [](bool on) {
        for (const TextBox* field : {&Form1->Text2, &Form1->Text3}) {
            EXPECT_EQ(field->Enabled, on);
            EXPECT_EQ(field->BackColor, Color::Of(on ? ColorRole::WindowBackground : ColorRole::ButtonFace));
        }
        EXPECT_EQ(Form1->Text1.Text + Form1->Text2.Text + Form1->Text3.Text, "10proxy.invalid8080");
    };
    InOptions([&] {
        EXPECT_EQ(Form1->Text1.SelectRevision, 1U);
        expectFields(false);
        Click(Form1->Check2);
        expectFields(true);
    });
    machine.Settings.Values["UseProxy"] = "1";
    InOptions([&] { expectFields(true); });
}

TEST_F(OptionsTest, EachBoxHasAKeyOfItsOwn) {
    // Any two neighbours hold a category, without which nothing is stored.
    const std::pair<const char*, CheckBox Form1Window::*> keys[] = {
        {"Keep-alive", &Form1Window::Check1},   {"Catch401", &Form1Window::Check3},
        {"UseProxy", &Form1Window::Check2},     {"Catch403", &Form1Window::Check4},
        {"Catch404", &Form1Window::Check5},     {"CatchUnabled", &Form1Window::Check6},
        {"CatchConnerr", &Form1Window::Check7}, {"CatchTimedout", &Form1Window::Check8}};
    for (std::size_t first = 0; first < std::size(keys); ++first) {
        const std::size_t second = (first + 1) % std::size(keys);
        for (const auto& key : keys)
            machine.Settings.Values[key.first] = "0";
        machine.Settings.Values[keys[first].first] = machine.Settings.Values[keys[second].first] = "1";
        auto stored = machine.Settings.Values;
        InOptions([&] {
            for (std::size_t key = 0; key < std::size(keys); ++key)
                EXPECT_EQ((*Form1.*keys[key].second).Value, key == first || key == second ? 1 : 0) << keys[key].first;
            Form1->Text1.Text = " 5";
            Form1->Text2.Text = "a.example";
            Form1->Text3.Text = "abc"; // of no matter while the proxy is off
            if (Form1->Check2.Value != 0)
                Form1->Text3.Text = "3128";
            stored.insert({{"Timeout", " 5"}, {"ProxyAddress", "a.example"}});
            stored["ProxyPort"] = Form1->Text3.Text;
            Click(Form1->Command1);
            EXPECT_FALSE(Form1.IsLoaded());
        });
        EXPECT_EQ(machine.Settings.Values, stored);
        EXPECT_EQ(Preferences.Timeout, 5);
    }
    EXPECT_EQ(machine.Settings.Places, std::set<std::string>{"Tarnwick/Preferences"});
    EXPECT_TRUE(machine.Windows.Messages.empty()) << "loading a ticked box warns nobody";
}

TEST_F(OptionsTest, RefusesAndStoresNothing) {
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
            const unsigned focused = Form1->FocusRevision;
            Click(Form1->Command1);
            ASSERT_TRUE(Form1.IsLoaded());
            EXPECT_EQ(Form1->FocusRequest, focus);
            EXPECT_EQ(Form1->FocusRevision, focused + (focus == nullptr ? 0 : 1));
            EXPECT_EQ(focus == nullptr ? 1 : focus->SelectRevision, selected + 1);
            Click(Form1->Command2);
            EXPECT_FALSE(Form1.IsLoaded());
        });
        EXPECT_EQ(machine.Windows.Messages.size(), 1U);
        ExpectMessage(row.message, MessageIcon::Critical, row.title);
        EXPECT_TRUE(machine.Settings.Written.empty());
    }
}

TEST_F(OptionsTest, WarnsEachTimeARiskyCategoryIsTicked) {
    const std::tuple<CheckBox Form1Window::*, std::string, std::string> cases[] = {
        {&Form1Window::Check6, "Unabled to connect links", "- The remote host is currently down\r\n"},
        {&Form1Window::Check7, "Links under connection errors", "- The protocol is invalid for Tarnwick\r\n"},
        {&Form1Window::Check8, "Timed out links",
         "- The remote host is currently operating slow\r\n- A low timeout value is currently setted\r\n"}};
    InOptions([&] {
        for (int time = 0; time < 2; ++time)
            for (const auto& [box, about, causes] : cases) {
                machine.Windows.Messages.clear();
                Click(*Form1.*box);
                ExpectMessage("WARNING!\r\n" + about +
                                  " not ever are broken links.\r\n"
                                  "This can occur under different circunstances:\r\n"
                                  "- Your internet connection is not correctly stabilished\r\n"
                                  "- The computer is not connected to the internet\r\n" +
                                  causes + "\r\nTake care when remove Favorites in this category.",
                              MessageIcon::Information);
                Click(*Form1.*box);
                EXPECT_EQ(machine.Windows.Messages.size(), 1U) << "unticked";
                EXPECT_EQ((*Form1.*box).Value, 0);
            }
        Click(Form1->Check3);
        EXPECT_EQ(machine.Windows.Messages.size(), 1U);
        EXPECT_EQ(Form1->Check3.Value, 1);
    });
    EXPECT_TRUE(machine.Settings.Written.empty()) << "closed by its close box";
}

TEST_F(OptionsTest, TheLinkUnderlinesAndOpensTheMakersSiteAndAFieldTakesWhatFits) {
    InOptions([&] {
        for (const auto& leave : {Form1->MouseMove, Form1->Frame3.MouseMove, Form1->Command2.MouseMove}) {
            Form1->Raise(Form1->Label4.MouseMove);
            EXPECT_TRUE(Form1->Label4.Font.Underline);
            Form1->Raise(leave);
            EXPECT_FALSE(Form1->Label4.Font.Underline);
        }
        EXPECT_TRUE(Input(*Form1).Edit(Form1->Text1, "12"));
        EXPECT_FALSE(Input(*Form1).Edit(Form1->Text1, "123"));
        EXPECT_EQ(Form1->Text1.Text, "12");
        Click(Form1->Label4);
        EXPECT_TRUE(Form1.IsLoaded());
    });
    EXPECT_EQ(machine.Shell.Urls, Strings{"https://www.belvane.example/"});
}

} // namespace
} // namespace tarnwick

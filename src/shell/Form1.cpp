#include "shell/Form1.h"

#include "favorites/Opening.h"
#include "shell/Preferences.h"
#include "text/Number.h"
#include "window/Dialogs.h"

namespace tarnwick {

WindowObject<Form1Window> Form1;

namespace {
constexpr const char* MakersSite = "https://www.belvane.example/"; // RFC 2606: a name that nobody can own
}

Form1Window::Form1Window() {
    Layout();
    Check2.Click = [this] { Check2_Click(); };
    Check6.Click = [this] { Warn(Check6, "Unabled to connect links", "- The remote host is currently down", nullptr); };
    Check7.Click = [this] {
        Warn(Check7, "Links under connection errors", "- The protocol is invalid for Tarnwick", nullptr);
    };
    Check8.Click = [this] {
        Warn(Check8, "Timed out links", "- The remote host is currently operating slow",
             "- A low timeout value is currently setted");
    };
    Command1.Click = [this] { Command1_Click(); };
    Command2.Click = [this] { Command2_Click(); };
    Label4.Click = [this] { Label4_Click(); };
    Label4.MouseMove = [this] { Label4.Font.Underline = true; };
    MouseMove = Frame3.MouseMove = Command2.MouseMove = [this] { Label4.Font.Underline = false; };
}

void Form1Window::OnLoad() {
    Loading = true;
    LoadPreferences();
    const auto tick = [](std::int32_t value) { return value != 0 ? 1 : 0; };
    Text1.Text = std::to_string(Preferences.Timeout);
    Check1.Value = tick(Preferences.KeepAlive);
    Text2.Text = Preferences.ProxyAddress;
    Text3.Text = Preferences.ProxyPort;
    Check2.Value = tick(Preferences.UseProxy);
    Check2_Click();
    Check3.Value = tick(Preferences.Catch401);
    Check4.Value = tick(Preferences.Catch403);
    Check5.Value = tick(Preferences.Catch404);
    Check6.Value = tick(Preferences.CatchUnabled);
    Check7.Value = tick(Preferences.CatchConnerr);
    Check8.Value = tick(Preferences.CatchTimedout);
    Text1.SelectAll();
    Loading = false;
}

void Form1Window::Check2_Click() {
    const bool on = Check2.Value != 0;
    for (TextBox* field : {&Text2, &Text3}) {
        field->BackColor = Color::Of(on ? ColorRole::WindowBackground : ColorRole::ButtonFace);
        field->Enabled = on;
    }
}

void Form1Window::Warn(const CheckBox& box, const char* about, const char* lastCause, const char* extraCause) {
    if (box.Value == 0 || Loading)
        return;
    const std::string end = "\r\n";
    std::string text = "WARNING!" + end;
    text += std::string(about) + " not ever are broken links." + end;
    text += "This can occur under different circunstances:" + end;
    text += "- Your internet connection is not correctly stabilished" + end;
    text += "- The computer is not connected to the internet" + end;
    text += lastCause + end;
    if (extraCause != nullptr)
        text += extraCause + end;
    text += end + "Take care when remove Favorites in this category.";
    ShowMessage(text, "Tarnwick", MessageIcon::Information, MessageButtons::Ok);
}

void Form1Window::RefuseText(TextBox& field, const char* message) {
    Refuse(message, "Belvane Tarnwick");
    field.SelectAll();
    SetFocus(field);
}

bool Form1Window::AnyCategory() const {
    for (const CheckBox* box : {&Check3, &Check4, &Check5, &Check6, &Check7, &Check8})
        if (box->Value != 0)
            return true;
    return false;
}

void Form1Window::Command1_Click() {
    if (!NumberFromText(Text1.Text)) {
        RefuseText(Text1, "Timeout value must be numeric");
    } else if (Check2.Value != 0 && !NumberFromText(Text3.Text)) {
        RefuseText(Text3, "Proxy Port value must be numeric");
    } else if (!AnyCategory()) {
        Refuse("You must to choose at least one category to catch.");
    } else if (!Save()) {
        Refuse("The options could not be stored.");
    } else {
        LoadPreferences();
        Unload();
    }
}

bool Form1Window::Save() const {
    const auto state = [](const CheckBox& box) { return std::to_string(box.Value); };
    return SavePreferences({
        {"Timeout", Text1.Text},
        {"Keep-alive", state(Check1)},
        {"UseProxy", state(Check2)},
        {"ProxyAddress", Text2.Text},
        {"ProxyPort", Text3.Text},
        {"Catch401", state(Check3)},
        {"Catch403", state(Check4)},
        {"Catch404", state(Check5)},
        {"CatchUnabled", state(Check6)},
        {"CatchConnerr", state(Check7)},
        {"CatchTimedout", state(Check8)},
    });
}

void Form1Window::Command2_Click() { Unload(); }

void Form1Window::Label4_Click() { Favorites::OpenSite(Handle(), MakersSite); }

} // namespace tarnwick

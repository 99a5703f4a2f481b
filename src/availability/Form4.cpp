#include "availability/Form4.h"

#include "favorites/Folders.h"
#include "report/Form5.h"
#include "shell/Form2.h"
#include "shell/Form3.h"
#include "shell/Form9.h"
#include "shell/Look.h"
#include "shell/Preferences.h"

#include <algorithm>
#include <limits>

namespace tarnwick {

WindowObject<Form4Window> Form4;

const char* const Form4Window::HelpText = "The availability scan will find for Favorites that are "
                                          "currently broken or invalid, depending of the configurations "
                                          "that you have pre-defined in the Options window."
                                          "\r\n\r\n\r\n"
                                          "Click Go button to begin the process.";

namespace {

constexpr std::int32_t MsPerSecond = 1000;

// 0, which no timer takes, for a time-out beyond 32 bits of milliseconds.
std::int32_t TimeoutInterval() {
    const std::int64_t ms = std::int64_t{Preferences.Timeout} * MsPerSecond;
    return ms > std::numeric_limits<std::int32_t>::max() ? 0 : static_cast<std::int32_t>(std::max<std::int64_t>(0, ms));
}

} // namespace

Form4Window::Form4Window() {
    Layout();
    Command1.Click = [this] { Command1_Click(); };
    Command2.Click = [this] { Command2_Click(); };
    Timer1.Tick = [this] { Timer1_Tick(); };
    Timer2.Tick = [this] { Timer2_Tick(); };
    Tree1.Check = [this](int index, std::int32_t value) { Tree1_Check(index, value); };
}

void Form4Window::OnLoad() {
    TakeSharedIcon(*this);
    TakeSharedPicture(Picture1);
    Label11.Caption = HelpText;
    LoadPreferences();
    Form5->Grid1.ClearRows();
    BuildTree();
    // A time-out that the timer refuses leaves the stored one in force, so that no link waits for ever.
    Timer1.SetInterval(TimeoutInterval());
}

// A close during a run is a stop: the frames of the run fall through, and a run of the next window can start at once.
void Form4Window::OnUnload() {
    if (runOnStack_) {
        StopRequested = true;
        Favorites::RunCompleted = false;
        Form2->SOCKET->SOCKET_DISCONNECT(Form2->Handle());
    }
    Form3.Show();
}

void Form4Window::Command2_Click() { Form9.ShowModal(); }

} // namespace tarnwick

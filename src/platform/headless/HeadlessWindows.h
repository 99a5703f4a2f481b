#pragma once

// Windows without a screen: events are scripted into a given pump pass, message boxes and menus are answered by a
// script, and what a screen would show is kept to be looked at.

#include "platform/headless/Fault.h"
#include "services/Services.h"
#include "text/Text.h"
#include "window/MessageLoop.h"
#include "window/PumpState.h"
#include "window/Window.h"

#include <deque>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace tarnwick {

class HeadlessWindows : public WindowService, public CanFail {
public:
    // Sleeping is up to `events`.
    HeadlessWindows(MessageLoop& loop, EventSource& events, ClockService& clock)
        : loop_(loop), events_(events), state_(clock, [this] { Sync(); }) {}

    // Runs `act` in the pump pass that comes after `passes` - 1 others. Acts of one pass run in the order of this call,
    // in front of the posted messages and the timers.
    void InPass(int passes, std::function<void()> act);

    struct ShownMessage {
        std::string Text;
        std::string Title;
        MessageIcon Icon;
        MessageButtons Buttons;
        bool operator==(const ShownMessage&) const = default;
    };
    std::vector<ShownMessage> Messages;
    std::vector<std::string> Spoken;   // what a screen reader was given to speak
    std::deque<MessageAnswer> Answers; // one per question, No when there is none left

    struct ShownEntry {
        std::string Caption;
        bool Enabled;
    };
    std::vector<std::vector<ShownEntry>> Menus; // each menu as it popped up, without its separators
    std::deque<std::string> Choices; // names of entries to click, one per menu; none left: the menu is closed

    // Runs what a gesture of the user leads to.
    void Handle(std::function<void()> gesture);
    // The caption that a screen would show of a control now.
    const std::string& Shown(const Control& control) { return screen_[&control].Caption; }
    // All that it would show of a control, of a window or of its frame, in a text.
    const std::string& Look(const void* of) { return screen_[of].Look; }
    // The control of a window that has the focus; nullptr for none.
    Control* Focus(const Window& window);
    void SetFocus(const Window& window, Control* control) { focus_[&window] = control; }

    WindowHandle Open(Window& window) override { return loop_.Add(window); }
    void Show(Window& /*window*/) override { state_.SyncNow(); }
    void ShowModal(Window& window) override;
    void Hide(Window&) override {}
    void Discard(Window& window) override;
    MessageAnswer RunMessageBox(const BoxText& text, const std::string& title, MessageIcon icon,
                                MessageButtons buttons) override;
    LineSize SizeInBox(const std::string& line) override { return {8 * static_cast<int>(CharacterCount(line)), 16}; }
    int WidestInBox() override { return 800; }
    const MenuEntry* RunMenu(const Menu& menu, Window& window) override;
    PreviousProcedure InstallProcedure(WindowHandle window, WindowProcedure procedure) override;
    void RestoreProcedure(WindowHandle window, PreviousProcedure previous) override;
    std::int32_t CallProcedure(PreviousProcedure previous, WindowHandle window, std::uint32_t message,
                               std::int32_t first, std::int32_t second) override;
    bool PumpEvents() override;
    bool WaitForEvents() override;
    void PaintUntil(const std::function<bool(std::int64_t)>& isDone, std::int64_t ms) override;
    void End() override { state_.End(); }
    bool HasEnded() const override { return state_.Ended(); }

private:
    struct Picture {
        std::string Caption;
        std::string Look;
        unsigned Announced = 0;
    };
    bool IsPending() const;
    void Sync();
    void Speak(const Label& label, Picture& shown);

    MessageLoop& loop_;
    EventSource& events_;
    PumpState state_;
    std::map<const void*, Picture> screen_; // of controls and windows
    std::map<const Window*, Control*> focus_;
    std::map<const Window*, unsigned> focusRevisions_; // the last request that was met
    std::int64_t pass_ = 0;
    std::multimap<std::int64_t, std::function<void()>> acts_; // by pass
};

} // namespace tarnwick

#include "platform/headless/HeadlessWindows.h"

#include "window/Reach.h"

#include <algorithm>
#include <utility>

namespace tarnwick {

void HeadlessWindows::InPass(int passes, std::function<void()> act) { acts_.emplace(pass_ + passes, std::move(act)); }

void HeadlessWindows::Discard(Window& window) {
    loop_.Remove(window);
    for (const Control* control : window.Controls)
        screen_.erase(control);
    focus_.erase(&window);
    focusRevisions_.erase(&window);
}

void HeadlessWindows::Handle(const std::function<void()>& gesture) {
    if (ended_)
        return;
    pace_.Begin();
    gesture();
}

void HeadlessWindows::Sync() {
    const std::int64_t now = clock_.Now();
    for (const Window* window : loop_.Windows())
        if (window->IsVisible())
            for (const Control* control : window->Controls)
                screen_[control] = control->Caption;
    pace_.Done(now, now);
}

Control* HeadlessWindows::Focus(const Window& window) {
    Control*& focus = focus_[&window];
    if (std::exchange(focusRevisions_[&window], window.FocusRevision) != window.FocusRevision)
        focus = window.FocusRequest;
    return focus = FocusAfter(window, focus);
}

void HeadlessWindows::ShowModal(Window& window) {
    while (window.IsLoaded() && !ended_)
        WaitForEvents();
}

MessageAnswer HeadlessWindows::ShowMessage(const std::string& text, const std::string& title, MessageIcon icon,
                                           MessageButtons buttons) {
    if (ended_)
        return buttons == MessageButtons::Ok ? MessageAnswer::Ok : MessageAnswer::No;
    Sync();
    Messages.push_back({text, title, icon, buttons});
    if (buttons == MessageButtons::Ok)
        return MessageAnswer::Ok;
    const MessageAnswer answer = Answers.empty() ? MessageAnswer::No : Answers.front();
    if (!Answers.empty())
        Answers.pop_front();
    return Fails("ShowMessage") ? MessageAnswer::No : answer;
}

const MenuEntry* HeadlessWindows::PopUp(const Menu& menu, Window& /*window*/) {
    Sync();
    auto& shown = Menus.emplace_back();
    for (const MenuEntry* entry : menu.Entries)
        if (!entry->Separator)
            shown.push_back({entry->Caption, entry->Enabled});
    if (Choices.empty() || Fails("PopUp"))
        return nullptr;
    const std::string choice = Choices.front();
    Choices.pop_front();
    const auto chosen = std::ranges::find(menu.Entries, choice, &MenuEntry::Name);
    return chosen == menu.Entries.end() ? nullptr : *chosen;
}

PreviousProcedure HeadlessWindows::InstallProcedure(WindowHandle window, WindowProcedure procedure) {
    return Fails("InstallProcedure") ? 0 : loop_.Install(window, procedure);
}

void HeadlessWindows::RestoreProcedure(WindowHandle window, PreviousProcedure previous) {
    loop_.Restore(window, previous);
}

std::int32_t HeadlessWindows::CallProcedure(PreviousProcedure previous, WindowHandle window, std::uint32_t message,
                                            std::int32_t first, std::int32_t second) {
    return loop_.Call(previous, window, message, first, second);
}

bool HeadlessWindows::PumpEvents() {
    if (ended_)
        return false;
    ++pass_;
    if (pace_.Wait(clock_.Now()) == 0)
        Sync();
    for (auto act = acts_.begin(); act != acts_.end() && act->first <= pass_; act = acts_.begin()) {
        const std::function<void()> run = std::move(act->second);
        acts_.erase(act);
        Handle(run);
    }
    events_.Collect();
    loop_.DispatchMessages();
    if (!ended_)
        loop_.FireTimers();
    return !ended_;
}

bool HeadlessWindows::WaitForEvents() {
    if (ended_)
        return false;
    Sync();
    if (!IsPending())
        events_.Wait(loop_.UntilNextTick());
    return PumpEvents();
}

void HeadlessWindows::PaintUntil(const std::function<bool(std::int64_t)>& isDone, std::int64_t ms) {
    Sync();
    isDone(ms);
}

bool HeadlessWindows::IsPending() const {
    return loop_.HasMessages() || (!acts_.empty() && acts_.begin()->first <= pass_ + 1);
}

} // namespace tarnwick

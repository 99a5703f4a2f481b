#include "platform/headless/HeadlessWindows.h"

#include <algorithm>
#include <utility>

namespace tarnwick {

void HeadlessWindows::InPass(int passes, std::function<void()> act) { acts_.emplace(pass_ + passes, std::move(act)); }

void HeadlessWindows::ShowModal(Window& window) {
    while (window.IsLoaded() && !ended_)
        WaitForEvents();
}

MessageAnswer HeadlessWindows::ShowMessage(const std::string& text, const std::string& title, MessageIcon icon,
                                           MessageButtons buttons) {
    Messages.push_back({text, title, icon, buttons});
    if (buttons == MessageButtons::Ok)
        return MessageAnswer::Ok;
    const MessageAnswer answer = Answers.empty() ? MessageAnswer::No : Answers.front();
    if (!Answers.empty())
        Answers.pop_front();
    return answer;
}

const MenuEntry* HeadlessWindows::PopUp(const Menu& menu, Window& /*window*/) {
    auto& shown = Menus.emplace_back();
    for (const MenuEntry* entry : menu.Entries)
        if (!entry->Separator)
            shown.push_back({entry->Caption, entry->Enabled});
    if (Choices.empty())
        return nullptr;
    const std::string choice = Choices.front();
    Choices.pop_front();
    const auto chosen = std::ranges::find(menu.Entries, choice, &MenuEntry::Name);
    return chosen == menu.Entries.end() ? nullptr : *chosen;
}

PreviousProcedure HeadlessWindows::InstallProcedure(WindowHandle window, WindowProcedure procedure) {
    return loop_.Install(window, procedure);
}

void HeadlessWindows::RestoreProcedure(WindowHandle window, PreviousProcedure previous) {
    loop_.Restore(window, previous);
}

std::int32_t HeadlessWindows::CallProcedure(PreviousProcedure previous, WindowHandle window, std::uint32_t message,
                                            std::int32_t first, std::int32_t second) {
    return loop_.Call(previous, window, message, first, second);
}

void HeadlessWindows::PumpEvents() {
    if (ended_)
        return;
    ++pass_;
    for (auto act = acts_.begin(); act != acts_.end() && act->first <= pass_; act = acts_.begin()) {
        const std::function<void()> run = std::move(act->second);
        acts_.erase(act);
        run();
    }
    events_.Collect();
    loop_.DispatchMessages();
    loop_.FireTimers();
}

void HeadlessWindows::WaitForEvents() {
    if (ended_)
        return;
    if (!IsPending())
        events_.Wait(loop_.UntilNextTick());
    PumpEvents();
}

bool HeadlessWindows::IsPending() const {
    return loop_.HasMessages() || (!acts_.empty() && acts_.begin()->first <= pass_ + 1);
}

} // namespace tarnwick

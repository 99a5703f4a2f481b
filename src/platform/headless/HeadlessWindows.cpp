#include "platform/headless/HeadlessWindows.h"

#include "window/Reach.h"

#include <algorithm>
#include <utility>

namespace tarnwick {

namespace {

std::string LookOf(const Color& color) {
    return std::to_string(static_cast<int>(color.Role)) + "," + std::to_string(color.Red) + "," +
           std::to_string(color.Green) + "," + std::to_string(color.Blue) + ";";
}

std::string LookOf(const Window& window) {
    return LookOf(window.BackColor) + std::to_string(window.Edge) + (window.TopMost ? " in front" : "");
}

std::string LookOfKind(const Control& control) {
    switch (control.Kind) {
    case ControlKind::Label:
        return static_cast<const Label&>(control).Alignment == Alignment::Center ? "centred" : "";
    case ControlKind::CheckBox:
        return std::to_string(static_cast<const CheckBox&>(control).Value);
    case ControlKind::OptionButton:
        return static_cast<const OptionButton&>(control).Value ? "chosen" : "";
    case ControlKind::TextBox: {
        const auto& field = static_cast<const TextBox&>(control);
        return field.Text + std::to_string(field.SelectRevision);
    }
    case ControlKind::PictureBox:
        return static_cast<const PictureBox&>(control).Picture;
    case ControlKind::Grid: {
        const auto& grid = static_cast<const GridControl&>(control);
        return std::to_string(grid.Revision()) + "," + std::to_string(grid.SelectedRow);
    }
    case ControlKind::Tree: {
        const auto& tree = static_cast<const TreeControl&>(control);
        return std::to_string(tree.Revision()) + "," + std::to_string(tree.CheckRevision());
    }
    default:
        return {};
    }
}

std::string LookOf(const Window& window, const Control& control) {
    if (!IsShown(window, control))
        return {};
    return control.Caption + (control.Font.Underline ? "_" : " ") + LookOf(control.ForeColor) +
           LookOf(control.BackColor) + (control.Enabled ? "" : "grey") + LookOfKind(control);
}

} // namespace

void HeadlessWindows::InPass(int passes, std::function<void()> act) { acts_.emplace(pass_ + passes, std::move(act)); }

void HeadlessWindows::Discard(Window& window) {
    loop_.Remove(window);
    screen_.erase(&window);
    for (const Control* control : window.Controls)
        screen_.erase(control);
    focus_.erase(&window);
    focusRevisions_.erase(&window);
}

void HeadlessWindows::Handle(std::function<void()> gesture) { state_.Handle(std::move(gesture)); }

void HeadlessWindows::Sync() {
    for (const Window* window : loop_.Windows()) {
        if (!window->IsVisible())
            continue;
        screen_[window] = {window->Title, LookOf(*window), 0};
        for (const Control* control : window->Controls) {
            Picture& shown = screen_[control];
            shown.Caption = control->Caption;
            shown.Look = LookOf(*window, *control);
            if (control->Kind == ControlKind::Label && IsShown(*window, *control))
                Speak(static_cast<const Label&>(*control), shown);
        }
    }
}

void HeadlessWindows::Speak(const Label& label, Picture& shown) {
    if (std::exchange(shown.Announced, label.AnnounceRevision) != label.AnnounceRevision)
        Spoken.push_back(label.Caption);
}

Control* HeadlessWindows::Focus(const Window& window) {
    Control*& focus = focus_[&window];
    if (std::exchange(focusRevisions_[&window], window.FocusRevision) != window.FocusRevision)
        focus = window.FocusRequest;
    return focus = FocusAfter(window, focus);
}

void HeadlessWindows::ShowModal(Window& window) {
    while (window.IsLoaded() && WaitForEvents()) {
    }
}

MessageAnswer HeadlessWindows::RunMessageBox(const BoxText& text, const std::string& title, MessageIcon icon,
                                             MessageButtons buttons) {
    state_.SyncNow();
    Messages.push_back({text.Text, title, icon, buttons});
    if (buttons == MessageButtons::Ok)
        return MessageAnswer::Ok;
    const MessageAnswer answer = Answers.empty() ? MessageAnswer::No : Answers.front();
    if (!Answers.empty())
        Answers.pop_front();
    return Fails("ShowMessage") ? MessageAnswer::No : answer;
}

const MenuEntry* HeadlessWindows::RunMenu(const Menu& menu, Window& /*window*/) {
    state_.SyncNow();
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
    if (HasEnded() || state_.OnlyPaints())
        return !HasEnded();
    ++pass_;
    state_.Follow();
    state_.HandleKept();
    for (auto act = acts_.begin(); act != acts_.end() && act->first <= pass_; act = acts_.begin()) {
        const std::function<void()> run = std::move(act->second);
        acts_.erase(act);
        Handle(run);
    }
    state_.Handle([this] {
        events_.Collect();
        loop_.DispatchMessages();
        if (!HasEnded())
            loop_.FireTimers();
    });
    return !HasEnded();
}

bool HeadlessWindows::WaitForEvents() {
    if (HasEnded())
        return false;
    state_.SyncNow();
    if (!IsPending())
        events_.Wait(loop_.UntilNextTick());
    return PumpEvents();
}

void HeadlessWindows::PaintUntil(const std::function<bool(std::int64_t)>& isDone, std::int64_t ms) {
    state_.OnlyPaint([&] { isDone(ms); });
}

bool HeadlessWindows::IsPending() const {
    return loop_.HasMessages() || state_.HasKept() || (!acts_.empty() && acts_.begin()->first <= pass_ + 1);
}

} // namespace tarnwick

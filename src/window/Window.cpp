#include "window/Window.h"

#include <algorithm>
#include <utility>

namespace tarnwick {

namespace {

std::vector<WindowSlot*>& AllSlots() {
    static std::vector<WindowSlot*> slots;
    return slots;
}

// What is in front, the last one foremost; nullptr is a message box.
std::vector<std::shared_ptr<const Window>>& Modals() {
    static std::vector<std::shared_ptr<const Window>> modals;
    return modals;
}

} // namespace

bool Window::IsBehindModal() const {
    const auto front = std::ranges::find_if(Modals().rbegin(), Modals().rend(),
                                            [](const auto& modal) { return modal == nullptr || modal->IsLoaded(); });
    return front != Modals().rend() && front->get() != this;
}

ModalScope::ModalScope(std::shared_ptr<const Window> window) { Modals().push_back(std::move(window)); }

ModalScope::~ModalScope() { Modals().pop_back(); }

ServicesInUse::ServicesInUse(const Services& services) : services_(services) { UseServices(&services_); }

ServicesInUse::~ServicesInUse() {
    WindowSlot::DropAll();
    UseServices(nullptr);
}

void Window::Unload() {
    if (!loaded_)
        return;
    const std::shared_ptr<Window> keep = shared_from_this();
    OnUnload();
    if (loaded_)
        slot_->Drop();
}

WindowSlot::WindowSlot() { AllSlots().push_back(this); }

WindowSlot::~WindowSlot() { std::erase(AllSlots(), this); }

Window& WindowSlot::Load() {
    if (window_ == nullptr) {
        window_ = Make();
        window_->slot_ = this;
        window_->loaded_ = true;
        window_->handle_ = services().Windows.Open(*window_);
        window_->OnLoad();
    }
    return *window_;
}

void WindowSlot::Show() {
    Window& window = Load();
    window.visible_ = true;
    services().Windows.Show(window);
}

void WindowSlot::ShowModal() {
    Load();
    const std::shared_ptr<Window> keep = window_;
    const ModalScope front(keep);
    keep->visible_ = true;
    services().Windows.ShowModal(*keep);
}

void WindowSlot::Hide() {
    if (window_ == nullptr)
        return;
    window_->visible_ = false;
    services().Windows.Hide(*window_);
}

void WindowSlot::Unload() {
    if (window_ != nullptr)
        window_->Unload();
}

void WindowSlot::Drop() {
    const std::shared_ptr<Window> going = std::move(window_);
    window_ = nullptr;
    going->loaded_ = false;
    going->visible_ = false;
    services().Windows.Discard(*going);
}

void WindowSlot::DropAll() {
    for (WindowSlot* slot : AllSlots())
        if (slot->window_ != nullptr)
            slot->Drop();
}

} // namespace tarnwick

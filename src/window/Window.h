#pragma once

// A window of the model: named control fields in a subclass, filled from the subclass's layout table. A window is
// loaded (the object exists and its load step has run), shown or hidden, and unloaded (its unload step has run and the
// object is given up, though it stays valid until the last of its handlers on the stack has returned).

#include "services/Services.h"
#include "window/Controls.h"
#include "window/Timer.h"

#include <initializer_list>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace tarnwick {

enum class FrameStyle {
    None,        // no title bar at all
    FixedSingle, // title bar with minimise and close boxes
    FixedTool    // small title bar with a close box
};

class WindowSlot;

class Window : public std::enable_shared_from_this<Window> {
public:
    Window() = default;
    virtual ~Window() = default;
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    Fixed<std::string> Name;
    Fixed<FrameStyle> Border = FrameStyle::FixedSingle;
    Fixed<int> ClientWidth;  // twips
    Fixed<int> ClientHeight; // twips
    Fixed<bool> InTaskBar = true;

    std::string Title;
    bool TopMost = false; // over the windows of other programs, too
    int Edge = 0;         // edge type of DrawEdge around the client area, 0: none
    std::string Icon;     // name of an icon that the front end carries, empty: the desktop's default
    Color BackColor = Color::Of(ColorRole::ButtonFace);
    std::function<void()> MouseMove;

    std::vector<Control*> Controls; // back to front: a later one lies over an earlier one
    std::vector<Timer*> Timers;

    WindowHandle Handle() const { return handle_; }
    bool IsLoaded() const { return loaded_; }
    bool IsVisible() const { return visible_; }
    // Whether a person can work with it: it shows, and no modal window or message box is in front.
    bool TakesInput() const { return loaded_ && visible_ && !IsBehindModal(); }
    // A modal window other than this one, or a message box, is in front.
    bool IsBehindModal() const;

    // The focus moves to `control`; the front end does it when it sees the revision change.
    void SetFocus(Control& control) {
        FocusRequest = &control;
        ++FocusRevision;
    }
    Control* FocusRequest = nullptr;
    unsigned FocusRevision = 0;

    // The user's close box, and every other way to take the window away. No effect on a window that is not loaded.
    void Unload();

    // Runs a handler of this window or of one of its controls. The object outlives the handler even if the handler
    // unloads it; a window that is not loaded any more gets no events.
    template <class... Parameters, class... Arguments>
    void Raise(const std::function<void(Parameters...)>& handler, Arguments&&... arguments) {
        const std::shared_ptr<Window> keep = shared_from_this();
        if (loaded_ && handler)
            handler(std::forward<Arguments>(arguments)...);
    }

protected:
    virtual void OnLoad() {}
    virtual void OnUnload() {}

private:
    friend class WindowSlot;

    WindowSlot* slot_ = nullptr;
    WindowHandle handle_ = 0;
    bool loaded_ = false;
    bool visible_ = false;
};

// While it lives, `window` alone takes input; no window does with nullptr, where a message box is in front.
class ModalScope {
public:
    explicit ModalScope(std::shared_ptr<const Window> window);
    ~ModalScope();
    ModalScope(const ModalScope&) = delete;
    ModalScope& operator=(const ModalScope&) = delete;
};

// The place under whose fixed name a window is known; it holds the loaded object, if there is one.
class WindowSlot {
public:
    WindowSlot();
    virtual ~WindowSlot();
    WindowSlot(const WindowSlot&) = delete;
    WindowSlot& operator=(const WindowSlot&) = delete;

    bool IsLoaded() const { return window_ != nullptr; }
    // Loads the window if it isn't loaded; nothing shows by that.
    Window& Load();
    void Show();
    // Returns when the window has been unloaded.
    void ShowModal();
    void Hide();
    void Unload();

    // Gives up every loaded window without its unload step: the process ends.
    static void DropAll();

protected:
    virtual std::shared_ptr<Window> Make() const = 0;

private:
    friend class Window;
    void Drop();

    std::shared_ptr<Window> window_;
};

// Keeps the services of a machine in use for as long as it lives, and gives up the windows that are loaded at its end.
class ServicesInUse {
public:
    explicit ServicesInUse(const Services& services);
    ~ServicesInUse();
    ServicesInUse(const ServicesInUse&) = delete;
    ServicesInUse& operator=(const ServicesInUse&) = delete;

private:
    Services services_;
};

// Form4->Label8 reads a field of the window; the first use loads it.
template <class T> class WindowObject : public WindowSlot {
public:
    T* operator->() { return static_cast<T*>(&Load()); }
    T& operator*() { return static_cast<T&>(Load()); }

protected:
    std::shared_ptr<Window> Make() const override { return std::make_shared<T>(); }
};

} // namespace tarnwick

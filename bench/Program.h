#pragma once

// Tarnwick on real files and sockets, worked as a user works it.

#include "posix_support.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tarnwick::bench {

// Windows with an eye on each pass of their pump.
template <class Windows> class Watched : public Windows {
public:
    using Windows::Windows;
    bool PumpEvents() override { return Look(Windows::PumpEvents()); }
    bool WaitForEvents() override { return Look(Windows::WaitForEvents()); }

    std::function<void()> EachPass; // called whenever the program has handled events

private:
    bool Look(bool goesOn) const {
        if (EachPass)
            EachPass();
        return goesOn;
    }
};

// Without windows on the screen.
class Program {
public:
    virtual ~Program() = default;

    // The user clicks it. Returns when its handler has.
    virtual void Press(Window& window, Control& button) { window.Raise(button.Click); }
    // Sleeps until events come, and handles them.
    virtual void Wait() { Machine.Windows.WaitForEvents(); }
    // Returns when what the window's fields say is on the screen.
    virtual void Draw(Window&) {}
    // Of the windows in use.
    virtual std::function<void()>& EachPass() { return Machine.Windows.EachPass; }

    std::string Name = "headless";
    test::PosixMachineWith<MemorySettings, Watched<HeadlessWindows>> Machine;
};

// With windows; one a process.
std::unique_ptr<Program> OnQt();

// A home folder with a Favorites folder of the measurement's own, removed with the object.
class FavoritesFolder {
public:
    // With `count` shortcuts, 100 per folder (all in the root if `folders` is false) and the links that `url` returns.
    FavoritesFolder(int count, bool folders, const std::function<std::string(int number)>& url);

    // The floor under every walk: opens, reads and closes each file, in the order of their paths.
    void ReadAll() const;

    const test::TemporaryHome Home;
    const std::string Root = Home / "Favorites";

private:
    std::vector<std::string> files_;
};

} // namespace tarnwick::bench

#pragma once

// Tarnwick on real files and sockets, with windows on the screen or without, worked as a user works it.

#include "platform/headless/Fakes.h"
#include "window/Window.h"

#include <functional>
#include <memory>
#include <string>

namespace tarnwick::bench {

class FrontEnd {
public:
    virtual ~FrontEnd() = default;

    virtual std::string Name() const = 0;
    virtual MemorySettings& Settings() = 0;
    // The user clicks it. Returns when its handler has.
    virtual void Press(Window& window, Control& button) = 0;
    // The user clicks a grid's header; columns count from 1.
    virtual void PressHeader(Window& window, GridControl& grid, int column) = 0;
    // The user drags the scroll bar to this part of all rows (0 to 1), and it is drawn.
    virtual void ScrollTo(Window& window, GridControl& grid, double part) = 0;
    // One pass of the program's event loop, asleep until there is something to do.
    virtual void Pass() = 0;
    // Returns when what the window's fields say stands on the screen.
    virtual void Draw(Window& window) = 0;
    // `look` is called whenever the program has handled events, and about every ms while it sleeps.
    virtual void Watch(std::function<void()> look) = 0;
};

std::unique_ptr<FrontEnd> Headless();
std::unique_ptr<FrontEnd> OnQt(); // one a process

// From the main window through a whole check, as its user goes: returns when it has ended.
void CheckAvailability(FrontEnd& program);
// And back to the main window.
void Finish(FrontEnd& program);
// From the main window through a whole check of duplicates; the window is left open.
void CheckDuplicates(FrontEnd& program);

// A home folder with a Favorites folder of the measurement's own, gone with the object.
class FavoritesFolder {
public:
    FavoritesFolder();
    ~FavoritesFolder();
    FavoritesFolder(const FavoritesFolder&) = delete;
    FavoritesFolder& operator=(const FavoritesFolder&) = delete;

    // Makes `count` shortcuts of 100 a folder (all in the root if `folders` is false) with the links that `url` gives.
    void Fill(int count, bool folders, const std::function<std::string(int number)>& url) const;
    std::string Root() const;

private:
    struct Home;
    std::unique_ptr<Home> home_;
};

} // namespace tarnwick::bench

#pragma once

// A person's hands and eyes. Each front end's tests bring a Person of their own.

#include "SampleWindow.h"
#include "window/Dialogs.h"
#include "window/Keyboard.h"
#include "window/Text.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tarnwick::test {

// Works with the windows as the desktop lets a person do it. A gesture has been handled when it returns, up to a loop
// that it has opened. The services are in use for as long as the person lives.
class Person {
public:
    virtual ~Person() = default;

    // Hands. A control gets the left button in its middle.
    virtual void PressOn(const Window& window, const Control& control) = 0;
    virtual void LetGo(const Window& window, const Control& control) = 0;
    // Row 0 is below the last one; the buttons are 1 and 2, the right one.
    virtual void ClickRow(const Window& window, const GridControl& grid, int row, int button) = 0;
    virtual void ClickHeader(const Window& window, const GridControl& grid, int column) = 0;
    virtual void ClickNode(const Window& window, const TreeControl& tree, int node) = 0; // its check box
    virtual void MoveMouse(const Window& window, int x, int y) = 0;                      // twips
    virtual void Type(const Window& window, const KeyPress& key) = 0;
    virtual void Close(const Window& window) = 0;                         // as the window manager asks for it
    virtual void ActOn(const Window& window, const Control& control) = 0; // a screen reader's press
    // Waits until the screen shows what the model says.
    virtual void Settle() = 0;
    // Acts as soon as the next loop runs, also one of a box or a menu that is yet to open.
    virtual void Soon(std::function<void()> act) = 0;
    // Answers the next box, chooses an entry of the next menu (from 1, 0 leaves it).
    virtual void Answer(MessageAnswer answer) = 0;
    virtual void Choose(int entry) = 0;

    // Eyes.
    virtual bool Shows(const Window& window) = 0;
    virtual std::string Title(const Window& window) = 0;
    virtual std::string Text(const Window& window, const Control& control) = 0; // "&" as in the caption
    virtual bool IsMarked(const Window& window, const Control& control) = 0;    // a check box or an option button
    virtual bool IsTicked(const Window& window, const TreeControl& tree, int node) = 0;
    virtual int SelectedRow(const Window& window, const GridControl& grid) = 0;
    virtual bool HasFocus(const Window& window, const Control& control) = 0;
    virtual bool Reads(const Window& window, const Control& control) = 0; // exists for a screen reader

    void Click(const Window& window, const Control& control) {
        PressOn(window, control);
        LetGo(window, control);
    }
};

using Log = std::vector<std::string>;

// The sample window before a person; both are there for as long as the test.
class WindowFixture : public ::testing::Test {
protected:
    explicit WindowFixture(std::unique_ptr<Person> person) : person_(std::move(person)) {}

    void Show() {
        Sample.Show();
        p.Settle();
    }
    static void Pump() { services().Windows.PumpEvents(); }
    static void Start(Timer& timer, int ms, std::function<void()> tick) {
        timer.Tick = std::move(tick);
        timer.SetInterval(ms);
        timer.Enable();
    }
    // What has been raised since the last call.
    Log Raised() { return std::exchange(w.Log, {}); }
    void Press(Key key, bool shift = false) { p.Type(w, {.Which = key, .Shift = shift}); }
    void PressAlt(const char* letter, bool repeated = false) {
        p.Type(w, {.Letter = letter, .Alt = true, .Repeated = repeated});
    }

    WindowObject<SampleWindow> Sample, Other; // outlive the person, at whose end their windows are given up
    const std::unique_ptr<Person> person_;
    Person& p = *person_;
    const std::shared_ptr<SampleWindow> kept_ = std::static_pointer_cast<SampleWindow>(Sample->shared_from_this());
    SampleWindow& w = *kept_;
};

using PersonMaker = std::unique_ptr<Person> (*)();
template <class Human> std::unique_ptr<Person> Make() { return std::make_unique<Human>(); }

} // namespace tarnwick::test

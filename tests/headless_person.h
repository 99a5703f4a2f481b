#pragma once

// The contract's person on the machine in memory: does what a front end does with its desktop's gestures.

#include "Person.h"
#include "platform/headless/HeadlessPlatform.h"
#include "window/Input.h"
#include "window/Reach.h"

#include <map>
#include <utility>

namespace tarnwick::test {

class HeadlessPerson : public Person {
public:
    void PressOn(const Window& window, const Control& control) override {
        TakeFocus(window, control);
        With(window, [&](Input& input) { input.Press(control, machine_.Windows.Shown(control)); });
    }
    void LetGo(const Window& window, const Control& control) override {
        With(window, [&](Input& input) { input.Release(&Mutable(control)); });
    }
    void ClickRow(const Window& window, const GridControl& grid, int row, int button) override {
        TakeFocus(window, grid);
        With(window, [&](Input& input) {
            if (button == 1)
                input.Select(Mutable(grid), row);
            input.PressGrid(Mutable(grid), button, 0, 0, 0);
        });
    }
    void ClickHeader(const Window& window, const GridControl& grid, int column) override {
        With(window, [&](Input& input) { input.ClickHeader(Mutable(grid), column); });
    }
    void ClickNode(const Window& window, const TreeControl& tree, int node) override {
        With(window, [&](Input& input) { input.Tick(Mutable(tree), node); });
    }
    void MoveMouse(const Window& window, int x, int y) override {
        With(window, [&](Input& input) { input.MoveMouse(x, y); });
    }
    void Type(const Window& window, const KeyPress& key) override {
        Control* focused = machine_.Windows.Focus(window);
        const KeyEffect effect = EffectOf(key, window, focused);
        if (effect.Focus != nullptr)
            machine_.Windows.SetFocus(window, effect.Focus);
        if (effect.Press != nullptr)
            ActOn(window, *effect.Press);
        if (effect.OpenMenu != nullptr)
            ClickRow(window, *effect.OpenMenu, 0, 2);
        if (effect.Handled || focused == nullptr || key.Which != Key::Letter || key.Alt)
            return;
        if (key.Letter == " " && focused->Kind == ControlKind::Tree)
            ClickNode(window, static_cast<TreeControl&>(*focused), 2);
        else if (focused->Kind == ControlKind::Grid)
            With(window, [&](Input& input) { input.SelectByText(static_cast<GridControl&>(*focused), key.Letter); });
        else if (key.Letter == " " && focused->Kind != ControlKind::TextBox)
            ActOn(window, *focused);
    }
    void Close(const Window& window) override {
        With(window, [](Input& input) { input.Close(); });
    }
    void ActOn(const Window& window, const Control& control) override {
        With(window, [&](Input& input) { input.Click(Mutable(control), machine_.Windows.Shown(control)); });
    }
    void Settle() override {
        machine_.Clock.Advance(Pace::Longest);
        machine_.Windows.PumpEvents();
    }
    void Soon(std::function<void()> act) override { machine_.Windows.InPass(1, std::move(act)); }
    void Answer(MessageAnswer answer) override { machine_.Windows.Answers.push_back(answer); }
    void Choose(int entry) override {
        machine_.Windows.Choices.push_back(entry == 1 ? "first" : entry == 2 ? "grey" : "");
    }

    bool Shows(const Window& window) override { return window.IsVisible(); }
    std::string Title(const Window& window) override { return window.Title; }
    std::string Text(const Window& /*window*/, const Control& control) override {
        if (control.Kind == ControlKind::TextBox)
            return static_cast<const TextBox&>(control).Text;
        return ShownLine(machine_.Windows.Shown(control));
    }
    bool IsMarked(const Window& /*window*/, const Control& control) override {
        return control.Kind == ControlKind::CheckBox ? static_cast<const CheckBox&>(control).Value != 0
                                                     : static_cast<const OptionButton&>(control).Value;
    }
    bool IsTicked(const Window& /*window*/, const TreeControl& tree, int node) override {
        return tree.NodeCheck(node) != 0;
    }
    int SelectedRow(const Window& /*window*/, const GridControl& grid) override { return grid.SelectedRow; }
    bool HasFocus(const Window& window, const Control& control) override {
        return machine_.Windows.Focus(window) == &control;
    }
    bool Reads(const Window& window, const Control& control) override { return IsShown(window, control); }

private:
    template <class T> static T& Mutable(const T& control) { return const_cast<T&>(control); }

    void With(const Window& window, const std::function<void(Input&)>& gesture) {
        auto& person = const_cast<Window&>(window);
        Input& input = inputs_.try_emplace(&window, person).first->second;
        machine_.Windows.Handle([&] { gesture(input); });
    }

    void TakeFocus(const Window& window, const Control& control) {
        if (window.TakesInput() && CanHaveFocus(window, control))
            machine_.Windows.SetFocus(window, &Mutable(control));
    }

    HeadlessPlatform machine_;
    std::map<const Window*, Input> inputs_;
};

} // namespace tarnwick::test

// The contracts on the machine in memory.

#include "contract_sockets.h"
#include "contract_windows.h"
#include "platform/headless/HeadlessPlatform.h"
#include "window/Input.h"
#include "window/Reach.h"

#include <cstring>

namespace tarnwick::test {

namespace {

struct HeadlessSocketMachine : HeadlessPlatform {
    HeadlessSocketMachine() {
        Sockets.Hosts["127.0.0.1"] = {};
        Sockets.Hosts["refusing"] = {.Refuses = true};
    }
    AddressRecord Address(const std::string& name = "127.0.0.1") {
        AddressRecord address{2, Sockets.HostToNetwork(80), 0, {}};
        std::memcpy(&address.Address, Sockets.LookUp(name)->Address().data(), sizeof address.Address);
        return address;
    }
    AddressRecord Refusing() { return Address("refusing"); }

    void Accept() {}
    void Send(const std::string& text) { Sockets.Deliver(text); }
    std::string Receive() const { return Sockets.Connections.back().Sent; }
    void HangUp() { Sockets.HangUp(); }
    void Reset() { Sockets.HangUp(SocketError::ConnectionReset); }
    void Settle() {}
};

// Does what a front end does with its desktop's gestures.
class HeadlessPerson : public Person {
public:
    using Person::Person;

    void PressOn(Control& control) override { Do(&Input::Press, control, machine_.Windows.Shown(control)); }
    void LetGo(Control& control) override { Do(&Input::Release, &control); }
    void ClickEarly(Control& control, const std::function<void()>& change) override {
        const std::string seen = machine_.Windows.Shown(control);
        change();
        Do(&Input::Click, control, seen);
    }
    void ClickRow(int row, int button) override {
        machine_.Windows.SetFocus(w, &w.Grid1);
        if (button == 1)
            Do(&Input::Select, w.Grid1, row);
        Do(&Input::PressGrid, w.Grid1, button, 0, 0, 0);
    }
    void ClickNode(int node) override { Do(&Input::Tick, w.Tree1, node); }
    void MoveMouse(int x, int y) override { Do(&Input::MoveMouse, x, y); }
    void Type(const KeyPress& key) override {
        Control* focused = machine_.Windows.Focus(w);
        const KeyEffect effect = EffectOf(key, w, focused);
        if (effect.Focus != nullptr)
            machine_.Windows.SetFocus(w, effect.Focus);
        if (effect.Press != nullptr)
            ActOn(*effect.Press);
        if (effect.OpenMenu != nullptr)
            ClickRow(0, 2);
        if (effect.Handled || key.Letter.empty())
            return;
        if (focused == &w.Text1)
            Do(&Input::Edit, w.Text1, w.Text1.Text + key.Letter);
        else if (focused == &w.Grid1)
            Do(&Input::SelectByText, w.Grid1, key.Letter);
        else if (key.Letter == " ")
            ActOn(*focused);
    }
    void Close() override { Do(&Input::Close); }
    void ActOn(Control& control) override { Do(&Input::PressAndClick, control, machine_.Windows.Shown(control)); }
    void Paste(const std::string& text) override { Do(&Input::Edit, w.Text1, w.Text1.Text + text); }
    void Settle() override {
        machine_.Clock.Advance(Pace::Longest);
        machine_.Windows.PumpEvents();
    }
    void Soon(std::function<void()> act) override { machine_.Windows.InPass(1, std::move(act)); }

    bool Shows(const Window& window) override { return window.IsVisible() && !machine_.Windows.HasEnded(); }
    std::string Text(const Control& control) override {
        return &control == &w.Text1 ? w.Text1.Text : ShownLine(machine_.Windows.Shown(control));
    }
    bool IsMarked(const Control& control) override {
        return &control == &w.Check1 ? w.Check1.Value != 0 : static_cast<const OptionButton&>(control).Value;
    }
    int SelectedRow() override { return w.Grid1.SelectedRow; }
    std::size_t Picture(const Control* control) override {
        return std::hash<std::string>()(
            machine_.Windows.Look(control == nullptr ? static_cast<const void*>(&w) : control));
    }
    std::string Title() override { return w.Title; }
    Log Spoken() override { return std::exchange(machine_.Windows.Spoken, {}); }
    bool HasFocus(const Control& control) override { return machine_.Windows.Focus(w) == &control; }
    bool Reads(const Control& control) override { return IsShown(w, control); }

private:
    // `arguments` are kept for a gesture that is handled later: controls as they are, texts as copies.
    template <class Gesture, class... Arguments> void Do(Gesture gesture, Arguments&&... arguments) {
        machine_.Windows.Handle([this, gesture, kept = std::tuple(Kept(arguments)...)] {
            std::apply([&](const auto&... one) { std::invoke(gesture, input_, one...); }, kept);
        });
    }
    template <class T> static auto Kept(T& argument) {
        if constexpr (std::is_base_of_v<Control, T>)
            return std::ref(argument);
        else
            return std::decay_t<T>(argument);
    }

    HeadlessPlatform machine_;
    Input input_{w};
};

} // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(Headless, SocketContract, HeadlessSocketMachine);

std::unique_ptr<Person> MakePerson(SampleWindow& sample) { return std::make_unique<HeadlessPerson>(sample); }

} // namespace tarnwick::test

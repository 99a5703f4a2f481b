#pragma once

// What sockets do on every machine, the one in memory included.
//
// A machine for this suite is in use while it lives, and has a peer: `Address()` of one that listens, `Refusing()` of
// one that doesn't; `Accept()`, `Say(text)`, `Hear()`, `Hang()` (closes the connection), `Reset()` (drops it).

#include "platform/Services.h"
#include "window/Window.h"

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace tarnwick::test {

// Gets the sockets' messages, and waits for them.
class SocketOwner : public Window {
public:
    static constexpr std::uint32_t Message = 1025;
    static constexpr std::int32_t Read = 1, Write = 2, Connect = 16, Close = 32;

    using Event = std::array<std::int32_t, 3>; // socket, kind, error
    using Events = std::vector<Event>;

    SocketOwner() {
        Timers.push_back(&bound_);
        bound_.Tick = [this] { late_ = true; };
    }

    static void Listen(WindowHandle window) {
        events.clear();
        services().Windows.InstallProcedure(
            window, [](WindowHandle, std::uint32_t message, std::int32_t first, std::int32_t second) {
                if (message == Message)
                    events.push_back({first, second & 0xFFFF, second >> 16});
                return std::int32_t{0};
            });
    }
    // What comes until there are `count` events more, at the latest after a while.
    Events Next(std::size_t count, std::int32_t ms = 10000) {
        bound_.SetInterval(ms);
        bound_.Enable();
        for (late_ = false; events.size() < count && !late_;)
            services().Windows.WaitForEvents();
        bound_.Disable();
        return std::exchange(events, {});
    }
    // That these events come, and then nothing more.
    void ExpectLast(const Events& last) {
        EXPECT_EQ(Next(last.size()), last);
        EXPECT_EQ(Next(1, 30), Events{});
    }

    static inline Events events;

private:
    Timer bound_;
    bool late_ = false;
};

template <class Machine> class SocketContract : public testing::Test {
protected:
    using Events = SocketOwner::Events;
    static constexpr std::int32_t Read = SocketOwner::Read, Write = SocketOwner::Write, Connect = SocketOwner::Connect,
                                  Close = SocketOwner::Close;

    SocketContract() {
        SocketOwner::Listen(owner->Handle());
        EXPECT_EQ(Sockets().Startup(257), 0);
    }
    ~SocketContract() override {
        for (const SocketNumber number : started_)
            Sockets().Close(number);
        Sockets().Cleanup();
    }

    static SocketService& Sockets() { return services().Sockets; }

    SocketNumber Start(const AddressRecord& address) {
        const SocketNumber number = Sockets().Open(2, 1, 6);
        EXPECT_GT(number, 0);
        started_.push_back(number);
        EXPECT_EQ(Sockets().SetOption(number, 65535, 128, {1, 0}), 0);
        EXPECT_EQ(Sockets().AsyncSelect(number, owner->Handle(), SocketOwner::Message, 51), 0);
        EXPECT_EQ(Sockets().Connect(number, address), -1);
        EXPECT_EQ(SocketOwner::events, Events{}) << "told from within a call";
        return number;
    }
    SocketNumber StartAccepted() {
        const SocketNumber number = Start(machine.Address());
        machine.Accept();
        return number;
    }
    SocketNumber StartConnected() {
        const SocketNumber number = StartAccepted();
        EXPECT_EQ(owner->Next(2), (Events{{number, Connect, 0}, {number, Write, 0}}));
        return number;
    }
    static std::string Receive(SocketNumber number, std::size_t size = 100) {
        std::string buffer(size, '\0');
        const std::int32_t got = Sockets().Receive(number, buffer);
        return got < 0 ? "failed" : buffer.substr(0, static_cast<std::size_t>(got));
    }

    WindowObject<SocketOwner> owner; // outlives the machine, which gives its window up
    Machine machine;

private:
    std::vector<SocketNumber> started_;
};

TYPED_TEST_SUITE_P(SocketContract);

TYPED_TEST_P(SocketContract, AReplyIsReadBitByBitAndTheCloseComesLast) {
    const SocketNumber number = this->StartConnected();
    EXPECT_EQ(this->Sockets().Send(number, "GET"), 3);
    EXPECT_EQ(this->machine.Hear(), "GET");
    this->machine.Say("abcdefgh");
    EXPECT_EQ(this->owner->Next(1), (SocketOwner::Events{{number, this->Read, 0}}));
    this->machine.Hang();
    EXPECT_EQ(this->owner->Next(1, 30), SocketOwner::Events{}) << "one READ until Receive(), no CLOSE before it";
    EXPECT_EQ(this->Receive(number, 3), "abc");
    EXPECT_EQ(this->owner->Next(1), (SocketOwner::Events{{number, this->Read, 0}}));
    EXPECT_EQ(this->Receive(number), "defgh");
    this->owner->ExpectLast({{number, this->Close, 0}});
    EXPECT_EQ(this->Sockets().Close(number), 0);
}

TYPED_TEST_P(SocketContract, AConnectionThatCanNotBeFailsFromThePump) {
    AddressRecord nobody = this->machine.Address();
    nobody.Address = 0; // on Linux, by itself, this machine
    for (const auto& [address, error] : {std::pair{this->machine.Refusing(), 10061}, {nobody, 10049}}) {
        const SocketNumber number = this->Start(address);
        this->owner->ExpectLast({{number, this->Connect, error}});
        EXPECT_EQ(this->Sockets().Send(number, "x"), -1);
    }
}

TYPED_TEST_P(SocketContract, APeerThatOnlyClosesOrResetsIsNoFailedConnection) {
    const SocketNumber closed = this->StartAccepted();
    this->machine.Hang();
    this->owner->ExpectLast({{closed, this->Connect, 0}, {closed, this->Write, 0}, {closed, this->Close, 0}});
    this->StartConnected();
    this->machine.Reset();
    const SocketOwner::Events last = this->owner->Next(1);
    ASSERT_EQ(last.size(), 1U);
    EXPECT_EQ(last[0][1], this->Close); // not every machine says that it was dropped, and nobody looks at it
}

TYPED_TEST_P(SocketContract, NothingOfAClosedSocketArrives) {
    const SocketNumber number = this->StartConnected();
    this->machine.Say("late");
    this->machine.Settle();
    EXPECT_EQ(this->Sockets().Close(number), 0);
    EXPECT_EQ(this->owner->Next(1, 30), SocketOwner::Events{});
    this->machine.Hang();
    const SocketNumber next = this->StartAccepted();
    this->owner->ExpectLast({{next, this->Connect, 0}, {next, this->Write, 0}});
    for (const SocketNumber none : {number == next ? -1 : number, 0, -1, 32000}) {
        EXPECT_EQ(this->Sockets().Close(none), -1) << none;
        EXPECT_EQ(this->Sockets().Send(none, "x"), -1) << none;
        EXPECT_EQ(this->Receive(none), "failed") << none;
    }
}

TYPED_TEST_P(SocketContract, NamesAndNumbers) {
    EXPECT_EQ(this->Sockets().HostToNetwork(80), 80U << 8U);
    EXPECT_EQ(this->Sockets().HostToNetwork(-1), 0xFFFF);
    EXPECT_EQ(this->Sockets().HostToNetwork(65536 + 80), 80U << 8U);
    EXPECT_EQ(this->Sockets().AddressFromText("host"), 0xFFFFFFFFU);
    const auto lookUp = this->Sockets().LookUp(this->machine.KnownHost());
    ASSERT_NE(lookUp, nullptr);
    EXPECT_TRUE(lookUp->Wait(10000));
    EXPECT_EQ(lookUp->Address().size(), 4U);
    std::string name;
    EXPECT_EQ(this->Sockets().LocalName(name), 0);
    EXPECT_TRUE(!name.empty() && name.find('\0') == std::string::npos);
}

REGISTER_TYPED_TEST_SUITE_P(SocketContract, AReplyIsReadBitByBitAndTheCloseComesLast,
                            AConnectionThatCanNotBeFailsFromThePump, APeerThatOnlyClosesOrResetsIsNoFailedConnection,
                            NothingOfAClosedSocketArrives, NamesAndNumbers);

// What the system's own reader of addresses makes of a text.
inline void ExpectAddressesAreReadAsOnWindows() {
    const std::pair<std::string, std::array<unsigned char, 4>> rows[] = {
        {"127.0.0.1", {127, 0, 0, 1}}, {"1", {0, 0, 0, 1}},         {"127.1", {127, 0, 0, 1}},
        {"0x7f.1", {127, 0, 0, 1}},    {"1.2.3.4 x", {1, 2, 3, 4}}, {" ", {0, 0, 0, 0}}};
    for (const auto& [text, bytes] : rows) {
        const std::uint32_t read = services().Sockets.AddressFromText(text);
        EXPECT_EQ(std::string(reinterpret_cast<const char*>(&read), 4), std::string(bytes.begin(), bytes.end()))
            << text;
    }
    for (const char* text : {"", "256.1.1.1", "1.2.3.4x", "localhost", "1.2.3.4.5", "255.255.255.255"})
        EXPECT_EQ(services().Sockets.AddressFromText(text), 0xFFFFFFFFU) << text;
}

} // namespace tarnwick::test

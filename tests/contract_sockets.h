#pragma once

// What sockets do on every machine, the one in memory included.
//
// A machine for this suite is in use while it lives, and has a peer: `Address()` of one that listens, `Refusing()` of
// one that doesn't; `Accept()`, `Send(text)`, `Receive()`, `HangUp()` (closes the connection), `Reset()` (drops it).

#include "services/Services.h"
#include "window/Window.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <utility>
#include <vector>

namespace tarnwick::test {

constexpr std::uint32_t SocketMessage = 1025;
using namespace SocketEvent;

using Events = std::vector<std::array<std::int32_t, 3>>; // socket, kind, error

// Gets the sockets' messages, and has a timer that ends a wait for them.
struct SocketOwner : Window {
    SocketOwner() { Timers.push_back(&Bound); }
    static inline Events Got;
    Timer Bound;
};

inline SocketService& Sockets() { return services().Sockets; }

inline std::string Receive(SocketNumber number, std::size_t size = 100) {
    std::string buffer(size, '\0');
    const std::int32_t got = Sockets().Receive(number, buffer);
    return got < 0 ? "failed" : buffer.substr(0, static_cast<std::size_t>(got));
}

template <class Machine> class SocketContract : public testing::Test {
protected:
    SocketContract() {
        SocketOwner::Got.clear();
        services().Windows.InstallProcedure(
            owner->Handle(), [](WindowHandle, std::uint32_t message, std::int32_t first, std::int32_t second) {
                if (message == SocketMessage)
                    SocketOwner::Got.push_back({first, second & 0xFFFF, second >> 16});
                return std::int32_t{0};
            });
        EXPECT_EQ(Sockets().Startup(WinsockVersion), 0);
    }

    SocketNumber Start(const AddressRecord& address) {
        const SocketNumber number = Sockets().Open(FamilyInternet, TypeStream, ProtocolTcp);
        EXPECT_GT(number, 0);
        EXPECT_EQ(Sockets().SetOption(number, LevelSocket, OptionLinger, {1, 0}), 0);
        EXPECT_EQ(Sockets().AsyncSelect(number, owner->Handle(), SocketMessage, All), 0);
        EXPECT_EQ(Sockets().Connect(number, address), -1);
        EXPECT_EQ(SocketOwner::Got, Events{}) << "from within a call";
        return number;
    }
    SocketNumber StartAccepted() {
        const SocketNumber number = Start(machine.Address());
        machine.Accept();
        return number;
    }
    SocketNumber StartConnected() {
        const SocketNumber number = StartAccepted();
        EXPECT_EQ(Next(2), (Events{{number, Connect, 0}, {number, Write, 0}}));
        return number;
    }
    // What comes until there are `count` events more, at the latest after a while.
    Events Next(std::size_t count, std::int32_t ms = 10000) {
        bool late = false;
        owner->Bound.Tick = [&late] { late = true; };
        owner->Bound.SetInterval(ms);
        owner->Bound.Enable();
        while (SocketOwner::Got.size() < count && !late)
            services().Windows.WaitForEvents();
        owner->Bound.Disable();
        return std::exchange(SocketOwner::Got, {});
    }
    // That these events come, and then nothing more.
    void ExpectLast(const Events& last) {
        EXPECT_EQ(Next(last.size()), last);
        EXPECT_EQ(Next(1, 30), Events{});
    }

    WindowObject<SocketOwner> owner; // outlives the machine, which gives its window up
    Machine machine;
};

TYPED_TEST_SUITE_P(SocketContract);

TYPED_TEST_P(SocketContract, AReplyIsReadBitByBitAndTheCloseComesLast) {
    const SocketNumber number = this->StartConnected();
    EXPECT_EQ(Sockets().Send(number, "GET"), 3);
    EXPECT_EQ(this->machine.Receive(), "GET");
    this->machine.Send("abc");
    EXPECT_EQ(this->Next(1), (Events{{number, Read, 0}}));
    EXPECT_EQ(Receive(number, 3), "abc");
    EXPECT_EQ(this->Next(1, 30), Events{}) << "all has been read";
    this->machine.Send("abcdefgh");
    EXPECT_EQ(this->Next(1), (Events{{number, Read, 0}}));
    this->machine.HangUp();
    EXPECT_EQ(this->Next(1, 30), Events{}) << "one READ until Receive(), no CLOSE before it";
    EXPECT_EQ(Receive(number, 3), "abc");
    EXPECT_EQ(this->Next(1), (Events{{number, Read, 0}}));
    EXPECT_EQ(Receive(number), "defgh");
    this->ExpectLast({{number, Close, 0}});
    EXPECT_EQ(Sockets().Close(number), 0);
}

TYPED_TEST_P(SocketContract, OnlyAConnectionThatCanNotBeFails) {
    AddressRecord nobody = this->machine.Address();
    nobody.Address = 0; // on Linux, by itself, this machine
    for (const auto& [address, error] : {std::pair{this->machine.Refusing(), SocketError::ConnectionRefused},
                                         {nobody, SocketError::AddressNotAvailable}}) {
        const SocketNumber number = this->Start(address);
        this->ExpectLast({{number, Connect, error}});
        EXPECT_EQ(Sockets().Send(number, "x"), -1);
    }
    const SocketNumber closed = this->StartAccepted();
    this->machine.HangUp();
    this->ExpectLast({{closed, Connect, 0}, {closed, Write, 0}, {closed, Close, 0}});
    this->StartConnected();
    this->machine.Reset();
    const Events last = this->Next(1);
    ASSERT_EQ(last.size(), 1U);
    EXPECT_EQ(last[0][1], Close); // not every machine says that it was dropped, and nobody looks at it
}

TYPED_TEST_P(SocketContract, NothingOfAClosedSocketArrives) {
    const SocketNumber number = this->StartConnected();
    this->machine.Send("late");
    this->machine.Settle();
    EXPECT_EQ(Sockets().Close(number), 0);
    EXPECT_EQ(this->Next(1, 30), Events{});
    this->machine.HangUp();
    const SocketNumber next = this->StartAccepted();
    this->ExpectLast({{next, Connect, 0}, {next, Write, 0}});
    for (const SocketNumber none : {number == next ? -1 : number, 0, -1, 32000}) {
        EXPECT_EQ(Sockets().Close(none), -1) << none;
        EXPECT_EQ(Sockets().Send(none, "x"), -1) << none;
        EXPECT_EQ(Receive(none), "failed") << none;
    }
}

TYPED_TEST_P(SocketContract, NamesAndNumbers) {
    EXPECT_EQ(Sockets().HostToNetwork(0x1F90), 0x901F);
    EXPECT_EQ(Sockets().AddressFromText("host"), NoAddress);
    const auto lookUp = Sockets().LookUp("127.0.0.1");
    ASSERT_TRUE(lookUp && lookUp->Wait(10000));
    EXPECT_EQ(lookUp->Address().size(), 4U);
    std::string name;
    EXPECT_EQ(Sockets().LocalName(name), 0);
    EXPECT_TRUE(!name.empty() && name.find('\0') == std::string::npos);
    EXPECT_EQ(Sockets().Cleanup(), 0);
}

REGISTER_TYPED_TEST_SUITE_P(SocketContract, AReplyIsReadBitByBitAndTheCloseComesLast, OnlyAConnectionThatCanNotBeFails,
                            NothingOfAClosedSocketArrives, NamesAndNumbers);

// What the system's own reader of addresses makes of a text: the bytes, the first one lowest.
inline void ExpectAddressesAreReadAsOnWindows() {
    for (const std::string text : {"", "256.1.1.1", "1.2.3.4x", "localhost", "1.2.3.4.5", "255.255.255.255"})
        EXPECT_EQ(Sockets().AddressFromText(text), NoAddress) << text;
    for (const auto& [text, address] :
         {std::pair{"127.1", 0x0100007FU}, {"0x7f.1", 0x0100007FU}, {"1.2.3.4 x", 0x04030201U}, {" ", 0U}})
        EXPECT_EQ(Sockets().AddressFromText(text), address) << text;
}

} // namespace tarnwick::test

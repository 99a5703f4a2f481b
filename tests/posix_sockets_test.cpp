#include "LoopbackPeer.h"
#include "contract_sockets.h"
#include "probe/HostLookups.h"
#include "shell/Form2.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <netdb.h>

// In the place of the system's: a name that is found late, and one that is never.
extern "C" int getaddrinfo(const char* name, const char* service, const addrinfo* hints, addrinfo** found) {
    static const auto ofSystem = reinterpret_cast<decltype(&getaddrinfo)>(dlsym(RTLD_NEXT, "getaddrinfo"));
    if (std::string(name) == "dead.example")
        sleep(600); // longer than a test may take
    if (std::string(name) == "late.example") {
        usleep(300000);
        name = hints->ai_family == AF_INET ? "127.0.0.5" : "::5";
    }
    return ofSystem(name, service, hints, found);
}

namespace tarnwick::test {

namespace {

struct PosixSocketMachine : PosixMachine, LoopbackPeer {
    // Until what is on its way is queued.
    void Settle() {
        Sockets.Wait(10000);
        Sockets.Collect();
        EXPECT_TRUE(Loop.HasMessages());
    }
};

INSTANTIATE_TYPED_TEST_SUITE_P(Posix, SocketContract, PosixSocketMachine);

using PosixSocketsTest = SocketContract<PosixSocketMachine>;

TEST_F(PosixSocketsTest, AResetThatACallMeetsFirstIsStillSaidByTheClose) {
    for (const bool sends : {true, false}) {
        const SocketNumber number = StartConnected();
        machine.Reset();
        for (int again = 0; sends && again < 2; ++again) // the second time the system would send a signal
            EXPECT_EQ(Sockets().Send(number, "x"), -1);
        EXPECT_EQ(sends ? "failed" : Receive(number), "failed");
        ExpectLast({{number, Close, SocketError::ConnectionReset}});
    }
    const SocketNumber early = StartAccepted();
    machine.Reset();
    EXPECT_EQ(Sockets().Send(early, "x"), -1);
    ExpectLast({{early, Connect, 0}, {early, Write, 0}, {early, Close, SocketError::ConnectionReset}});
    const SocketNumber number = StartConnected();
    machine.Send("abc");
    machine.Reset();
    EXPECT_EQ(Next(1), (Events{{number, Read, 0}}));
    EXPECT_EQ(Receive(number), "abc");
    ExpectLast({{number, Close, SocketError::ConnectionReset}});
}

TEST_F(PosixSocketsTest, NothingIsHeardOfASilentOrForeignSocketAndOfACopyInAChild) {
    const SocketNumber number = StartConnected();
    const std::int64_t start = machine.Clock.Now();
    machine.Sockets.Wait(30);
    EXPECT_GE(machine.Clock.Now() - start, 29) << "the wait for a silent peer ends at once";
    const auto copy = static_cast<SocketNumber>(fcntl(number, F_DUPFD_CLOEXEC, 0));
    EXPECT_EQ(Sockets().Close(copy), -1);
    EXPECT_EQ(Sockets().Send(copy, "x"), -1);
    EXPECT_EQ(Receive(copy), "failed");
    EXPECT_EQ(Sockets().AsyncSelect(copy, owner->Handle(), SocketMessage, All), -1);
    EXPECT_EQ(Sockets().Connect(copy, {}), -1);
    LingerRecord record;
    std::int32_t length = 0;
    EXPECT_EQ(Sockets().SetOption(copy, LevelSocket, OptionLinger, {1, 0}), -1);
    EXPECT_EQ(Sockets().GetOption(copy, LevelSocket, OptionLinger, record, length), -1);
    EXPECT_EQ(Sockets().Close(number), 0);
    EXPECT_NE(fcntl(copy, F_GETFD), -1);
    machine.Send("x");
    EXPECT_EQ(Next(1, 30), Events{});
    EXPECT_EQ(StartConnected(), number) << "the old one's peer hangs up meanwhile";
    machine.Send("x");
    while (SocketOwner::Got.empty() && machine.Clock.Now() - start < 20000)
        services().Windows.PumpEvents(); // never waits
    EXPECT_EQ(std::exchange(SocketOwner::Got, {}), (Events{{number, Read, 0}}));
    EXPECT_EQ(Receive(number), "x");
    EXPECT_EQ(Next(1, 30), Events{});
    close(copy);
}

TEST_F(PosixSocketsTest, NumbersOfWindowsAreTranslatedAndOthersFail) {
    AddressRecord everybody = machine.Address();
    everybody.Address = NoAddress; // refused by the call itself
    const SocketNumber refused = Start(everybody);
    const Events last = Next(1);
    EXPECT_TRUE(last.size() == 1 && last[0][0] == refused && last[0][2] > 10000);
    for (const auto& [family, type, protocol] : {std::array{10, 1, 6}, {2, 2, 6}, {2, 1, 17}})
        EXPECT_EQ(Sockets().Open(family, type, protocol), -1);
    const int status = InChild([] {
        bool above = true;
        for (const int standard : {2, 1, 0}) {
            close(standard);
            const SocketNumber number = Sockets().Open(2, 1, 6);
            above = above && number > 2 && fcntl(number, F_GETFD) == FD_CLOEXEC && fcntl(standard, F_GETFD) < 0;
        }
        return above ? 0 : 1;
    });
    EXPECT_EQ(status, 0) << "a program that was started without standard files";
    const SocketNumber number = Sockets().Open(2, 1, 6);
    EXPECT_EQ(fcntl(number, F_GETFD), FD_CLOEXEC);
    LingerRecord record = {9, 9};
    std::int32_t length = 0;
    EXPECT_EQ(Sockets().SetOption(number, LevelSocket, OptionLinger, {1, 7}), 0);
    EXPECT_EQ(Sockets().GetOption(number, LevelSocket, OptionLinger, record, length), 0);
    EXPECT_TRUE(record.OnOff == 1 && record.Seconds == 7 && length == 4);
    EXPECT_EQ(Sockets().SetOption(number, SOL_SOCKET, OptionLinger, {1, 0}), -1);
    EXPECT_EQ(Sockets().GetOption(number, LevelSocket, SO_LINGER, record, length), -1);
    EXPECT_EQ(Sockets().Startup(0), 10092);
    EXPECT_EQ(Sockets().Cleanup(), 0);
    EXPECT_EQ(fcntl(number, F_GETFD), -1) << "the end of the network section closes what is open";
    ExpectAddressesAreReadAsOnWindows();
    EXPECT_EQ(Sockets().AddressFromText(std::string("1\0", 2)), 0xFFFFFFFFU);
}

TEST_F(PosixSocketsTest, LeavesNoDescriptorOpen) {
    const auto descriptors = [] { return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {}); };
    const auto before = descriptors();
    EXPECT_GT(PosixSockets(machine.Loop).Open(2, 1, 6), 0);
    EXPECT_EQ(descriptors(), before);
}

TEST_F(PosixSocketsTest, ALateNameIsFoundAndADeadOneIsLeftInTime) {
    const std::int64_t start = machine.Clock.Now();
    HostLookups lookUps;
    EXPECT_EQ(lookUps.AddressOf("late.example", 60000), std::string("\x7F\0\0\5", 4));
    EXPECT_EQ(lookUps.AddressOf("dead.example", 200), "");
    EXPECT_LT(machine.Clock.Now() - start, 5000);
}

// As when the display goes away.
TEST_F(PosixSocketsTest, TheProgramExitsCleanlyWithALookUpUnderWay) {
    constexpr int ownStatus = 7;
    const int status = InChild([] {
        Form2->SOCKET->SOCKET_CONNECT(Form2->Handle(), "dead.example", 80, 50);
        std::exit(ownStatus);
        return 0;
    });
    EXPECT_EQ(status, ownStatus);
}

} // namespace

} // namespace tarnwick::test

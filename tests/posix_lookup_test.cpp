#include "PosixMachine.h"
#include "posix_support.h"
#include "probe/HostLookups.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <net/if.h>
#include <netinet/in.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/mount.h>
#include <sys/socket.h>
#include <thread>

namespace tarnwick::test {
namespace {

constexpr int NotAllowed = 77; // exit status: this machine lets nobody have a network of his own

// A network of this process's own, in which the system asks a name server on loopback.
bool EnterOwnNetwork(const std::string& configuration) {
    WriteFile(configuration, "nameserver 127.0.0.1\n");
    if (unshare(CLONE_NEWUSER | CLONE_NEWNET | CLONE_NEWNS) != 0 ||
        mount(configuration.c_str(), "/etc/resolv.conf", nullptr, MS_BIND, nullptr) != 0)
        return false;
    ifreq loopback = {};
    loopback.ifr_name[0] = 'l';
    loopback.ifr_name[1] = 'o';
    loopback.ifr_flags = IFF_UP;
    return ioctl(socket(AF_INET, SOCK_DGRAM, 0), SIOCSIFFLAGS, &loopback) == 0;
}

// Answers a name that begins with "late" after 300 ms, and any other never.
void ServeNames() {
    const int server = socket(AF_INET, SOCK_DGRAM, 0);
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_port = htons(53);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    bind(server, reinterpret_cast<sockaddr*>(&address), sizeof address);
    std::thread([server] {
        for (;;) {
            char query[512];
            sockaddr_in from = {};
            socklen_t length = sizeof from;
            const auto got = recvfrom(server, query, sizeof query, 0, reinterpret_cast<sockaddr*>(&from), &length);
            std::string reply(query, static_cast<std::size_t>(got));
            if (reply.find("late") == std::string::npos)
                continue;
            reply.replace(2, 6, std::string("\x81\x80\0\1\0\1", 6)); // no error, one answer: the address 127.0.0.5
            reply += std::string("\xC0\x0C\0\1\0\1\0\0\0\0\0\4\x7F\0\0\5", 16);
            std::this_thread::sleep_for(std::chrono::milliseconds(300));
            sendto(server, reply.data(), reply.size(), 0, reinterpret_cast<sockaddr*>(&from), length);
        }
    }).detach();
}

TEST(PosixLookupTest, ALateNameIsFoundAndADeadOneIsLeftInTimeAndDoesNotHoldTheProcess) {
    const TemporaryHome home;
    std::fflush(nullptr); // what is buffered would come out a second time at the end of the child
    const int status = InChild([&home] {
        if (!EnterOwnNetwork(home / "resolv.conf"))
            return NotAllowed;
        ServeNames();
        PosixMachine machine;
        const std::int64_t start = machine.Clock.Now();
        EXPECT_EQ(AddressOfHost("late.example", 20000), std::string("\x7F\0\0\5", 4));
        EXPECT_EQ(AddressOfHost("dead.example", 200), "");
        EXPECT_LT(machine.Clock.Now() - start, 3000); // the system would wait for 10 s
        std::exit(testing::Test::HasFailure() ? 1 : 0);
    });
    if (status == NotAllowed)
        GTEST_SKIP() << "a network and an /etc/resolv.conf of the test's own need user namespaces, which this machine "
                        "doesn't allow";
    EXPECT_EQ(status, 0);
}

} // namespace
} // namespace tarnwick::test

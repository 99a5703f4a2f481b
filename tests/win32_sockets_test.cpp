#include "LoopbackPeer.h"
#include "contract_sockets.h"
#include "win32_support.h"

namespace tarnwick::test {

namespace {

struct Win32SocketMachine : Win32Machine, LoopbackPeer {
    // Until what is on its way is in the window's queue.
    void Settle() {
        MSG queued;
        for (int attempt = 0; attempt < 1000; ++attempt, Sleep(10))
            if (PeekMessageW(&queued, nullptr, SocketMessage, SocketMessage, PM_NOREMOVE))
                return;
        ADD_FAILURE() << "nothing came";
    }
};

INSTANTIATE_TYPED_TEST_SUITE_P(Win32, SocketContract, Win32SocketMachine);

using Win32SocketsTest = SocketContract<Win32SocketMachine>;

TEST_F(Win32SocketsTest, AClosePurgesItsOwnMessagesAndNoOthers) {
    const SocketNumber number = StartConnected();
    const auto post = [this](SocketNumber socket, std::int32_t event) {
        PostMessageW(WindowOf(owner->Handle()), SocketMessage, static_cast<WPARAM>(socket), event);
    };
    post(number, Read);
    post(number + 4, Write);
    post(number + 4, Read);
    EXPECT_EQ(Sockets().Close(number), 0);
    ExpectLast({{number + 4, Write, 0}, {number + 4, Read, 0}});
}

TEST_F(Win32SocketsTest, AddressesAreReadByTheSystem) { ExpectAddressesAreReadAsOnWindows(); }

} // namespace

} // namespace tarnwick::test

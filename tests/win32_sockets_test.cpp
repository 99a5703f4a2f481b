#include "LoopbackPeer.h"
#include "contract_sockets.h"

namespace tarnwick::test {

namespace {

struct Win32SocketMachine : Win32Machine, LoopbackPeer {
    // Until what is on its way is in the window's queue.
    void Settle() { EXPECT_EQ(MsgWaitForMultipleObjects(0, nullptr, FALSE, 10000, QS_POSTMESSAGE), WAIT_OBJECT_0); }
};

INSTANTIATE_TYPED_TEST_SUITE_P(Win32, SocketContract, Win32SocketMachine);

using Win32SocketsTest = SocketContract<Win32SocketMachine>;

TEST_F(Win32SocketsTest, AClosePurgesItsOwnMessagesAndNoOthers) {
    const SocketNumber number = StartConnected();
    for (const auto& [socket, event] : {std::pair{number, Read}, {number + 4, Write}, {number + 4, Read}})
        PostMessageW(WindowOf(owner->Handle()), SocketMessage, static_cast<WPARAM>(socket), event);
    EXPECT_EQ(Sockets().Close(number), 0);
    ExpectLast({{number + 4, Write, 0}, {number + 4, Read, 0}});
}

TEST_F(Win32SocketsTest, AddressesAreReadByTheSystem) { ExpectAddressesAreReadAsOnWindows(); }

} // namespace

} // namespace tarnwick::test

// What Windows alone asks of its files, settings and sockets, beside the contracts.

#include "LoopbackPeer.h"
#include "contract_sockets.h"
#include "contract_storage.h"

namespace tarnwick::test {
namespace {

TEST_F(SettingsContract, ValueThatIsNoTextReadsAsTheDefault) {
    const std::string path = home.Key + "\\Tarnwick\\Preferences";
    const DWORD number = 5;
    RegSetKeyValueA(HKEY_CURRENT_USER, path.c_str(), "Number", REG_DWORD, &number, sizeof number);
    RegSetKeyValueA(HKEY_CURRENT_USER, path.c_str(), "Unended", REG_SZ, "12", 2);
    EXPECT_EQ(Read("Number") + Read("Unended"), "(default)12");
}

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

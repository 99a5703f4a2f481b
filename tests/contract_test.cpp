#include "contract_sockets.h"
#include "contract_windows.h"
#include "headless_person.h"
#include "platform/headless/HeadlessPlatform.h"

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
    void Say(const std::string& text) { Sockets.Deliver(text); }
    std::string Hear() const { return Sockets.Connections.back().Sent; }
    void Hang() { Sockets.Hang(); }
    void Reset() { Sockets.Hang(10054); }
    void Settle() {}
};

} // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(Headless, SocketContract, HeadlessSocketMachine);

std::unique_ptr<Person> MakePerson(SampleWindow& sample) { return std::make_unique<HeadlessPerson>(sample); }

} // namespace tarnwick::test

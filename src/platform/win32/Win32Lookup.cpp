#include "platform/win32/Win32Lookup.h"

#include <winsock2.h>

#include <windows.h>

namespace tarnwick {

namespace {

using Shared = std::shared_ptr<Win32Lookup>;

DWORD WINAPI RunThread(void* argument) {
    const std::unique_ptr<Shared> lookUp(static_cast<Shared*>(argument));
    (*lookUp)->Run();
    return 0;
}

} // namespace

std::shared_ptr<HostLookup> Win32Lookup::Start(const std::string& name) {
    const auto lookUp = std::make_shared<Win32Lookup>(name);
    auto forThread = std::make_unique<Shared>(lookUp);
    lookUp->thread_ = CreateThread(nullptr, 0, RunThread, forThread.get(), 0, nullptr);
    if (lookUp->thread_ == nullptr)
        return nullptr;
    static_cast<void>(forThread.release()); // the thread's from here on
    return lookUp;
}

Win32Lookup::~Win32Lookup() {
    if (thread_ != nullptr)
        CloseHandle(thread_);
}

void Win32Lookup::Run() {
    const hostent* host = gethostbyname(name_.c_str());
    if (host != nullptr && host->h_addr_list[0] != nullptr)
        address_.assign(host->h_addr_list[0], static_cast<std::size_t>(host->h_length));
}

bool Win32Lookup::Wait(std::int64_t ms) {
    return WaitForSingleObject(thread_, static_cast<DWORD>(ms)) == WAIT_OBJECT_0;
}

} // namespace tarnwick

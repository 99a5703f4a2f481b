#pragma once

#include "platform/Services.h"

#include <string_view>

namespace tarnwick {

class Win32Shell final : public ShellService {
public:
    void OpenUrl(WindowHandle owner, const std::string& url) override;
};

// Whether the shell may open the text: a scheme (RFC 3986, 3.1) that no drive and nothing of this machine hides behind,
// ":", and something behind it.
bool IsOpenableUrl(std::string_view text);

// The URL without what a program could take for the end of its argument.
std::string AsOneArgument(std::string_view url);

} // namespace tarnwick

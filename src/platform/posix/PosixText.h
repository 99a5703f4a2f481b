#pragma once

#include "services/Services.h"

namespace tarnwick {

// Texts are UTF-8; bytes that are none stay as they are.
class PosixText final : public TextService {
public:
    std::string Upper(std::string_view text) override;
};

// A key whose bytes compare as the upper-cased UTF-16 units of `text` do: the order of an NTFS folder.
std::string FolderOrderKey(std::string_view text);

} // namespace tarnwick

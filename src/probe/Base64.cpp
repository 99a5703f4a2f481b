#include "probe/Base64.h"

#include <string_view>

namespace tarnwick::Favorites {

namespace {
constexpr std::string_view Symbols = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
}

void Base64Encode(const Bytes& plain, Bytes& encoded) {
    encoded.clear();
    encoded.reserve((plain.size() + 2) / 3 * 4);
    for (std::size_t at = 0; at < plain.size(); at += 3) {
        std::uint32_t group = 0; // three bytes, missing ones as 0
        for (std::size_t byte = 0; byte < 3; ++byte)
            group = group << 8 | (at + byte < plain.size() ? plain[at + byte] : 0U);
        for (std::size_t symbol = 0; symbol < 4; ++symbol) {
            const bool padding = at + symbol > plain.size();
            encoded.push_back(static_cast<std::uint8_t>(padding ? '=' : Symbols[group >> (18 - 6 * symbol) & 63U]));
        }
    }
}

} // namespace tarnwick::Favorites

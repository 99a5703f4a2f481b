#include "platform/posix/PosixText.h"

#include "text/Ascii.h"
#include "text/Utf8.h"

#include <cwctype>
#include <locale.h>

namespace tarnwick {

namespace {

// The letter mapping is Unicode's whatever the user's locale is. No other letter becomes an ASCII one (the dotless i
// and the long s would): Windows keeps them apart too.
char32_t UpperOf(char32_t code) {
    static const locale_t unicode = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    if (code < 0x80)
        return static_cast<char32_t>(AsciiUpper(static_cast<char>(code)));
    if (unicode == nullptr)
        return code;
    const auto upper = static_cast<char32_t>(towupper_l(static_cast<wint_t>(code), unicode));
    return upper < 0x80 ? code : upper;
}

} // namespace

std::string PosixText::Upper(std::string_view text) {
    std::string upper;
    upper.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const Utf8Character character = DecodeUtf8(text, at);
        if (character.Valid)
            AppendUtf8(upper, UpperOf(character.Code));
        else
            upper += text[at];
        at += character.Bytes;
    }
    return upper;
}

std::string FolderOrderKey(std::string_view text) {
    if (IsAscii(text))
        return AsciiUpper(text);
    std::string key;
    key.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const Utf8Character character = DecodeUtf8(text, at);
        at += character.Bytes;
        if (!character.Valid) {
            AppendUtf8(key, 0xDC00 + character.Code); // no text has a lone surrogate: a place of its own
        } else if (character.Code < 0x10000) {
            const char32_t upper = UpperOf(character.Code);
            AppendUtf8(key, upper < 0x10000 ? upper : character.Code);
        } else {
            AppendUtf8(key, 0xD800 + ((character.Code - 0x10000) >> 10U));
            AppendUtf8(key, 0xDC00 + ((character.Code - 0x10000) & 0x3FFU));
        }
    }
    return key;
}

} // namespace tarnwick

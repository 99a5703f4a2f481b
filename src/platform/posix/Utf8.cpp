#include "platform/posix/Utf8.h"

#include <algorithm>
#include <clocale>
#include <cwctype>
#include <locale.h>

namespace tarnwick {

namespace {

constexpr char AsciiUpper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - ('a' - 'A')) : c; }

constexpr bool IsContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; }

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

// Where a sequence is well-formed: the length that its lead byte promises, and the smallest code of that length.
struct Form {
    std::size_t Bytes;
    char32_t Smallest;
    unsigned LeadBits;
};

Form FormOf(unsigned char lead) {
    if (lead < 0x80)
        return {1, 0, 0x7F};
    if ((lead & 0xE0U) == 0xC0U)
        return {2, 0x80, 0x1F};
    if ((lead & 0xF0U) == 0xE0U)
        return {3, 0x800, 0x0F};
    if ((lead & 0xF8U) == 0xF0U)
        return {4, 0x10000, 0x07};
    return {0, 0, 0};
}

} // namespace

Utf8Character DecodeUtf8(std::string_view text, std::size_t at) {
    const auto lead = static_cast<unsigned char>(text[at]);
    const Utf8Character invalid = {lead, 1, false};
    const Form form = FormOf(lead);
    if (form.Bytes == 0 || form.Bytes > text.size() - at)
        return invalid;
    char32_t code = lead & form.LeadBits;
    for (std::size_t i = 1; i < form.Bytes; ++i) {
        if (!IsContinuation(text[at + i]))
            return invalid;
        code = code << 6U | (static_cast<unsigned char>(text[at + i]) & 0x3FU);
    }
    if (code < form.Smallest || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF))
        return invalid;
    return {code, form.Bytes, true};
}

void AppendUtf8(std::string& text, char32_t code) {
    const auto put = [&text](char32_t byte) { text += static_cast<char>(static_cast<unsigned char>(byte)); };
    if (code < 0x80) {
        put(code);
    } else if (code < 0x800) {
        put(0xC0U | code >> 6U);
        put(0x80U | (code & 0x3FU));
    } else if (code < 0x10000) {
        put(0xE0U | code >> 12U);
        put(0x80U | (code >> 6U & 0x3FU));
        put(0x80U | (code & 0x3FU));
    } else {
        put(0xF0U | code >> 18U);
        put(0x80U | (code >> 12U & 0x3FU));
        put(0x80U | (code >> 6U & 0x3FU));
        put(0x80U | (code & 0x3FU));
    }
}

std::string_view CutUtf8(std::string_view text, std::size_t bytes) {
    if (text.size() <= bytes)
        return text;
    std::size_t start = bytes;
    while (start > 0 && bytes - start < 3 && IsContinuation(text[start]))
        --start;
    const bool whole = !DecodeUtf8(text, start).Valid || start + DecodeUtf8(text, start).Bytes <= bytes;
    return text.substr(0, whole ? bytes : start);
}

bool IsAscii(std::string_view text) {
    return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

std::string UpperUtf8(std::string_view text) {
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

bool EqualRegardlessOfCase(std::string_view a, std::string_view b) {
    if (std::ranges::equal(a, b, {}, AsciiUpper, AsciiUpper))
        return true;
    return !IsAscii(a) && !IsAscii(b) && UpperUtf8(a) == UpperUtf8(b);
}

std::string FolderOrderKey(std::string_view text) {
    std::string key;
    if (IsAscii(text)) {
        key.resize(text.size());
        std::ranges::transform(text, key.begin(), AsciiUpper);
        return key;
    }
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

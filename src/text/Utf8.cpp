#include "text/Utf8.h"

namespace tarnwick {

namespace {

constexpr bool IsContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; }

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

} // namespace tarnwick

#include "base/Utf8.h"

#include <algorithm>
#include <array>

namespace Wirefall {

namespace {

constexpr DecodedChar BadByte = {U'?', 1};

// The forms of a character by its first byte. A form shorter than its range of values needs is what
// makes an overlong sequence.
struct Form {
    std::uint8_t FirstLead;
    std::uint8_t LastLead;
    std::uint8_t PayloadBits; // of the first byte
    std::uint8_t Length;
    std::uint32_t Least;
    std::uint32_t Greatest;
};

constexpr std::array<Form, 4> Forms = {{
    {0x00, 0x7f, 0x7f, 1, 0x0, 0x7f},
    {0xc0, 0xdf, 0x1f, 2, 0x80, 0x7ff},
    {0xe0, 0xef, 0x0f, 3, 0x800, 0xffff},
    {0xf0, 0xf7, 0x07, 4, 0x10000, 0x10ffff},
}};

constexpr bool IsSurrogate(std::uint32_t codePoint) {
    return codePoint >= 0xd800 && codePoint <= 0xdfff;
}

struct CaseRow {
    std::uint32_t From;
    std::string_view Upper;
};

constexpr std::array<CaseRow, 5> UpperCase = {{
    {0xe4, "\u00c4"},
    {0xe9, "\u00c9"},
    {0xf6, "\u00d6"},
    {0xfc, "\u00dc"},
    {0x1e9e, "\u00df"},
}};

} // namespace

DecodedChar DecodeUtf8(std::string_view text, std::size_t at) {
    const auto lead = static_cast<std::uint8_t>(text[at]);
    for (const Form& form : Forms) {
        if (lead < form.FirstLead || lead > form.LastLead) {
            continue;
        }
        if (form.Length > text.size() - at) {
            return BadByte;
        }
        std::uint32_t codePoint = lead & form.PayloadBits;
        for (std::size_t i = 1; i < form.Length; ++i) {
            const auto byte = static_cast<std::uint8_t>(text[at + i]);
            if ((byte & 0xc0U) != 0x80U) {
                return BadByte;
            }
            codePoint = (codePoint << 6U) | (byte & 0x3fU);
        }
        if (codePoint < form.Least || codePoint > form.Greatest || IsSurrogate(codePoint)) {
            return BadByte;
        }
        return {codePoint, form.Length};
    }
    return BadByte;
}

std::string Utf8ToUpper(std::string_view text) {
    std::string upper;
    upper.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const auto [codePoint, length] = DecodeUtf8(text, at);
        const auto row =
            std::find_if(UpperCase.begin(), UpperCase.end(),
                         [codePoint = codePoint](const CaseRow& r) { return r.From == codePoint; });
        if (codePoint >= U'a' && codePoint <= U'z') {
            upper += static_cast<char>(codePoint - U'a' + U'A');
        } else if (row != UpperCase.end()) {
            upper += row->Upper;
        } else if (length == 1) {
            upper += static_cast<char>(codePoint);
        } else {
            upper += text.substr(at, length);
        }
        at += length;
    }
    return upper;
}

} // namespace Wirefall

#pragma once

// The one rule by which everything that touches text reads UTF-8. A bad byte never fails: it reads
// as a question mark, alone, and the next byte starts anew, so a broken sequence of three bytes can
// give three of them.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace Wirefall {

struct DecodedChar {
    std::uint32_t CodePoint;
    std::size_t Length; ///< Bytes consumed, 1 to 4.
};

/// The character at byte `at`, which must be inside the text. Lone continuation bytes, overlong
/// forms, surrogates, values above U+10FFFF and cut sequences are bad bytes.
DecodedChar DecodeUtf8(std::string_view text, std::size_t at);

/// Upper case of ASCII and of the accented letters the font has; everything else is kept. The
/// capital sharp s comes back as the small one, since both draw alike and the small one is what
/// texts contain. Bad bytes become question marks.
std::string Utf8ToUpper(std::string_view text);

} // namespace Wirefall

#include "velini/internal/WideText.h"

#include "velini/VelINIStream.h"

#include <cwchar>
#include <locale>

// The standard has deprecated its wide conversion and the facets below it without a successor. What
// the library takes as well-formed text is what this conversion takes, so it stays until there is
// one. Nothing else in the library uses it.
#if defined(__GNUC__)
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
#elif defined(_MSC_VER)
#pragma warning(disable : 4996)
#endif

namespace velINI {

template <class Character>
// NOLINTNEXTLINE(cppcoreguidelines-virtual-class-destructor): virtual in its base
class velINIStream::velINICodeCvt : public std::codecvt<Character, char, std::mbstate_t> {
public:
    ~velINICodeCvt() override = default;
};

template class velINIStream::velINICodeCvt<char16_t>;
template class velINIStream::velINICodeCvt<char32_t>;

namespace Internal {
namespace {

template <class Character>
using Conversion = std::wstring_convert<velINIStream::velINICodeCvt<Character>, Character>;

template <class Character>
std::string ToUtf8(std::basic_string_view<Character> text) {
    return Conversion<Character>().to_bytes(text.data(), text.data() + text.size());
}

template <class Character>
std::basic_string<Character> FromUtf8(std::string_view text) {
    return Conversion<Character>().from_bytes(text.data(), text.data() + text.size());
}

} // namespace

std::string Utf8FromUtf16(std::u16string_view text) { return ToUtf8(text); }

std::string Utf8FromUtf32(std::u32string_view text) { return ToUtf8(text); }

std::u16string Utf16FromUtf8(std::string_view text) { return FromUtf8<char16_t>(text); }

std::u32string Utf32FromUtf8(std::string_view text) { return FromUtf8<char32_t>(text); }

} // namespace Internal
} // namespace velINI

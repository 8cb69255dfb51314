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

} // namespace

std::string Utf8FromUtf16(std::u16string_view text) {
    return Conversion<char16_t>().to_bytes(text.data(), text.data() + text.size());
}

std::string Utf8FromUtf32(std::u32string_view text) {
    return Conversion<char32_t>().to_bytes(text.data(), text.data() + text.size());
}

std::u16string Utf16FromUtf8(std::string_view text) {
    return Conversion<char16_t>().from_bytes(text.data(), text.data() + text.size());
}

std::u32string Utf32FromUtf8(std::string_view text) {
    return Conversion<char32_t>().from_bytes(text.data(), text.data() + text.size());
}

} // namespace Internal
} // namespace velINI

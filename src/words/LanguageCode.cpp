#include "words/LanguageCode.h"

#include "base/TextValues.h"

#include <cctype>

namespace Wirefall {

std::string NormalizeLanguageCode(std::string_view code) {
    std::string normal = ToLowerCopy(code);
    std::erase_if(normal, [](unsigned char c) { return std::isspace(c) != 0; });
    return normal.empty() ? DefaultLanguageCode : normal;
}

} // namespace Wirefall

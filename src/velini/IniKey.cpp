#include "velini/IniKey.h"

#include "velini/internal/Entries.h"

#include <stdexcept>

namespace velINI {

void IniKey::SetKeyComment(std::string_view text) {
    if (text.empty()) {
        Comment.reset();
    } else {
        Comment = std::string(text);
    }
}

void IniKey::SetElement(std::string_view index, std::string_view value, bool quoted,
                        bool hasComment, std::string_view comment) {
    const std::string name =
        index.empty() ? Internal::ElementNumbers().Next(*this) : std::string(index);
    const std::string ownComment(comment); // it may be that of an element
    Internal::StoreElement(*this, Internal::PositionOf(Elements, name), name, std::string(value),
                           quoted, hasComment, ownComment);
}

std::vector<IniKey>& Elements(IniKey& key) {
    if (key.Kind != KeyKind::Array) {
        throw std::runtime_error("Data is not of type array!");
    }
    return key.Elements;
}

const std::vector<IniKey>& Elements(const IniKey& key) {
    if (key.Kind != KeyKind::Array) {
        throw std::runtime_error("Data is not of type array!");
    }
    return key.Elements;
}

} // namespace velINI

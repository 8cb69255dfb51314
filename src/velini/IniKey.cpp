#include "velini/IniKey.h"

#include "velini/internal/Entries.h"

#include <stdexcept>
#include <utility>

namespace velINI {

void IniKey::SetElement(std::string_view index, std::string_view value, bool quoted,
                        bool hasComment, std::string_view comment) {
    // The texts may be those of an element, which moves when another joins it.
    const std::string name = index.empty() ? Internal::NextElement(*this) : std::string(index);
    const std::string ownValue(value);
    const std::string ownComment(comment);
    std::size_t comparisons = 0;
    Internal::StoreElement(*this, {name, ownValue, quoted, hasComment, ownComment}, comparisons);
}

const ElementList& Elements(const IniKey& key) {
    if (key.Kind != KeyKind::Array) {
        throw std::runtime_error("Data is not of type array!");
    }
    return key.Elements;
}

ElementList& Elements(IniKey& key) {
    return const_cast<ElementList&>(Elements(std::as_const(key)));
}

} // namespace velINI

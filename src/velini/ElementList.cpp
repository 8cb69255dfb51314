#include "velini/ElementList.h"

#include "velini/IniKey.h"

namespace velINI {

ElementList::ElementList(const std::vector<IniKey>& elements) {
    if (!elements.empty()) {
        Filled().Elements = elements;
    }
}

ElementList::ElementList(const ElementList& other) : ElementList(other.List()) {}

ElementList& ElementList::operator=(const ElementList& other) { return *this = ElementList(other); }

ElementList::Storage& ElementList::Filled() {
    if (Content == nullptr) {
        Content = std::make_unique<Storage>();
    }
    return *Content;
}

std::vector<IniKey>& ElementList::List() { return Filled().Elements; }

const std::vector<IniKey>& ElementList::None() {
    static const std::vector<IniKey> none;
    return none;
}

Internal::NameIndex& ElementList::Index() { return Filled().Index; }

bool operator==(const ElementList& left, const ElementList& right) {
    return left.List() == right.List();
}

} // namespace velINI

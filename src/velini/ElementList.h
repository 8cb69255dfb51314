#pragma once

// The elements of an array, in file order. It is used like a std::vector<IniKey> and lends itself
// as one, but takes no more room than a pointer where nothing is: most entries are no arrays. It
// keeps the index by which an element is found.
//
// Its functions are those of std::vector; velini/IniKey.h has their bodies.

#include <cstddef>
#include <memory>
#include <vector>

namespace velINI {

struct IniKey;

namespace Internal {

class NameIndex;

} // namespace Internal

class ElementList {
public:
    // NOLINTBEGIN(readability-identifier-naming): the names of the standard
    using value_type = IniKey;
    using iterator = std::vector<IniKey>::iterator;
    using const_iterator = std::vector<IniKey>::const_iterator;

    ElementList() noexcept;
    ElementList(const std::vector<IniKey>& elements);
    ElementList(const ElementList& other);
    ElementList(ElementList&& other) noexcept;
    ElementList& operator=(const ElementList& other);
    ElementList& operator=(ElementList&& other) noexcept;
    ~ElementList();

    /// The elements as the vector that they are kept in. Good until the list is assigned to.
    std::vector<IniKey>& List();
    const std::vector<IniKey>& List() const;
    operator std::vector<IniKey>&() { return List(); }
    operator const std::vector<IniKey>&() const { return List(); }

    [[nodiscard]] bool empty() const { return Content == nullptr || List().empty(); }
    std::size_t size() const;
    iterator begin();
    iterator end();
    const_iterator begin() const;
    const_iterator end() const;
    IniKey& operator[](std::size_t position);
    const IniKey& operator[](std::size_t position) const;
    IniKey& at(std::size_t position);
    const IniKey& at(std::size_t position) const;
    IniKey& front();
    const IniKey& front() const;
    IniKey& back();
    const IniKey& back() const;
    void push_back(const IniKey& element);
    IniKey& emplace_back();
    void pop_back();
    iterator insert(const_iterator place, const IniKey& element);
    iterator erase(const_iterator place);
    void clear();
    void reserve(std::size_t count);
    // NOLINTEND(readability-identifier-naming)

    /// Finds the elements by name; of no use to callers.
    Internal::NameIndex& Index();

    friend bool operator==(const ElementList& left, const ElementList& right);

private:
    struct Storage;

    Storage& Filled();
    static const std::vector<IniKey>& None();

    std::unique_ptr<Storage> Content; // missing in an entry that never had elements
};

} // namespace velINI

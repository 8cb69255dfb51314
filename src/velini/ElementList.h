#pragma once

// The elements of an array, in file order. It is used like the std::vector that it keeps them in
// and lends itself as one, but takes no more room than a pointer where nothing is: most entries are
// no arrays. It keeps the index by which an element is found.
//
// It is a template because an entry is only complete when its elements are: IniKey.h names the one
// use of it.

#include "velini/internal/NameIndex.h"

#include <cstddef>
#include <initializer_list>
#include <memory>
#include <utility>
#include <vector>

namespace velINI {

template <class Record>
class LeanList {
public:
    // NOLINTBEGIN(readability-identifier-naming): the names of the standard
    using value_type = Record;
    using iterator = typename std::vector<Record>::iterator;
    using const_iterator = typename std::vector<Record>::const_iterator;

    LeanList() noexcept = default;
    LeanList(std::vector<Record> records) {
        if (!records.empty()) {
            List() = std::move(records);
        }
    }
    LeanList(std::initializer_list<Record> records) : LeanList(std::vector<Record>(records)) {}
    LeanList(const LeanList& other) : LeanList(other.List()) {}
    LeanList(LeanList&&) noexcept = default;
    LeanList& operator=(LeanList other) noexcept {
        Content = std::move(other.Content);
        return *this;
    }
    ~LeanList() = default;

    /// The vector itself. Good until the list is assigned to or cleared.
    std::vector<Record>& List() { return Filled().Records; }
    const std::vector<Record>& List() const {
        static const std::vector<Record> none;
        return Content == nullptr ? none : Content->Records;
    }
    operator std::vector<Record>&() { return List(); }
    operator const std::vector<Record>&() const { return List(); }

    [[nodiscard]] bool empty() const { return size() == 0; }
    std::size_t size() const { return Content == nullptr ? 0 : Content->Records.size(); }
    iterator begin() { return Content == nullptr ? iterator() : Content->Records.begin(); }
    iterator end() { return Content == nullptr ? iterator() : Content->Records.end(); }
    const_iterator begin() const {
        return Content == nullptr ? const_iterator() : Content->Records.cbegin();
    }
    const_iterator end() const {
        return Content == nullptr ? const_iterator() : Content->Records.cend();
    }
    Record& operator[](std::size_t position) { return Content->Records[position]; }
    const Record& operator[](std::size_t position) const { return Content->Records[position]; }
    Record& at(std::size_t position) { return List().at(position); }
    const Record& at(std::size_t position) const { return List().at(position); }
    Record& front() { return *begin(); }
    const Record& front() const { return *begin(); }
    Record& back() { return Content->Records.back(); }
    const Record& back() const { return Content->Records.back(); }
    void push_back(Record record) { List().push_back(std::move(record)); }
    Record& emplace_back() { return List().emplace_back(); }
    void pop_back() { List().pop_back(); }
    iterator insert(const_iterator place, Record record) {
        const std::ptrdiff_t position = place - std::as_const(*this).begin();
        return List().insert(List().begin() + position, std::move(record));
    }
    iterator erase(const_iterator place) { return List().erase(place); }
    void clear() { *this = LeanList(); }
    // NOLINTEND(readability-identifier-naming)

    /// Finds the records by name; of no use to callers.
    Internal::NameIndex& Index() { return Filled().Index; }

    friend bool operator==(const LeanList& left, const LeanList& right) {
        return left.List() == right.List();
    }

private:
    struct Storage {
        std::vector<Record> Records;
        Internal::NameIndex Index;
    };

    Storage& Filled() {
        if (Content == nullptr) {
            Content = std::make_unique<Storage>();
        }
        return *Content;
    }

    std::unique_ptr<Storage> Content; // missing in an entry that never had elements
};

} // namespace velINI

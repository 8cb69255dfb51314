#pragma once

// Tables with a row for each enumerator, in the enumeration's order. A plain array would be filled
// up with empty rows when an enumerator is added; a table made by TableBy does not compile then.

#include <array>
#include <cstddef>
#include <string_view>

namespace Wirefall {

/// Whether the value has a name in its enumeration, which needs a fixed underlying type. Compilers
/// spell a value that has one by its name, Color::Red, and every other one as a cast, (Color)5.
template <auto Value>
constexpr bool IsEnumerator() {
#if defined(_MSC_VER) && !defined(__clang__)
    const std::string_view spelling = __FUNCSIG__;
    const std::string_view value = spelling.substr(0, spelling.rfind('>'));
#else
    const std::string_view value = __PRETTY_FUNCTION__;
#endif
    const char first = value[value.find_last_of("<:) ") + 1];
    return first != '-' && (first < '0' || first > '9');
}

template <typename Enum, std::size_t First = 0>
constexpr std::size_t CountEnumerators() {
    if constexpr (IsEnumerator<static_cast<Enum>(First)>()) {
        return CountEnumerators<Enum, First + 1>();
    } else {
        return First;
    }
}

/// How many enumerators an enumeration has that counts up from 0 without gaps.
template <typename Enum>
inline constexpr std::size_t EnumCount = CountEnumerators<Enum>();

template <typename Enum, typename Row>
struct EnumTable : std::array<Row, EnumCount<Enum>> {
    using Array = std::array<Row, EnumCount<Enum>>;

    /// The row of an enumerator.
    constexpr const Row& operator[](Enum value) const {
        return Rows()[static_cast<std::size_t>(value)];
    }

    /// The row, or null for a value that is no enumerator, as a damaged file may hold.
    constexpr const Row* Find(Enum value) const {
        const auto index = static_cast<std::size_t>(value);
        return index < this->size() ? &Rows()[index] : nullptr;
    }

    /// The rows by their place.
    constexpr const Array& Rows() const { return *this; }
};

/// The table of these rows: TableBy<Color, const char*>({"red", "green"}). There must be exactly as
/// many as the enumeration has enumerators.
template <typename Enum, typename Row, std::size_t Count>
constexpr EnumTable<Enum, Row>
TableBy(const Row (&rows)[Count]) { // NOLINT(modernize-avoid-c-arrays)
    static_assert(Count == EnumCount<Enum>, "a row for each enumerator");
    EnumTable<Enum, Row> table{};
    for (std::size_t i = 0; i < Count; ++i) {
        table.data()[i] = rows[i];
    }
    return table;
}

} // namespace Wirefall

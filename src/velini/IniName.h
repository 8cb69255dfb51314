#pragma once

// The name of a section or of an entry. It reads like a std::string and can be assigned to at any
// time. What it adds: when an index counts on the name being what it is, a change tells the index
// (a new text, a move away, the end of the name). That is how lookups in long lists are fast and
// still right whatever was edited in the records directly.

#include <atomic>
#include <concepts>
#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>

namespace velINI {

namespace Internal {

class NameIndex;

/// What the names that one index counts on have in common. Watches are never freed, only used
/// again, so that a name may outlive the index.
struct NameWatch {
    std::atomic<bool> Changed = false;
    NameWatch* NextFree = nullptr;
};

} // namespace Internal

class IniName {
public:
    IniName() = default;
    IniName(std::string text) noexcept : Characters(std::move(text)) {}
    IniName(std::string_view text) : Characters(text) {}
    IniName(const char* text) : Characters(text) {}

    /// Nothing counts on a copy, nor on what was moved.
    IniName(const IniName& other) : Characters(other.Characters) {}
    IniName(IniName&& other) noexcept : Characters(std::move(other.Characters)) { other.Tell(); }
    ~IniName() { Tell(); }

    IniName& operator=(IniName other) noexcept {
        Tell();
        Characters = std::move(other.Characters);
        return *this;
    }

    const std::string& Text() const { return Characters; }
    operator const std::string&() const { return Characters; }
    operator std::string_view() const { return Characters; }

    // NOLINTBEGIN(readability-identifier-naming): the names of the standard
    [[nodiscard]] bool empty() const { return Characters.empty(); }
    std::size_t size() const { return Characters.size(); }
    const char* data() const { return Characters.data(); }
    const char* c_str() const { return Characters.c_str(); }
    std::string::const_iterator begin() const { return Characters.begin(); }
    std::string::const_iterator end() const { return Characters.end(); }
    char operator[](std::size_t position) const { return Characters[position]; }
    bool starts_with(std::string_view prefix) const { return Characters.starts_with(prefix); }
    bool ends_with(std::string_view suffix) const { return Characters.ends_with(suffix); }
    std::size_t find(std::string_view part, std::size_t begin = 0) const {
        return Characters.find(part, begin);
    }
    std::string substr(std::size_t begin, std::size_t count = std::string::npos) const {
        return Characters.substr(begin, count);
    }
    // NOLINTEND(readability-identifier-naming)

    friend bool operator==(const IniName& name, std::string_view text) {
        return name.Characters == text;
    }
    template <std::same_as<IniName> Name>
    friend bool operator==(const Name& left, const Name& right) {
        return left.Characters == right.Characters;
    }
    friend std::ostream& operator<<(std::ostream& out, const IniName& name) {
        return out << name.Characters;
    }

private:
    friend class Internal::NameIndex;

    void Tell() {
        if (Watch != nullptr) {
            Watch->Changed.store(true, std::memory_order_relaxed);
            Watch = nullptr;
        }
    }

    void WatchFor(Internal::NameWatch* watch) {
        if (Watch != watch) {
            Tell();
            Watch = watch;
        }
    }

    std::string Characters;
    Internal::NameWatch* Watch = nullptr;
};

} // namespace velINI

#pragma once

// The name of a section or of an entry. It reads like a std::string and can be assigned to at any
// time. What it adds: when an index counts on the name being what it is, a change tells the index
// (a new text, a move away, the end of the name). That is how lookups in long lists are fast and
// still right whatever was edited in the records directly.

#include <atomic>
#include <concepts>
#include <cstddef>
#include <iosfwd>
#include <string>
#include <string_view>
#include <type_traits>
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
    IniName(std::string text) noexcept : text_(std::move(text)) {}
    IniName(std::string_view text) : text_(text) {}
    IniName(const char* text) : text_(text) {}

    /// Nothing counts on a copy, nor on what was moved.
    IniName(const IniName& other) : text_(other.text_) {}
    IniName(IniName&& other) noexcept : text_(std::move(other.text_)) { other.Tell(); }
    ~IniName() { Tell(); }

    IniName& operator=(const IniName& other) {
        if (this != &other) {
            Tell();
            text_ = other.text_;
        }
        return *this;
    }
    IniName& operator=(IniName&& other) noexcept {
        Tell();
        other.Tell();
        text_ = std::move(other.text_);
        return *this;
    }

    template <class Text>
    requires(std::convertible_to<const Text&, std::string_view> &&
             !std::same_as<Text, IniName>) IniName&
    operator=(const Text& text) {
        Tell();
        text_ = std::string_view(text);
        return *this;
    }

    operator const std::string&() const { return text_; }
    operator std::string_view() const { return text_; }

    const std::string& Text() const { return text_; }

    // What is most asked of a string, by the names that the standard has for it.

    // NOLINTBEGIN(readability-identifier-naming): the names of the standard
    [[nodiscard]] bool empty() const { return text_.empty(); }
    std::size_t size() const { return text_.size(); }
    const char* data() const { return text_.data(); }
    const char* c_str() const { return text_.c_str(); }
    std::string::const_iterator begin() const { return text_.begin(); }
    std::string::const_iterator end() const { return text_.end(); }
    char operator[](std::size_t position) const { return text_[position]; }
    bool starts_with(std::string_view prefix) const { return text_.starts_with(prefix); }
    bool ends_with(std::string_view suffix) const { return text_.ends_with(suffix); }
    std::size_t find(std::string_view part) const { return text_.find(part); }
    std::string substr(std::size_t begin, std::size_t count = std::string::npos) const {
        return text_.substr(begin, count);
    }
    // NOLINTEND(readability-identifier-naming)

    friend bool operator==(const IniName& name, std::string_view text) {
        return name.text_ == text;
    }
    template <std::same_as<IniName> Name>
    friend bool operator==(const Name& left, const Name& right) {
        return left.text_ == right.text_;
    }
    friend std::ostream& operator<<(std::ostream& out, const IniName& name);

private:
    friend class Internal::NameIndex;

    void Tell() {
        if (watch_ != nullptr) {
            watch_->Changed.store(true, std::memory_order_relaxed);
            watch_ = nullptr;
        }
    }

    void WatchFor(Internal::NameWatch* watch) {
        if (watch_ != watch) {
            Tell();
            watch_ = watch;
        }
    }

    std::string text_;
    Internal::NameWatch* watch_ = nullptr;
};

} // namespace velINI

#pragma once

// A text that may be missing, which is not the same as an empty one. It is used like a
// std::optional<std::string> and converts from and to it, but takes no more room than a pointer
// where nothing is: most entries of a file have no comment behind them.

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace velINI {

class OptionalText {
public:
    OptionalText() noexcept = default;
    OptionalText(std::nullopt_t) noexcept {}
    OptionalText(std::string text) : Text(std::make_unique<std::string>(std::move(text))) {}
    OptionalText(std::string_view text) : OptionalText(std::string(text)) {}
    OptionalText(const char* text) : OptionalText(std::string(text)) {}
    OptionalText(const std::optional<std::string>& text)
        : Text(text ? std::make_unique<std::string>(*text) : nullptr) {}
    OptionalText(const OptionalText& other)
        : Text(other.Text ? std::make_unique<std::string>(*other.Text) : nullptr) {}
    OptionalText(OptionalText&&) noexcept = default;
    OptionalText& operator=(const OptionalText& other) { return *this = OptionalText(other); }
    OptionalText& operator=(OptionalText&&) noexcept = default;
    ~OptionalText() = default;

    operator std::optional<std::string>() const {
        return Text ? std::optional<std::string>(*Text) : std::nullopt;
    }

    // By the names that std::optional has for them.

    // NOLINTBEGIN(readability-identifier-naming): the names of the standard
    [[nodiscard]] bool has_value() const noexcept { return Text != nullptr; }
    explicit operator bool() const noexcept { return Text != nullptr; }
    std::string& operator*() { return *Text; }
    const std::string& operator*() const { return *Text; }
    std::string* operator->() { return Text.get(); }
    const std::string* operator->() const { return Text.get(); }

    /// Raises std::bad_optional_access when there is no text.
    const std::string& value() const { return Text ? *Text : throw std::bad_optional_access(); }
    std::string value_or(std::string_view otherwise) const {
        return Text ? *Text : std::string(otherwise);
    }
    void reset() noexcept { Text.reset(); }
    // NOLINTEND(readability-identifier-naming)

    friend bool operator==(const OptionalText& left, const OptionalText& right) {
        return left.Text && right.Text ? *left.Text == *right.Text
                                       : left.has_value() == right.has_value();
    }
    friend bool operator==(const OptionalText& left, std::nullopt_t) { return !left.Text; }
    friend bool operator==(const OptionalText& left, const char* right) {
        return left.Text && *left.Text == right;
    }

private:
    std::unique_ptr<std::string> Text;
};

} // namespace velINI

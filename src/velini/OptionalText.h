#pragma once

// A text that may be missing, which is not the same as an empty one. It is used like a
// std::optional<std::string> and converts from and to it, but takes no more room than a pointer
// where nothing is: most entries of a file have no comment behind them.

#include <concepts>
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
    template <std::convertible_to<std::string_view> Source>
    OptionalText(const Source& text)
        : Text(std::make_unique<std::string>(std::string_view(text))) {}
    OptionalText(const std::optional<std::string>& text)
        : Text(text ? std::make_unique<std::string>(*text) : nullptr) {}
    OptionalText(const OptionalText& other)
        : Text(other.Text ? std::make_unique<std::string>(*other.Text) : nullptr) {}
    OptionalText(OptionalText&&) noexcept = default;
    OptionalText& operator=(OptionalText other) noexcept {
        Text = std::move(other.Text);
        return *this;
    }
    ~OptionalText() = default;

    void SetUnlessEmpty(std::string_view text) {
        *this = text.empty() ? OptionalText() : OptionalText(text);
    }

    operator std::optional<std::string>() const {
        return Text ? std::optional<std::string>(*Text) : std::nullopt;
    }

    // NOLINTBEGIN(readability-identifier-naming): the names of the standard
    [[nodiscard]] bool has_value() const noexcept { return Text != nullptr; }
    explicit operator bool() const noexcept { return has_value(); }
    std::string& operator*() { return *Text; }
    const std::string& operator*() const { return *Text; }
    std::string* operator->() { return Text.get(); }
    const std::string* operator->() const { return Text.get(); }
    /// Raises std::bad_optional_access when there is no text.
    const std::string& value() const { return Text ? *Text : throw std::bad_optional_access(); }
    std::string value_or(std::string_view other) const {
        return std::string(View().value_or(other));
    }
    void reset() noexcept { Text.reset(); }
    // NOLINTEND(readability-identifier-naming)

    friend bool operator==(const OptionalText& left, const OptionalText& right) {
        return left.View() == right.View();
    }
    friend bool operator==(const OptionalText& left, const std::optional<std::string>& right) {
        return left.View() == right;
    }
    template <class Other>
    requires(std::convertible_to<const Other&, std::string_view> ||
             std::same_as<Other, std::nullopt_t>) friend bool
    operator==(const OptionalText& left, const Other& right) {
        return left.View() == right;
    }

private:
    std::optional<std::string_view> View() const {
        return Text ? std::optional<std::string_view>(*Text) : std::nullopt;
    }

    std::unique_ptr<std::string> Text;
};

} // namespace velINI

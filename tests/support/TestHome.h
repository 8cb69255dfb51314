#pragma once

// A home of its own for a test that starts the game: an empty folder for what the game stores, and
// SDL's dummy drivers, so that nothing of the real user is read or written and no device is needed.

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Wirefall::Testing {

/// Sets an environment variable for the process and for SDL, and puts back what it was at the end.
class ScopedVariable {
public:
    /// Without a value the variable is not set.
    ScopedVariable(const char* name, const std::optional<std::string>& value);
    ~ScopedVariable();
    ScopedVariable(const ScopedVariable&) = delete;
    ScopedVariable& operator=(const ScopedVariable&) = delete;

private:
    std::string Name;
    std::optional<std::string> Before;
};

/// See above. Folder() is XDG_DATA_HOME and is removed in the end.
class TestHome {
public:
    TestHome();
    ~TestHome();
    TestHome(const TestHome&) = delete;
    TestHome& operator=(const TestHome&) = delete;

    const std::filesystem::path& Folder() const { return Path; }

private:
    std::filesystem::path Path;
    std::vector<std::unique_ptr<ScopedVariable>> Variables;
};

} // namespace Wirefall::Testing

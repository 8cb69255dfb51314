#pragma once

// A program that runs beside the test: the game itself, the X server it draws on, the tool that
// presses its keys. It never outlives the test, not even one that crashes or is killed.

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>
#include <sys/types.h>
#include <utility>
#include <vector>

namespace Wirefall::Testing {

/// A variable and its value; no value removes it.
using EnvironmentChange = std::pair<std::string, std::optional<std::string>>;

struct ProgramSpec {
    std::vector<std::string> Arguments;         ///< The first is a path, as FindProgram gives it.
    std::vector<EnvironmentChange> Environment; ///< Added to the test's own, in order.
    std::filesystem::path Output;               ///< Gets what it prints, to either stream.
};

/// The full path of a program on the PATH. Throws std::runtime_error when it is not there, naming
/// the package to install.
std::string FindProgram(const std::string& name, const std::string& package);

class ChildProgram {
public:
    /// Throws std::runtime_error when it cannot be started. `inheritedFd`, if given, stays open in
    /// the program under the same number.
    explicit ChildProgram(const ProgramSpec& spec, int inheritedFd = -1);
    ~ChildProgram();
    ChildProgram(const ChildProgram&) = delete;
    ChildProgram& operator=(const ChildProgram&) = delete;
    ChildProgram(ChildProgram&&) = delete;
    ChildProgram& operator=(ChildProgram&&) = delete;

    /// Its exit code once it has ended, or 128 and the number of the signal that ended it.
    std::optional<int> ExitCode();

    /// The same, given that much time to end.
    std::optional<int> WaitForExit(std::chrono::milliseconds limit);

private:
    pid_t Pid = -1;
    std::optional<int> Code;
};

} // namespace Wirefall::Testing

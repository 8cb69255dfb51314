#include "e2e/ChildProgram.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <sstream>
#include <stdexcept>
#include <string_view>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <system_error>
#include <thread>
#include <unistd.h>

namespace Wirefall::Testing {

namespace {

constexpr auto PollPause = std::chrono::milliseconds(2);
constexpr int CannotExecute = 127;

std::string NameOf(const std::string& setting) { return setting.substr(0, setting.find('=')); }

std::vector<std::string> ChangedEnvironment(const std::vector<EnvironmentChange>& changes) {
    std::vector<std::string> settings;
    for (char** setting = environ; *setting != nullptr; ++setting) {
        settings.emplace_back(*setting);
    }
    for (const EnvironmentChange& change : changes) {
        std::erase_if(settings, [&](const std::string& s) { return NameOf(s) == change.first; });
        if (change.second) {
            settings.push_back(change.first);
            settings.back().append("=").append(*change.second);
        }
    }
    return settings;
}

std::vector<char*> PointersTo(std::vector<std::string>& strings) {
    std::vector<char*> pointers;
    pointers.reserve(strings.size() + 1);
    for (std::string& string : strings) {
        pointers.push_back(string.data());
    }
    pointers.push_back(nullptr);
    return pointers;
}

// Between fork and exec only calls that are safe in a signal handler.
[[noreturn]] void Become(const std::vector<char*>& arguments, const std::vector<char*>& environment,
                         int output, int inheritedFd, pid_t parent) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != parent) {
        _exit(CannotExecute);
    }
    dup2(output, STDOUT_FILENO);
    dup2(output, STDERR_FILENO);
    if (inheritedFd >= 0) {
        fcntl(inheritedFd, F_SETFD, 0);
    }
    execve(arguments[0], arguments.data(), environment.data());
    _exit(CannotExecute);
}

} // namespace

std::string FindProgram(const std::string& name, const std::string& package) {
    const char* const path = std::getenv("PATH");
    std::istringstream folders(path != nullptr ? path : "");
    for (std::string folder; std::getline(folders, folder, ':');) {
        std::string candidate = (std::filesystem::path(folder) / name).string();
        if (access(candidate.c_str(), X_OK) == 0) {
            return candidate;
        }
    }
    throw std::runtime_error("The end-to-end tests need the program " + name +
                             ", which is not on the PATH; install the package " + package);
}

ChildProgram::ChildProgram(const ProgramSpec& spec, int inheritedFd) {
    std::vector<std::string> arguments = spec.Arguments;
    std::vector<std::string> environment = ChangedEnvironment(spec.Environment);
    const std::vector<char*> argumentPointers = PointersTo(arguments);
    const std::vector<char*> environmentPointers = PointersTo(environment);
    const int output = open(spec.Output.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
    if (output < 0) {
        throw std::system_error(errno, std::generic_category(), spec.Output.string());
    }
    const pid_t parent = getpid();
    Pid = fork();
    if (Pid == 0) {
        Become(argumentPointers, environmentPointers, output, inheritedFd, parent);
    }
    const int error = errno;
    close(output);
    if (Pid < 0) {
        throw std::system_error(error, std::generic_category(), "fork");
    }
}

ChildProgram::~ChildProgram() {
    if (!ExitCode()) {
        kill(Pid, SIGTERM);
        if (!WaitForExit(std::chrono::seconds(5))) {
            kill(Pid, SIGKILL);
            waitpid(Pid, nullptr, 0);
        }
    }
}

std::optional<int> ChildProgram::ExitCode() {
    int status = 0;
    if (!Code && waitpid(Pid, &status, WNOHANG) == Pid) {
        Code = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    }
    return Code;
}

std::optional<int> ChildProgram::WaitForExit(std::chrono::milliseconds limit) {
    const auto end = std::chrono::steady_clock::now() + limit;
    while (!ExitCode() && std::chrono::steady_clock::now() < end) {
        std::this_thread::sleep_for(PollPause);
    }
    return ExitCode();
}

} // namespace Wirefall::Testing

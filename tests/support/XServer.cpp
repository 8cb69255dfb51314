#include "support/XServer.h"

#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <fstream>
#include <spawn.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace Wirefall {

namespace {

std::vector<std::string> ServerArguments(const std::vector<ScreenSize>& screens) {
    // It ends with its last client, so a test that crashes leaves none behind.
    std::vector<std::string> arguments = {"Xvfb",      "-displayfd", "1",
                                          "-nolisten", "tcp",        "-terminate"};
    for (std::size_t i = 0; i < screens.size(); ++i) {
        arguments.insert(arguments.end(), {"-screen", std::to_string(i),
                                           std::to_string(screens[i].Width) + "x" +
                                               std::to_string(screens[i].Height) + "x24"});
    }
    return arguments;
}

// Writes a configuration without panels and says where it lies.
std::filesystem::path WriteConfiguration() {
    std::filesystem::path path =
        std::filesystem::path(testing::TempDir()) / ("wirefall-jwmrc-" + std::to_string(getpid()));
    std::ofstream(path) << "<?xml version=\"1.0\"?>\n"
                           "<JWM>\n"
                           "  <StartupCommand>echo ready</StartupCommand>\n"
                           "  <Desktops width=\"1\" height=\"1\"/>\n"
                           "</JWM>\n";
    return path;
}

} // namespace

ChildProcess::ChildProcess(const std::vector<std::string>& arguments) {
    std::array<int, 2> ends = {-1, -1};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) {
        throw std::runtime_error(std::string("No pipe: ") + std::strerror(errno));
    }
    std::vector<char*> argv;
    argv.reserve(arguments.size() + 1);
    for (const std::string& argument : arguments) {
        argv.push_back(const_cast<char*>(argument.c_str()));
    }
    argv.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    const int error = posix_spawnp(&Pid, argv[0], &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    close(ends[1]);
    Output = ends[0];
    if (error != 0) {
        close(Output);
        throw std::runtime_error(arguments[0] + " cannot be started (" + std::strerror(error) +
                                 "); these tests need it installed");
    }

    char c = 0;
    while (read(Output, &c, 1) == 1 && c != '\n') {
        ReadyLine += c;
    }
    if (c != '\n') {
        close(Output);
        waitpid(Pid, nullptr, 0);
        throw std::runtime_error(arguments[0] + " ended before it was ready");
    }
}

ChildProcess::~ChildProcess() {
    kill(Pid, SIGTERM);
    waitpid(Pid, nullptr, 0);
    close(Output);
}

XServer::XServer(const std::vector<ScreenSize>& screens) : Server(ServerArguments(screens)) {
    // Xlib keeps tables for as long as it is loaded. SDL unloads it with its driver, upon which a
    // leak checker would take the tables for lost; so it stays.
    dlopen("libX11.so.6", RTLD_LAZY | RTLD_NODELETE);
    setenv("DISPLAY", (":" + Server.FirstLine()).c_str(), 1);
}

WindowManager::WindowManager()
    : Configuration(WriteConfiguration()), Manager({"jwm", "-f", Configuration.string()}) {}

WindowManager::~WindowManager() { std::filesystem::remove(Configuration); }

} // namespace Wirefall

#pragma once

// A display of a known size for tests that need a real window system: an X server that draws into
// memory, with a window manager if wanted. Both end with the objects. Nothing is skipped where the
// programs are missing: the constructors throw and say what to install.

#include <cstdint>
#include <filesystem>
#include <string>
#include <sys/types.h>
#include <vector>

namespace Wirefall {

/// A program that runs until the object's end and tells by a line of output that it is ready.
class ChildProcess {
public:
    /// Starts `arguments[0]`, found on the PATH, and waits for its first line. Throws
    /// std::runtime_error when it cannot be started or ends without a word.
    explicit ChildProcess(const std::vector<std::string>& arguments);
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess(ChildProcess&&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;
    ChildProcess& operator=(ChildProcess&&) = delete;
    ~ChildProcess();

    /// Without the line's end.
    [[nodiscard]] const std::string& FirstLine() const { return ReadyLine; }

private:
    pid_t Pid = -1;
    int Output = -1;
    std::string ReadyLine;
};

struct ScreenSize {
    std::int32_t Width;
    std::int32_t Height;
};

/// Sets the environment variable DISPLAY to the new server, on a display number that is free.
class XServer {
public:
    /// With one screen of each size, left to right.
    explicit XServer(const std::vector<ScreenSize>& screens);

private:
    ChildProcess Server;
};

/// Needs a running XServer. Without a window manager no window of it can become fullscreen.
class WindowManager {
public:
    WindowManager();
    WindowManager(const WindowManager&) = delete;
    WindowManager(WindowManager&&) = delete;
    WindowManager& operator=(const WindowManager&) = delete;
    WindowManager& operator=(WindowManager&&) = delete;
    ~WindowManager();

private:
    std::filesystem::path Configuration;
    ChildProcess Manager;
};

} // namespace Wirefall

#pragma once

// An X server of a chosen size that draws into memory, and what a player does at its screen: look,
// press keys, close the window.

#include "e2e/ChildProgram.h"
#include "e2e/Screenshot.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Wirefall::Testing {

/// Where a window is, without its frame, in pixels from the top left corner of the screen.
struct WindowPlace {
    std::int32_t X;
    std::int32_t Y;
    std::int32_t Width;
    std::int32_t Height;

    bool operator==(const WindowPlace&) const = default;
};

class VirtualDisplay {
public:
    /// Starts the server on a display number that is free, without a window manager. `folder` gets
    /// the server's log. Throws std::runtime_error when that fails, and when a program is missing.
    VirtualDisplay(std::int32_t width, std::int32_t height, const std::filesystem::path& folder);
    ~VirtualDisplay();
    VirtualDisplay(const VirtualDisplay&) = delete;
    VirtualDisplay& operator=(const VirtualDisplay&) = delete;
    VirtualDisplay(VirtualDisplay&&) = delete;
    VirtualDisplay& operator=(VirtualDisplay&&) = delete;

    /// Starts a window manager, as every desktop has one: without, no window becomes fullscreen.
    void StartWindowManager();

    /// The value of DISPLAY for programs that shall appear here.
    const std::string& Name() const { return DisplayName; }

    /// All of the screen, as it is at this moment: never half a frame of the game.
    Screenshot Grab();

    /// The one window that is on the screen and whose title begins so; nothing while there is none.
    std::optional<WindowPlace> FindWindow(const std::string& title);

    /// A part of the screen. Nothing if it is not all on the screen.
    std::optional<Screenshot> Grab(const WindowPlace& place);

    /// Presses and releases the keys, one after the other, by their X names.
    void PressKeys(const std::vector<std::string>& keys);
    void HoldKey(const std::string& key);
    void ReleaseKey(const std::string& key);

    /// Asks every window to close, as the button in its frame does. Returns whether there was one.
    bool CloseWindows();

private:
    struct Connection;

    void RunXdotool(const std::vector<std::string>& arguments);

    std::string Xdotool;
    std::filesystem::path Folder;
    std::filesystem::path Log;
    std::string DisplayName;
    std::unique_ptr<ChildProgram> Server;
    std::unique_ptr<Connection> Client;
    std::unique_ptr<ChildProgram> Manager;
};

} // namespace Wirefall::Testing

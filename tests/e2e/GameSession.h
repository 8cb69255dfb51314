#pragma once

// The real executable on a screen of its own with a home of its own, and the hands and eyes of
// whoever plays it. Waiting means looking again until the picture shows what is waited for; no
// step depends on how long the game takes for it.

#include "e2e/ChildProgram.h"
#include "e2e/ScreenReader.h"
#include "e2e/Screenshot.h"
#include "e2e/VirtualDisplay.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace Wirefall::Testing {

/// A folder that is removed with all that is in it.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    TemporaryFolder(TemporaryFolder&&) = delete;
    TemporaryFolder& operator=(TemporaryFolder&&) = delete;

    const std::filesystem::path& Path() const { return Folder; }

private:
    std::filesystem::path Folder;
};

enum class DrawnBy : std::uint8_t {
    Software, ///< SDL's software renderer: every machine draws the same pixels.
    Default,  ///< What players get, which may round colours its own way.
};

/// How to start the game on that display: as on a player's first day, silent, on X11 alone. No
/// display when `display` is empty.
ProgramSpec GameSpec(const TemporaryFolder& home, const std::optional<std::string>& display,
                     DrawnBy drawnBy = DrawnBy::Software);

/// What a player finds at a display.
struct SessionSpec {
    WindowSize Window;
    std::int32_t ScreenWidth;
    std::int32_t ScreenHeight;
    DrawnBy Drawing = DrawnBy::Software;
    /// A desktop with a window manager. The window is looked at wherever it is then.
    bool Desktop = false;
    /// The settings that lie there already; none on the first day.
    std::optional<std::string> Config = {};
};

class GameSession {
public:
    explicit GameSession(const SessionSpec& spec);
    /// A game that has just been started, in a window of that size, on a screen of that size or of
    /// `screen`'s.
    explicit GameSession(const WindowSize& window, DrawnBy drawnBy = DrawnBy::Software);
    GameSession(const WindowSize& window, std::int32_t screenWidth, std::int32_t screenHeight,
                DrawnBy drawnBy);

    ScreenReader& Reader() { return *Eyes; }
    VirtualDisplay& Screen() { return Display; }

    /// The screen as it was when it was looked at last.
    const Screenshot& LastSeen() const { return Seen; }
    /// The game's settings as they lie in the player's folder.
    std::string ConfigText() const;
    /// What the game has printed.
    std::string Printed() const;

    /// What the screen shows, or on a desktop the window. A desktop's window that is not there, or
    /// not of the size that the reader reads, shows nothing: a picture without pixels.
    const Screenshot& Look();

    /// Reads windows of that size from now on, in the catalog's language of now.
    void ReadAs(const WindowSize& window, const KeyboardTable& keys = FactoryBindings::Keyboard);

    /// On a desktop: until the game's window really has that size, and is all on the screen.
    void WaitForWindow(std::int32_t width, std::int32_t height);

    /// Until the game shows the Options as this record has them.
    void WaitForOptions(const std::string& what, const GameApp& app);

    /// Starts the game again after it has ended.
    void StartAgain();

    /// Looks until `sees` is content with what it sees. Throws std::runtime_error when the game
    /// ends before or that does not come; `what` and the last `trouble` tell what was missing.
    void WaitUntil(const std::string& what, const std::function<bool(const Screenshot&)>& sees,
                   const std::string* trouble = nullptr);

    void WaitForMenu(const MenuView& view);
    /// Until the main menu is there, with whatever selection.
    MenuView WaitForAnyMenu();
    /// Until the picture is not the main menu.
    void WaitForOtherThanMenu();
    /// Until the picture is not the play screen.
    void WaitForOtherThanPlay();
    /// Until it is the play screen; tells where the cursor is.
    Cell WaitForPlay();
    /// Until a run can be read off the picture, see ScreenReader::ReadRun.
    RunState WaitForRun(const RunState* hint = nullptr);

    /// From the main menu to a new run.
    void StartNewGame();
    /// Moves the selection of the main menu to that row, counted without "continue".
    void SelectMenuRow(std::int32_t row);
    /// From the play screen to the pause menu.
    void Pause();
    /// Back again.
    void Resume();
    /// From the pause menu to the main menu.
    void LeaveToMenu();

    void Press(const std::vector<std::string>& keys) { Display.PressKeys(keys); }

    /// The exit code of a game that is about to end. Throws std::runtime_error when it does not.
    int WaitForExit();
    bool HasEnded() { return Program->ExitCode().has_value(); }

private:
    TemporaryFolder Home;
    VirtualDisplay Display;
    bool OnDesktop;
    WindowSize Window;
    std::optional<ScreenReader> Eyes;
    ProgramSpec Spec;
    std::optional<ChildProgram> Program;
    Screenshot Seen;
};

/// Rows of the main menu, for SelectMenuRow.
namespace MenuRow {

inline constexpr std::int32_t NewGame = 0;
inline constexpr std::int32_t Options = 1;
inline constexpr std::int32_t Help = 2;
inline constexpr std::int32_t Credits = 3;
inline constexpr std::int32_t Quit = 4;
inline constexpr std::int32_t Count = 5;

} // namespace MenuRow

} // namespace Wirefall::Testing

#include "e2e/GameSession.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <system_error>
#include <thread>

namespace Wirefall::Testing {

namespace {

// For a machine that is a hundred times slower than needed. Only a broken game comes near it.
constexpr auto Patience = std::chrono::minutes(2);
constexpr auto LookPause = std::chrono::milliseconds(4);

// The leaks of a graphics driver that is unloaded cannot be told from the game's own, which the
// sessions without one show.
std::string OptionsWithoutLeaks() {
    const char* const options = std::getenv("ASAN_OPTIONS");
    return (options != nullptr ? std::string(options) + ":" : "") + "detect_leaks=0";
}

constexpr const char* WindowName = "Wirefall";

std::filesystem::path ConfigPath(const TemporaryFolder& home) {
    return home.Path() / "data" / "Velkor" / "Wirefall" / "Config.ini";
}

std::string TextOf(const std::filesystem::path& path) {
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

std::int32_t RowsBefore(const MenuView& view) { return view.OffersToContinue ? 1 : 0; }

} // namespace

TemporaryFolder::TemporaryFolder() {
    std::string name = testing::TempDir() + "wirefall-e2e-XXXXXX";
    if (mkdtemp(name.data()) == nullptr) {
        throw std::system_error(errno, std::generic_category(), name);
    }
    Folder = name;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(Folder, ignored);
}

ProgramSpec GameSpec(const TemporaryFolder& home, const std::optional<std::string>& display,
                     DrawnBy drawnBy) {
    const bool inSoftware = drawnBy == DrawnBy::Software;
    const std::string folder = home.Path().string();
    ProgramSpec spec = {
        .Arguments = {WIREFALL_E2E_GAME},
        .Environment = {{"HOME", folder},
                        {"XDG_DATA_HOME", folder + "/data"},
                        {"XDG_CONFIG_HOME", folder + "/config"},
                        {"DISPLAY", display},
                        {"WAYLAND_DISPLAY", std::nullopt},
                        {"WIREFALL_VERBOSE_LOG", std::nullopt},
                        {"LSAN_OPTIONS",
                         std::string("print_suppressions=0:suppressions=") + WIREFALL_E2E_LEAKS},
                        {"SDL_VIDEO_DRIVER", "x11"},
                        {"SDL_AUDIO_DRIVER", "dummy"},
                        {"SDL_RENDER_DRIVER",
                         inSoftware ? std::optional<std::string>("software") : std::nullopt},
                        // Else SDL may show the finished picture through OpenGL all the same.
                        {"SDL_FRAMEBUFFER_ACCELERATION",
                         inSoftware ? std::optional<std::string>("0") : std::nullopt}},
        .Output = home.Path() / "game.log"};
    if (!inSoftware) {
        spec.Environment.emplace_back("ASAN_OPTIONS", OptionsWithoutLeaks());
    }
    return spec;
}

GameSession::GameSession(const WindowSize& window, DrawnBy drawnBy)
    : GameSession(window, window.Width, window.Height, drawnBy) {}

GameSession::GameSession(const WindowSize& window, std::int32_t screenWidth,
                         std::int32_t screenHeight, DrawnBy drawnBy)
    : GameSession(SessionSpec{.Window = window,
                              .ScreenWidth = screenWidth,
                              .ScreenHeight = screenHeight,
                              .Drawing = drawnBy}) {}

GameSession::GameSession(const SessionSpec& spec)
    : Display(spec.ScreenWidth, spec.ScreenHeight, Home.Path()),
      OnDesktop(spec.Desktop),
      Window(spec.Window),
      Eyes(spec.Window),
      Spec(GameSpec(Home, Display.Name(), spec.Drawing)) {
    if (spec.Desktop) {
        Display.StartWindowManager();
    }
    if (spec.Config) {
        const std::filesystem::path path = ConfigPath(Home);
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary) << *spec.Config;
    }
    StartAgain();
}

void GameSession::StartAgain() { Program.emplace(Spec); }

void GameSession::ReadAs(const WindowSize& window, const KeyboardTable& keys) {
    Eyes.reset();
    Window = window;
    Eyes.emplace(window, keys);
}

std::string GameSession::ConfigText() const { return TextOf(ConfigPath(Home)); }

std::string GameSession::Printed() const { return TextOf(Spec.Output); }

const Screenshot& GameSession::Look() {
    if (!OnDesktop) {
        Seen = Display.Grab();
        return Seen;
    }
    const std::optional<WindowPlace> place = Display.FindWindow(WindowName);
    const bool known = place && place->Width == Window.Width && place->Height == Window.Height;
    Seen = (known ? Display.Grab(*place) : std::nullopt).value_or(Screenshot{});
    return Seen;
}

void GameSession::WaitForWindow(std::int32_t width, std::int32_t height) {
    const auto end = std::chrono::steady_clock::now() + Patience;
    while (true) {
        const std::optional<WindowPlace> place = Display.FindWindow(WindowName);
        if (place && place->Width == width && place->Height == height && Display.Grab(*place)) {
            return;
        }
        if (HasEnded() || std::chrono::steady_clock::now() > end) {
            throw std::runtime_error(
                "Gave up waiting for a window of " + std::to_string(width) + "x" +
                std::to_string(height) + "; it is " +
                (place ? std::to_string(place->Width) + "x" + std::to_string(place->Height)
                       : std::string("not there")));
        }
        std::this_thread::sleep_for(LookPause);
    }
}

void GameSession::WaitForOptions(const std::string& what, const GameApp& app) {
    const Lettering rows = Eyes->LearnOptions(app);
    WaitUntil("the Options: " + what,
              [&](const Screenshot& screen) { return Eyes->ShowsOptions(screen, rows); });
}

void GameSession::WaitUntil(const std::string& what,
                            const std::function<bool(const Screenshot&)>& sees,
                            const std::string* trouble) {
    const auto end = std::chrono::steady_clock::now() + Patience;
    const auto missing = [&] {
        return "waiting for " + what +
               (trouble != nullptr && !trouble->empty() ? " (" + *trouble + ")" : "");
    };
    while (Look().Pixels.empty() || !sees(Seen)) {
        if (const std::optional<int> code = Program->ExitCode()) {
            throw std::runtime_error("The game has ended with exit code " + std::to_string(*code) +
                                     ", " + missing());
        }
        if (std::chrono::steady_clock::now() > end) {
            throw std::runtime_error("Gave up " + missing());
        }
        std::this_thread::sleep_for(LookPause);
    }
}

void GameSession::WaitForMenu(const MenuView& view) {
    WaitUntil("row " + std::to_string(view.Selection) + " of the main menu",
              [&](const Screenshot& screen) { return Eyes->ReadMenu(screen) == view; });
}

MenuView GameSession::WaitForAnyMenu() {
    std::optional<MenuView> view;
    WaitUntil("the main menu", [&](const Screenshot& screen) {
        view = Eyes->ReadMenu(screen);
        return view.has_value();
    });
    return *view;
}

void GameSession::WaitForOtherThanMenu() {
    WaitUntil("another screen than the main menu",
              [&](const Screenshot& screen) { return !Eyes->ReadMenu(screen); });
}

void GameSession::WaitForOtherThanPlay() {
    WaitUntil("another screen than the play screen",
              [&](const Screenshot& screen) { return !Eyes->ReadCursor(screen); });
}

Cell GameSession::WaitForPlay() {
    std::optional<Cell> cursor;
    WaitUntil("the play screen", [&](const Screenshot& screen) {
        cursor = Eyes->ReadCursor(screen);
        return cursor.has_value();
    });
    return *cursor;
}

RunState GameSession::WaitForRun(const RunState* hint) {
    ReadResult result;
    WaitUntil(
        "a play screen that can be read",
        [&](const Screenshot& screen) {
            result = Eyes->ReadRun(screen, hint);
            return result.Run.has_value();
        },
        &result.Trouble);
    return *result.Run;
}

void GameSession::StartNewGame() {
    SelectMenuRow(MenuRow::NewGame);
    Press({"Return"});
    WaitForPlay();
}

void GameSession::SelectMenuRow(std::int32_t row) {
    MenuView view = WaitForAnyMenu();
    const std::int32_t wanted = row + RowsBefore(view);
    while (view.Selection != wanted) {
        const bool down = view.Selection < wanted;
        view.Selection += down ? 1 : -1;
        Press({down ? "Down" : "Up"});
        WaitForMenu(view);
    }
}

void GameSession::Pause() {
    Press({"Escape"});
    WaitForOtherThanPlay();
}

void GameSession::Resume() {
    Press({"Return"});
    WaitForPlay();
}

void GameSession::LeaveToMenu() {
    // The last of the four rows is one above the first.
    Press({"Up", "Return"});
    WaitForAnyMenu();
}

int GameSession::WaitForExit() {
    const std::optional<int> code = Program->WaitForExit(Patience);
    if (!code) {
        throw std::runtime_error("The game does not end");
    }
    return *code;
}

} // namespace Wirefall::Testing

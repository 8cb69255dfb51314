// The Options as a player has them: what is changed there shows at once on the real window, in play
// and in the texts, and is still there when the game is started again.

#include "display/DisplayModes.h"
#include "e2e/EndToEndFixture.h"
#include "options/AudioPage.h"
#include "options/ControlsPage.h"
#include "words/LanguageFiles.h"
#include "words/Localization.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Wirefall::Testing {

namespace {

// A player on the Options screen who knows what it should show.
class OptionsWalk {
public:
    // Opens the Options from the main menu.
    explicit OptionsWalk(GameSession& game, GameApp fresh = {})
        : Game(game), Shown(std::move(fresh)) {
        Shown.Screen = AppScreen::Options;
        Game.SelectMenuRow(MenuRow::Options);
        Do({"Return"}, "the root page", [](GameApp&) {});
    }

    // Presses the keys and waits until the screen shows the record with that change.
    void Do(const std::vector<std::string>& keys, const std::string& what,
            const std::function<void(GameApp& shown)>& change) {
        if (!keys.empty()) {
            Game.Press(keys);
        }
        change(Shown);
        Game.WaitForOptions(what, Shown);
    }

    void Enter(OptionsPage page) {
        GoTo(static_cast<std::int32_t>(page) - 1);
        Do({"Return"}, "a page", [&](GameApp& shown) {
            shown.OptionsPage = page;
            BeginControlsEdit(shown);
            BeginAudioEdit(shown);
        });
    }

    void GoTo(std::int32_t row) {
        std::int32_t& selected = SelectedRow();
        const std::vector<std::string> keys(static_cast<std::size_t>(std::abs(row - selected)),
                                            row > selected ? "Down" : "Up");
        Do(keys, "row " + std::to_string(row), [&](GameApp&) { selected = row; });
    }

    // From a page to the main menu.
    void Leave() {
        Game.Press({"Escape", "Escape"});
        Game.WaitForAnyMenu();
    }

    const GameApp& Expected() const { return Shown; }

private:
    std::int32_t& SelectedRow() {
        switch (Shown.OptionsPage) {
        case OptionsPage::Controls:
            return Shown.Rows.ControlsRow;
        case OptionsPage::Graphics:
            return Shown.Rows.GraphicsRow;
        case OptionsPage::Audio:
            return Shown.Rows.AudioRow;
        case OptionsPage::Root:
            break;
        }
        return Shown.Rows.OptionsRootRow;
    }

    GameSession& Game;
    GameApp Shown;
};

void Quit(GameSession& game) {
    game.WaitForAnyMenu();
    game.Press({"Escape"});
    EXPECT_EQ(0, game.WaitForExit());
}

void MoveCursor(GameSession& game, const std::vector<std::string>& keys, const Cell& to) {
    game.Press(keys);
    game.WaitUntil("the cursor to move", [&](const Screenshot& screen) {
        return game.Reader().ReadCursor(screen) == to;
    });
}

// Of what Config.ini must hold, what it does not.
std::string MissingIn(const std::string& config, const std::vector<std::string_view>& lines) {
    std::string missing;
    for (const std::string_view line : lines) {
        if (("\n" + config + "\r\n").find("\n" + std::string(line) + "\r\n") == std::string::npos) {
            missing += std::string(line) + "\n";
        }
    }
    return missing.empty() ? missing : missing + "are not in:\n" + config;
}

class OptionsEndToEndTest : public EndToEndTest {
public:
    // The texts that lie beside this program, as they do beside the game.
    OptionsEndToEndTest() { Speak("en"); }
    OptionsEndToEndTest(const OptionsEndToEndTest&) = delete;
    OptionsEndToEndTest(OptionsEndToEndTest&&) = delete;
    OptionsEndToEndTest& operator=(const OptionsEndToEndTest&) = delete;
    OptionsEndToEndTest& operator=(OptionsEndToEndTest&&) = delete;
    ~OptionsEndToEndTest() override { LocalizationCatalog = {}; }

protected:
    // What the player reads is in that language from now on.
    static void Speak(const char* language) {
        GameOptions options;
        options.Language = language;
        LoadLocalization(options);
        EXPECT_EQ(language, options.Language);
    }
};

} // namespace

TEST_F(OptionsEndToEndTest, AKeyThatIsBoundAnewPlaysAndIsKept) {
    constexpr std::int32_t CursorLeftRow = 3;
    constexpr std::int32_t ApplyRow = 10;
    GameSession& game = Start(Wide);
    OptionsWalk options(game);
    options.Enter(OptionsPage::Controls);
    options.GoTo(CursorLeftRow);
    options.Do({"Return"}, "the capture", [](GameApp& shown) {
        shown.Capture.CaptureActive = true;
        shown.Capture.CaptureDevice = CaptureDevice::Keyboard;
        shown.Capture.CaptureKeyboardRow = CursorLeftRow - 1;
    });
    options.Do({"a"}, "the new key", [](GameApp& shown) {
        EndCapture(shown.Capture);
        shown.ControlsEdit.PendingKeyboard[CursorLeftRow - 1] = SDL_SCANCODE_A;
    });
    options.GoTo(ApplyRow);
    game.Press({"Return"});
    options.Leave();
    EXPECT_EQ("", MissingIn(game.ConfigText(), {"CursorLeft=\"4\""}));

    // The play screen tells the keys.
    KeyboardTable keys = FactoryBindings::Keyboard;
    keys[CursorLeftRow - 1] = SDL_SCANCODE_A;
    game.ReadAs(Wide, keys);
    game.StartNewGame();
    const Cell start = game.WaitForPlay();
    const Cell left = {start.X - 1, start.Y};
    MoveCursor(game, {"a"}, left);
    MoveCursor(game, {"Left", "Right"}, start); // the old key is dead
    game.Pause();
    game.LeaveToMenu();
    Quit(game);

    game.StartAgain();
    game.WaitForMenu({.OffersToContinue = true, .Selection = 0});
    game.Press({"Return"});
    EXPECT_EQ(start, game.WaitForPlay());
    MoveCursor(game, {"a"}, left);
    game.Pause();
    game.LeaveToMenu();
    Quit(game);
}

TEST_F(OptionsEndToEndTest, WhatIsNotAppliedIsDropped) {
    GameSession& game = Start(Wide);
    OptionsWalk options(game);
    const std::string before = game.ConfigText();
    options.Enter(OptionsPage::Audio);
    options.Do({"Left", "Left"}, "a lower volume",
               [](GameApp& shown) { shown.AudioEdit.MasterVolume = 90; });
    options.Do({"Escape"}, "the root page",
               [](GameApp& shown) { shown.OptionsPage = OptionsPage::Root; });
    options.Enter(OptionsPage::Audio);
    options.Leave();
    Quit(game);
    EXPECT_EQ(before, game.ConfigText());
}

// A screen of 4:3, so that widescreen has the built-in resolutions, some of them smaller than it.
TEST_F(OptionsEndToEndTest, TheWindowFollowsTheGraphicsPageAndIsKept) {
    constexpr std::int32_t ResolutionRow = 0;
    constexpr std::int32_t AspectRow = 1;
    constexpr std::int32_t DisplayModeRow = 3;
    constexpr std::int32_t ApplyRow = 6;
    constexpr std::int32_t RevertRow = 7;
    constexpr WindowSize Fullscreen = {1600, 1200, 960};
    constexpr WindowSize WideFullscreen = {1600, 1200, 1152};
    constexpr WindowSize Windowed = {1440, 900, 1152};
    GameSession& game =
        Keep(std::make_unique<GameSession>(SessionSpec{.Window = Fullscreen,
                                                       .ScreenWidth = Fullscreen.Width,
                                                       .ScreenHeight = Fullscreen.Height,
                                                       .Desktop = true}));
    game.WaitForWindow(Fullscreen.Width, Fullscreen.Height);

    GameApp fresh;
    fresh.AspectMode = AspectMode::Classic4x3;
    fresh.Resolutions = {{Fullscreen.Width, Fullscreen.Height}};
    OptionsWalk options(game, fresh);
    options.Enter(OptionsPage::Graphics);
    options.GoTo(AspectRow);
    options.Do({"Right"}, "widescreen", [](GameApp& shown) {
        shown.AspectMode = AspectMode::Widescreen;
        shown.Resolutions = {{1280, 720}};
    });
    options.GoTo(ResolutionRow);
    options.Do({"Right", "Right", "Right"}, "another resolution", [&](GameApp& shown) {
        shown.Resolutions = {{Windowed.Width, Windowed.Height}};
    });

    const auto apply = [&](bool fullscreen, const WindowSize& window) {
        options.GoTo(DisplayModeRow);
        options.Do({"Right"}, "the display mode",
                   [&](GameApp& shown) { shown.Fullscreen = fullscreen; });
        options.GoTo(ApplyRow);
        game.Press({"Return"});
        game.WaitForWindow(window.Width, window.Height);
        game.ReadAs(window);
        options.Do({}, "the window as it is now", [](GameApp&) {});
    };
    apply(false, Windowed);
    apply(true, WideFullscreen);
    apply(false, Windowed);

    options.GoTo(AspectRow);
    options.Do({"Right"}, "4:3", [&](GameApp& shown) {
        shown.AspectMode = AspectMode::Classic4x3;
        shown.Resolutions = {{Fullscreen.Width, Fullscreen.Height}};
    });
    options.GoTo(RevertRow);
    options.Do({"Return"}, "what is applied", [&](GameApp& shown) {
        shown.AspectMode = AspectMode::Widescreen;
        shown.Resolutions = {{Windowed.Width, Windowed.Height}};
    });
    options.Leave();
    Quit(game);
    EXPECT_EQ("", MissingIn(game.ConfigText(),
                            {"ResolutionWidth=\"1440\"", "ResolutionHeight=\"900\"",
                             "AspectMode=\"widescreen\"", "Fullscreen=\"0\"", "VSync=\"1\""}));

    game.StartAgain();
    game.WaitForWindow(Windowed.Width, Windowed.Height);
    Quit(game);
}

TEST_F(OptionsEndToEndTest, TheGameSpeaksGermanOnceItIsApplied) {
    constexpr std::int32_t LanguageRow = 5;
    constexpr std::int32_t ApplyRow = 7;
    GameSession& game = Start(Wide);
    OptionsWalk options(game);
    options.Enter(OptionsPage::Audio);
    options.GoTo(LanguageRow);
    options.Do({"Right"}, "its name", [](GameApp& shown) { shown.AudioEdit.Language = "de"; });
    options.GoTo(ApplyRow);
    const Lettering english = game.Reader().LearnOptions(options.Expected());

    Speak("de");
    game.ReadAs(Wide);
    options.Do({"Return"}, "German", [](GameApp&) {});
    EXPECT_FALSE(game.Reader().ShowsOptions(game.LastSeen(), english));
    options.Leave();
    game.WaitForMenu({.OffersToContinue = false, .Selection = MenuRow::Options});
    game.StartNewGame();
    game.Pause();
    game.LeaveToMenu();
    Quit(game);
    EXPECT_EQ("", MissingIn(game.ConfigText(), {"Language=\"de\""}));

    game.StartAgain();
    game.WaitForMenu({.OffersToContinue = true, .Selection = 0});
    Quit(game);
}

// --- A Config.ini that somebody has edited

struct Edited {
    const char* Name;
    std::string Config;
    // What the game makes of it and writes, because the language had to be corrected.
    std::vector<std::string_view> Corrected = {};
};

// GoogleTest looks for a function of this name.
// NOLINTNEXTLINE(readability-identifier-naming)
void PrintTo(const Edited& edited, std::ostream* out) { *out << edited.Name; }

namespace {

constexpr std::array<std::string_view, 8> KeyboardKeys = {
    "CursorUp",   "CursorDown",  "CursorLeft", "CursorRight",
    "RotateLeft", "RotateRight", "Place",      "FastForward",
};

// Every setting with the same value.
std::string ConfigWithAll(const std::string& value) {
    std::string config;
    const auto add = [&](std::string_view key) {
        config += std::string(key) + "=\"" + value + "\"\r\n";
    };
    config += "[Options]\r\n";
    add("ControlsDevice");
    add("Language");
    for (const char* const section : {"ControlsKeyboard", "ControlsGamepad", "ControlsJoystick"}) {
        config += "[" + std::string(section) + "]\r\n";
        for (const std::string_view key : KeyboardKeys) {
            add(key);
        }
        add("MenuConfirm");
        add("MenuBack");
    }
    config += "[Graphics]\r\n";
    for (const char* const key : {"ResolutionWidth", "ResolutionHeight", "AspectMode",
                                  "RefreshRate", "Fullscreen", "VSync"}) {
        add(key);
    }
    config += "[Audio]\r\n";
    for (const char* const key :
         {"MasterVolume", "MusicVolume", "SfxVolume", "MusicEnabled", "SfxEnabled"}) {
        add(key);
    }
    return config;
}

const std::vector<std::string_view> Defaults = {
    "ControlsDevice=\"keyboard\"",
    "Language=\"en\"",
    "CursorUp=\"82\"",
    "MenuBack=\"1\"",
    "ResolutionWidth=\"1280\"",
    "AspectMode=\"widescreen\"",
    "RefreshRate=\"0\"",
    "Fullscreen=\"1\"",
    "MusicVolume=\"50\"",
};

class EditedConfigTest : public EndToEndTest, public testing::WithParamInterface<Edited> {};

} // namespace

// Whatever stands there, the keys are still those that the player knows.
TEST_P(EditedConfigTest, StartsPlaysAndQuits) {
    GameSession& game =
        Keep(std::make_unique<GameSession>(SessionSpec{.Window = Wide,
                                                       .ScreenWidth = Wide.Width,
                                                       .ScreenHeight = Wide.Height,
                                                       .Config = GetParam().Config}));
    game.StartNewGame();
    const Cell start = game.WaitForPlay();
    MoveCursor(game, {"Left", "Up"}, {start.X - 1, start.Y - 1});
    game.Pause();
    game.LeaveToMenu();
    Quit(game);
    EXPECT_EQ("", MissingIn(game.ConfigText(), GetParam().Corrected));
}

INSTANTIATE_TEST_SUITE_P(
    EndToEnd, EditedConfigTest,
    testing::Values(
        Edited{"Words", ConfigWithAll("nonsense"), Defaults},
        Edited{"Negative", ConfigWithAll("-2147483648"), {"CursorUp=\"82\"", "MusicVolume=\"0\""}},
        Edited{"Huge", ConfigWithAll("99999999999999999999"), Defaults},
        Edited{"BeyondEveryTable",
               ConfigWithAll("2147483647"),
               {"CursorUp=\"82\"", "ResolutionWidth=\"1280\"", "MusicVolume=\"100\""}},
        Edited{"Fractions", ConfigWithAll("1.5"), Defaults}, Edited{"Nothing", ConfigWithAll("")},
        Edited{"Blanks", ConfigWithAll("   ")},
        Edited{"NotUtf8", ConfigWithAll("\xff\xfe\xc3\x28"), Defaults},
        Edited{"Long", ConfigWithAll(std::string(100'000, 'x'))},
        Edited{"Unclosed", ConfigWithAll("nonsense") + "[Graphics\r\n=\"\r\n\"\\", Defaults},
        Edited{"Binary", std::string("\0\1\2\xff[\0]=\"\0", 10) + std::string(5000, '\0')},
        Edited{"Empty", ""}),
    [](const auto& test) { return std::string(test.param.Name); });

} // namespace Wirefall::Testing

#include "support/Scenes.h"

#include "base/Clock.h"
#include "display/LogicalCanvas.h"
#include "draw/BinaryRain.h"
#include "draw/Metrics.h"
#include "draw/NoteBox.h"
#include "screens/BoardScreen.h"
#include "screens/CreditsScreen.h"
#include "screens/GameOverScreen.h"
#include "screens/HelpScreen.h"
#include "screens/LevelCompleteScreen.h"
#include "screens/MainMenu.h"
#include "screens/PauseScreen.h"
#include "sim/Simulation.h"
#include "support/BoardDrawing.h"
#include "support/OptionsScenes.h"
#include "words/CommandHints.h"
#include "words/Localization.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <stdexcept>
#include <string>

namespace Wirefall::Testing {

namespace {

constexpr std::uint64_t SceneTime = 12345;

using BoardSketch = std::array<std::string_view, BoardSide>;

void Infect(RunState& run, const BoardSketch& sketch) {
    for (std::int32_t y = 0; y < BoardSide; ++y) {
        for (std::int32_t x = 0; x < BoardSide; ++x) {
            TileAt(run, x, y).VirusInfected =
                sketch[static_cast<std::size_t>(y)][static_cast<std::size_t>(x)] == '*';
        }
    }
}

void PlaceEndpoints(RunState& run, const Endpoint& source, const Endpoint& sink) {
    run.Sources = {source};
    run.Sinks = {sink};
    StampEndpointTile(run, source, true);
    StampEndpointTile(run, sink, false);
}

// The middle of a level that goes well enough: a route from the left edge to the right one, a loop
// that the virus has got into, and every kind of tile.
void ArrangeBusyRun(SceneWorld&) {
    ResetRun();
    RunState& run = LiveRun();
    LayTiles(run, {
                      "..┌─┐.┌─┐.",
                      "..│.└─┘.│.",
                      "┌─┘.┌─┐.├.",
                      "│...│.└┐│.",
                      ".──A┼bF┴┘.",
                      "..┌┘│.┌─┐.",
                      "..│.└─┼─┤.",
                      "..└┐..B.│.",
                      "...│┌─┘.│.",
                      "...└┘..F┘.",
                  });
    PlaceEndpoints(run, {0, 4, Direction::Right}, {9, 2, Direction::Left});
    Infect(run, {
                    "..........",
                    "..........",
                    "..........",
                    "..........",
                    "..........",
                    "......***.",
                    ".....****.",
                    "......*.*.",
                    ".....**.*.",
                    "........*.",
                });
    run.Packets = {{.X = 1, .Y = 4, .Dir = Direction::Right},
                   {.X = 5, .Y = 4, .Dir = Direction::Right},
                   {.X = 8, .Y = 3, .Dir = Direction::Up},
                   {.X = 5, .Y = 2, .Dir = Direction::Right},
                   {.X = 7, .Y = 6, .Dir = Direction::Right, .Corrupted = true},
                   {.X = 6, .Y = 8, .Dir = Direction::Left, .Corrupted = true}};
    run.TileQueue = {TileType::TJunction, TileType::Antivirus, TileType::Buffer};
    run.PreviewRotation = 1;
    run.CursorX = 5;
    run.CursorY = 3;
    run.Level = 3;
    run.TotalScore = 485;
    run.LevelTargetPackets = 40;
    run.DeliveredPackets = 27;
    run.LostPackets = 2;
    run.CorruptedPackets = 3;
}

void ArrangeCursorOnSource(SceneWorld& world) {
    ArrangeBusyRun(world);
    RunState& run = LiveRun();
    run.CursorX = run.Sources[0].X;
    run.CursorY = run.Sources[0].Y;
}

void ArrangeGameOver(SceneWorld& world) {
    ArrangeBusyRun(world);
    RunState& run = LiveRun();
    run.LostPackets = 4;
    run.CorruptedPackets = 6;
    run.GameOver = true;
}

void ArrangeFastForward(SceneWorld& world) {
    ArrangeBusyRun(world);
    LiveRun().FastForward = true;
}

void ArrangeEveryTile(SceneWorld&) {
    ResetRun();
    RunState& run = LiveRun();
    LayTiles(run, {
                      ".│─└┌┐┘├┬┤",
                      "┴┼FABb.│─└",
                      ".│─└┌┐┘├┬┤",
                      "┴┼FABb.│─└",
                      "..........",
                      "..........",
                      "..........",
                      "..........",
                      "..........",
                      "..........",
                  });
    Infect(run, {
                    "..........",
                    "..........",
                    "**********",
                    "**********",
                    "..........",
                    "..........",
                    "..........",
                    "..........",
                    "..........",
                    "..........",
                });
    // A type and a direction that only a damaged save can hold.
    TileAt(run, 0, 5).Type = static_cast<TileType>(8);
    TileAt(run, 0, 5).Connections = AllExits;
    PlaceEndpoints(run, {4, 9, Direction::Up}, {5, 0, Direction::Down});
    run.Sources.push_back({0, 7, Direction::Right});
    run.Sources.push_back({9, 7, Direction::Left});
    run.Sinks.push_back({2, 5, static_cast<Direction>(9)});
    run.Packets = {{.X = 3, .Y = 6},
                   {.X = 4, .Y = 6, .Corrupted = true},
                   {.X = 10, .Y = 6},
                   {.X = -1, .Y = 0}};
    run.CursorX = -1;
    run.TileQueue = {TileType::Corner, TileType::Firewall, static_cast<TileType>(200)};
    run.PreviewRotation = 3;
}

void ArrangeGamepad(SceneWorld& world) {
    ArrangeBusyRun(world);
    UseGamepad(world);
}

void ArrangeReboundGamepad(SceneWorld& world) {
    ArrangeBusyRun(world);
    UseGamepad(world);
    world.App.GamepadBindings[ActionIndex(InputAction::CursorUp)] = 5;
    world.App.GamepadBindings[ActionIndex(InputAction::RotateLeft)] = 15;
    world.App.GamepadBindings[ActionIndex(InputAction::Place)] = UnboundButton;
    world.App.GamepadBindings[ActionIndex(InputAction::FastForward)] = 20;
}

void ArrangeJoystick(SceneWorld& world) {
    ArrangeBusyRun(world);
    UseJoystick(world);
}

// Keys with long names, which take two lines and the short form of each.
void ArrangeLongKeys(SceneWorld& world) {
    ArrangeBusyRun(world);
    world.App.KeyboardBindings = {96, 90, 92, 94, 74, 77, 44, 228};
}

constexpr std::array<std::array<const char*, 2>, 18> LongTexts = {{
    {"Hud.Queue", "WARTESCHLANGE"},
    {"Hud.Status", "ZUSTANDSÜBERSICHT"},
    {"Hud.Failure", "AUSFÄLLE"},
    {"Hud.VirusInfection", "VIRUSVERSEUCHUNG"},
    {"Hud.Commands", "BEFEHLSÜBERSICHT"},
    {"Hud.Level", "SCHWIERIGKEITSSTUFE"},
    {"Hud.Score", "GESAMTPUNKTZAHL"},
    {"Hud.Target", "ZU ÜBERTRAGENDE PAKETE"},
    {"Hud.OK", "ÜBERMITTELTE"},
    {"Hud.Lost", "VERLORENE"},
    {"Hud.Bad", "BESCHÄDIGTE PAKETE"},
    {"Hud.Command.Move", "ZEIGER BEWEGEN"},
    {"Hud.Command.Rotate", "KACHEL DREHEN"},
    {"Hud.Command.Place", "KACHEL GROẞFLÄCHIG SETZEN"},
    {"Hud.Command.FastForward", "SCHNELLER VORLAUF"},
    {"MainMenu.ContinueGame", "GESPEICHERTES SPIEL FORTSETZEN"},
    {"MainMenu.Options", "MÖGLICHKEITEN"},
    {"MainMenu.Credits", "ÜBER DIESES SPIEL"},
}};

void ArrangeLongTexts(SceneWorld& world) {
    ArrangeBusyRun(world);
    for (const auto& [key, text] : LongTexts) {
        LocalizationCatalog.Texts[key] = text;
    }
    world.App.HasSavedRun = true;
    world.App.MenuSelection = 2;
}

void ArrangeNegativeScore(SceneWorld& world) {
    ArrangeBusyRun(world);
    LiveRun().TotalScore = -135;
}

void ArrangeOvershotCounters(SceneWorld& world) {
    ArrangeBusyRun(world);
    RunState& run = LiveRun();
    constexpr std::int32_t Most = std::numeric_limits<std::int32_t>::max();
    run.Level = Most;
    run.TotalScore = std::numeric_limits<std::int32_t>::min();
    run.LevelTargetPackets = Most;
    run.DeliveredPackets = Most;
    run.LostPackets = Most;
    run.CorruptedPackets = Most;
    run.FailureThreshold = 0;
}

void ArrangeSavedRun(SceneWorld& world) { world.App.HasSavedRun = true; }

void ArrangeLastRow(SceneWorld& world) {
    world.App.HasSavedRun = true;
    world.App.MenuSelection = 5;
}

void ArrangeQuitting(SceneWorld& world) {
    world.App.MenuSelection = 4;
    world.App.QuitRequested = true;
}

void ArrangeLater(SceneWorld&) { FreezeClock(SceneTime + 260); }

void DrawMenu(SDL_Renderer* renderer, const SceneWorld& world) {
    DrawMainMenu(renderer, world.App);
}

void DrawRain(SDL_Renderer* renderer, const SceneWorld&) {
    DrawBinaryRain(renderer, static_cast<float>(LogicalWidth), true);
}

void DrawStillRain(SDL_Renderer* renderer, const SceneWorld&) {
    DrawBinaryRain(renderer, static_cast<float>(LogicalWidth), false);
}

void DrawNotes(SDL_Renderer* renderer, const SceneWorld&) {
    const UiMetrics metrics = MeasureUiMetrics(renderer, LogicalWidth, LogicalHeight);
    const NoteBoxContext context = {.Renderer = renderer,
                                    .Metrics = metrics,
                                    .HeadingScale = 3,
                                    .BodyScale = metrics.BodyScale,
                                    .LinePitch = static_cast<float>(metrics.BodyScale * 8 + 6)};
    const std::array<std::string, 3> paragraphs = {
        "A PARAGRAPH THAT IS LONG ENOUGH TO BE WRAPPED ON EVERY CANVAS, SINCE THE BOX IS NARROW",
        "", "SCORING: +10 DELIVERED, -5 LOST"};
    DrawNoteBox(context, 56.0F, 42.0F, 400.0F, 200.0F, "RUN RULES", Palette::Cyan, paragraphs);
    DrawNoteBox(context, 500.5F, 42.5F, 300.0F, 200.0F, "ÜBER", Palette::Green, {});
}

void ArrangePause(SceneWorld& world) { ArrangeBusyRun(world); }

void ArrangePauseLastRow(SceneWorld& world) {
    ArrangeBusyRun(world);
    UseGamepad(world);
    world.App.PauseSelection = 3;
}

void ArrangePauseJoystick(SceneWorld& world) {
    ArrangeBusyRun(world);
    UseJoystick(world);
    world.App.PauseSelection = 1;
}

void ArrangeHelpFromPause(SceneWorld& world) {
    UseGamepad(world);
    world.App.HelpReturnScreen = AppScreen::Pause;
}

void ArrangeHelpJoystick(SceneWorld& world) {
    UseJoystick(world);
    world.App.HelpReturnScreen = AppScreen::Pause;
}

void ArrangeHelpGamepad(SceneWorld& world) { UseGamepad(world); }

void ArrangeCreditsMiddle(SceneWorld& world) { world.App.CreditsScroll = 400.0F; }

void ArrangeCreditsEnd(SceneWorld& world) { world.App.CreditsScroll = 760.0F; }

void ArrangeLevelComplete(SceneWorld& world) {
    ArrangeBusyRun(world);
    LiveRun().DeliveredPackets = LiveRun().LevelTargetPackets;
    world.App.PreviousSnapshot = BuildRunSnapshot();
    world.App.PreviousSnapshotValid = true;
}

void ArrangeLevelCompleteGamepad(SceneWorld& world) {
    ArrangeLevelComplete(world);
    UseGamepad(world);
    // As only a record that was never filled has it.
    world.App.PreviousSnapshot.Level = 0;
}

void ArrangeLevelCompleteJoystick(SceneWorld& world) {
    ArrangeLevelComplete(world);
    UseJoystick(world);
}

void ArrangeRunOver(SceneWorld& world) {
    ArrangeGameOver(world);
    LiveRun().TotalScore = -35;
}

void ArrangeRunOverGamepad(SceneWorld& world) {
    ArrangeGameOver(world);
    UseGamepad(world);
}

void ArrangeRunOverJoystick(SceneWorld& world) {
    ArrangeGameOver(world);
    UseJoystick(world);
}

// As the frame loop does while the board is played on.
void StoreHints(const SceneWorld& world) {
    const CommandHints hints = BuildCommandHints(world.App, world.Controllers);
    StoreHudHintLines(hints.Move, hints.Rotate, hints.Place, hints.FastForward, hints.Menu);
}

void DrawPause(SDL_Renderer* renderer, const SceneWorld& world) {
    StoreHints(world);
    DrawPauseScreen(renderer, world.App, world.Controllers);
}

void DrawHelp(SDL_Renderer* renderer, const SceneWorld& world) {
    DrawHelpScreen(renderer, world.App, world.Controllers);
}

void DrawCredits(SDL_Renderer* renderer, const SceneWorld& world) {
    DrawCreditsScreen(renderer, world.App);
}

void DrawLevelComplete(SDL_Renderer* renderer, const SceneWorld& world) {
    StoreHints(world);
    DrawLevelCompleteScreen(renderer, world.App, world.Controllers);
}

void DrawGameOver(SDL_Renderer* renderer, const SceneWorld& world) {
    StoreHints(world);
    DrawGameOverScreen(renderer, world.App, world.Controllers);
}

void DrawPlaying(SDL_Renderer* renderer, const SceneWorld& world) {
    StoreHints(world);
    DrawBoardScreen(renderer, LogicalWidth, LogicalHeight);
}

void DrawUnhinted(SDL_Renderer* renderer, const SceneWorld&) {
    DrawBoardScreen(renderer, LogicalWidth, LogicalHeight);
}

void DrawLow(SDL_Renderer* renderer, const SceneWorld& world) {
    StoreHints(world);
    DrawBoardScreen(renderer, LogicalWidth, 400);
}

void DrawLowest(SDL_Renderer* renderer, const SceneWorld& world) {
    StoreHints(world);
    DrawBoardScreen(renderer, LogicalWidth, 150);
}

void DrawNarrow(SDL_Renderer* renderer, const SceneWorld& world) {
    StoreHints(world);
    DrawBoardScreen(renderer, 380, LogicalHeight);
}

const std::vector<Scene> OtherScenes = {
    {.Name = "board-busy",
     .Arrange = ArrangeBusyRun,
     .Draw = DrawPlaying,
     .Languages = {"en", "de", "long"},
     .Goldens = {{960, "roomy", "de"},
                 {960, "tightest", "de"},
                 {1280, "tight", "de"},
                 {1280, "roomy", "long"},
                 {960, "roomy"},
                 {1280, "roomy"},
                 {1280, "tight"},
                 {1280, "tightest"}}},
    {.Name = "board-cursor-on-source",
     .Arrange = ArrangeCursorOnSource,
     .Draw = DrawPlaying,
     .Languages = {"en"}},
    {.Name = "board-every-tile",
     .Arrange = ArrangeEveryTile,
     .Draw = DrawPlaying,
     .Languages = {"en"},
     .Goldens = {{1152, "roomy"}}},
    {.Name = "board-fast-forward",
     .Arrange = ArrangeFastForward,
     .Draw = DrawPlaying,
     .Languages = {"en"},
     .Goldens = {{1080, "tight"}}},
    {.Name = "board-first", .Draw = DrawPlaying, .Goldens = {{1280, "roomy"}}},
    {.Name = "board-game-over",
     .Arrange = ArrangeGameOver,
     .Draw = DrawPlaying,
     .Languages = {"en"}},
    {.Name = "board-hints-gamepad", .Arrange = ArrangeGamepad, .Draw = DrawPlaying},
    {.Name = "board-hints-gamepad-rebound",
     .Arrange = ArrangeReboundGamepad,
     .Draw = DrawPlaying,
     .Goldens = {{960, "tightest"}}},
    {.Name = "board-hints-joystick",
     .Arrange = ArrangeJoystick,
     .Draw = DrawPlaying,
     .Goldens = {{1080, "tight", "de"}}},
    {.Name = "board-hints-long-keys",
     .Arrange = ArrangeLongKeys,
     .Draw = DrawPlaying,
     .Goldens = {{960, "tight"}}},
    {.Name = "board-hints-none-yet",
     .Arrange = ArrangeBusyRun,
     .Draw = DrawUnhinted,
     .Languages = {"en"}},
    {.Name = "board-long-texts",
     .Arrange = ArrangeLongTexts,
     .Draw = DrawPlaying,
     .Languages = {"en"},
     .Goldens = {{960, "roomy"}, {1280, "tightest"}}},
    {.Name = "board-low",
     .Arrange = ArrangeBusyRun,
     .Draw = DrawLow,
     .Languages = {"en"},
     .Goldens = {{1280, "roomy"}}},
    {.Name = "board-lowest", .Arrange = ArrangeBusyRun, .Draw = DrawLowest, .Languages = {"en"}},
    {.Name = "board-narrow", .Arrange = ArrangeBusyRun, .Draw = DrawNarrow, .Languages = {"en"}},
    {.Name = "board-negative-score", .Arrange = ArrangeNegativeScore, .Draw = DrawPlaying},
    {.Name = "board-overshot-counters",
     .Arrange = ArrangeOvershotCounters,
     .Draw = DrawPlaying,
     .Goldens = {{1728, "tightest"}}},
    {.Name = "credits-end", .Arrange = ArrangeCreditsEnd, .Draw = DrawCredits},
    {.Name = "credits-middle",
     .Arrange = ArrangeCreditsMiddle,
     .Draw = DrawCredits,
     .Languages = {"en", "de", "long"},
     .Goldens = {{960, "roomy", "de"}, {1280, "roomy"}}},
    {.Name = "credits-start", .Draw = DrawCredits},
    {.Name = "game-over",
     .Arrange = ArrangeRunOver,
     .Draw = DrawGameOver,
     .Languages = {"en", "de", "long"},
     .Goldens = {{960, "roomy", "de"}, {1280, "roomy"}}},
    {.Name = "game-over-gamepad", .Arrange = ArrangeRunOverGamepad, .Draw = DrawGameOver},
    {.Name = "game-over-joystick", .Arrange = ArrangeRunOverJoystick, .Draw = DrawGameOver},
    {.Name = "help-from-menu",
     .Draw = DrawHelp,
     .Languages = {"en", "de", "long"},
     .Goldens = {{960, "roomy", "de"},
                 {960, "tight", "de"},
                 {1280, "roomy", "de"},
                 {1280, "roomy", "long"},
                 {960, "roomy"},
                 {1280, "roomy"},
                 {1280, "tight"}}},
    {.Name = "help-from-menu-gamepad", .Arrange = ArrangeHelpGamepad, .Draw = DrawHelp},
    {.Name = "help-from-pause-joystick", .Arrange = ArrangeHelpJoystick, .Draw = DrawHelp},
    {.Name = "help-from-pause",
     .Arrange = ArrangeHelpFromPause,
     .Draw = DrawHelp,
     .Goldens = {{960, "roomy"}, {960, "tightest", "de"}}},
    {.Name = "help-quitting", .Arrange = ArrangeQuitting, .Draw = DrawHelp, .Languages = {"en"}},
    {.Name = "level-complete",
     .Arrange = ArrangeLevelComplete,
     .Draw = DrawLevelComplete,
     .Languages = {"en", "de", "long"},
     .Goldens = {{960, "roomy", "de"}, {1280, "roomy"}}},
    {.Name = "level-complete-gamepad",
     .Arrange = ArrangeLevelCompleteGamepad,
     .Draw = DrawLevelComplete,
     .Goldens = {{960, "tight"}}},
    {.Name = "level-complete-joystick",
     .Arrange = ArrangeLevelCompleteJoystick,
     .Draw = DrawLevelComplete},
    {.Name = "menu-first-start",
     .Draw = DrawMenu,
     .Goldens = {{960, "roomy"}, {1280, "roomy"}, {2560, "tightest"}}},
    {.Name = "menu-last-row",
     .Arrange = ArrangeLastRow,
     .Draw = DrawMenu,
     .Goldens = {{1080, "tightest"}}},
    {.Name = "menu-long-texts",
     .Arrange = ArrangeLongTexts,
     .Draw = DrawMenu,
     .Languages = {"en"},
     .Goldens = {{960, "tight"}}},
    {.Name = "menu-quitting",
     .Arrange = ArrangeQuitting,
     .Draw = DrawMenu,
     .Languages = {"en"},
     .Goldens = {{1280, "tight"}}},
    {.Name = "menu-saved-run",
     .Arrange = ArrangeSavedRun,
     .Draw = DrawMenu,
     .Languages = {"en", "de", "long"},
     .Goldens = {{960, "roomy", "de"}, {1280, "tight"}}},
    {.Name = "notes",
     .Draw = DrawNotes,
     .Languages = {"en"},
     .Goldens = {{1280, "roomy"}, {1280, "tightest"}}},
    {.Name = "pause",
     .Arrange = ArrangePause,
     .Draw = DrawPause,
     .Languages = {"en", "de", "long"},
     .Goldens = {{960, "roomy", "de"}, {1280, "roomy"}}},
    {.Name = "pause-gamepad-last-row",
     .Arrange = ArrangePauseLastRow,
     .Draw = DrawPause,
     .Goldens = {{960, "roomy", "de"}, {960, "tight"}}},
    {.Name = "pause-joystick", .Arrange = ArrangePauseJoystick, .Draw = DrawPause},
    {.Name = "rain", .Draw = DrawRain, .Languages = {"en"}, .Goldens = {{1728, "tight"}}},
    {.Name = "rain-later", .Arrange = ArrangeLater, .Draw = DrawRain, .Languages = {"en"}},
    {.Name = "rain-still", .Draw = DrawStillRain, .Languages = {"en"}},
};

} // namespace

CanvasSize SizeOf(std::int32_t logicalWidth, const PresentedScale& presented) {
    const auto scaled = [&](std::int32_t logical) {
        return static_cast<std::int32_t>(
            std::lround(static_cast<float>(logical) * presented.Scale));
    };
    return {.LogicalWidth = logicalWidth,
            .LogicalHeight = LogicalHeight,
            .SurfaceWidth = scaled(logicalWidth),
            .SurfaceHeight = scaled(LogicalHeight)};
}

std::span<const Scene> AllScenes() {
    static const std::vector<Scene> scenes = [] {
        std::vector<Scene> all = OtherScenes;
        const std::vector<Scene> options = OptionsScenes();
        all.insert(all.end(), options.begin(), options.end());
        return all;
    }();
    return scenes;
}

void UseGamepad(SceneWorld& world) {
    static int standIn = 0;
    world.Controllers.Gamepad = reinterpret_cast<SDL_Gamepad*>(&standIn);
    world.App.LastInputDevice = InputDevice::Gamepad;
}

void UseJoystick(SceneWorld& world) {
    static int standIn = 0;
    world.Controllers.Joystick = reinterpret_cast<SDL_Joystick*>(&standIn);
    world.App.LastInputDevice = InputDevice::Joystick;
}

void EnterScene(const Scene& scene, std::int32_t logicalWidth, SceneWorld& world,
                const LocalizationCatalogRecord& texts) {
    FreezeClock(SceneTime);
    LogicalWidth = logicalWidth;
    LocalizationCatalog = texts;
    StoreHudHintLines("", "", "", "", "");
    LiveSimulation().RunInitialised = false;
    world = {};
    if (scene.Arrange != nullptr) {
        scene.Arrange(world);
    }
}

Picture TakePicture(const Scene& scene, std::int32_t logicalWidth, const PresentedScale& presented,
                    const LocalizationCatalogRecord& texts) {
    SceneWorld world;
    EnterScene(scene, logicalWidth, world, texts);
    SoftwareCanvas canvas(SizeOf(logicalWidth, presented));
    scene.Draw(canvas.Renderer(), world);
    return canvas.Read();
}

} // namespace Wirefall::Testing

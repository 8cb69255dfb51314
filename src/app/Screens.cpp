#include "app/Screens.h"

#include "base/EnumTable.h"
#include "options/OptionsScreen.h"
#include "screens/BoardScreen.h"
#include "screens/CreditsScreen.h"
#include "screens/GameOverScreen.h"
#include "screens/HelpScreen.h"
#include "screens/LevelCompleteScreen.h"
#include "screens/MainMenu.h"
#include "screens/PauseScreen.h"

namespace Wirefall {

namespace {

struct ScreenEntry {
    void (*Draw)(SDL_Renderer* renderer, const GameApp& app, const ControllerSet& controllers);
    void (*Press)(GameApp& app, SDL_Window* window, SDL_Renderer* renderer, PressCode code);
};

// Most screens show nothing of the controllers or need no window.

template <auto Draw>
void WithoutControllers(SDL_Renderer* renderer, const GameApp& app,
                        const ControllerSet& /*controllers*/) {
    Draw(renderer, app);
}

template <auto Press>
void WithoutWindow(GameApp& app, SDL_Window* /*window*/, SDL_Renderer* /*renderer*/,
                   PressCode code) {
    Press(app, code);
}

constexpr auto Screens = TableBy<AppScreen, ScreenEntry>({
    {WithoutControllers<DrawMainMenu>, WithoutWindow<PressOnMainMenu>},
    {DrawOptionsScreen, PressOnOptions},
    {DrawHelpScreen, WithoutWindow<PressOnHelp>},
    {DrawPlayingScreen, WithoutWindow<PressOnPlaying>},
    {DrawLevelCompleteScreen, WithoutWindow<PressOnLevelComplete>},
    {DrawPauseScreen, WithoutWindow<PressOnPause>},
    {WithoutControllers<DrawCreditsScreen>, WithoutWindow<PressOnCredits>},
    {DrawGameOverScreen, WithoutWindow<PressOnGameOver>},
});

} // namespace

void DrawScreen(SDL_Renderer* renderer, const GameApp& app, const ControllerSet& controllers) {
    Screens[app.Screen].Draw(renderer, app, controllers);
}

void DispatchPress(GameApp& app, SDL_Window* window, SDL_Renderer* renderer, PressCode code) {
    if (app.QuitRequested || code == Press::None || code > MaxScancode) {
        return;
    }
    Screens[app.Screen].Press(app, window, renderer, code);
}

} // namespace Wirefall

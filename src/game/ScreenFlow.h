#pragma once

// The ways between the screens, and how play ends in the result screens. Who takes which way at
// which press is told with each screen.

#include "game/GameApp.h"

namespace Wirefall {

/// Starts the quit fade, the only way out of the game. Does nothing while it runs already.
void RequestQuit(GameApp& app);

void ShowPlaying(GameApp& app);

/// With its first row selected.
void ShowMainMenu(GameApp& app);

/// Opens the root page of the Options. Leaving it shows `returnScreen`.
void OpenOptions(GameApp& app, AppScreen returnScreen);

/// Leaving the help shows `returnScreen`.
void OpenHelp(GameApp& app, AppScreen returnScreen);

/// On the Playing screen: when the run is over, stores its last status, gives up the saved run and
/// shows the GameOver screen.
void CheckGameOverTransition(GameApp& app);

/// On the Playing screen: when the level is complete, stores the status, saves at once and shows
/// the LevelComplete screen.
void CheckLevelCompleteTransition(GameApp& app);

} // namespace Wirefall

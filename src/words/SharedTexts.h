#pragma once

// Texts that more than one screen shows. Every other text stands where it is shown.

#include "words/Localization.h"

namespace Wirefall::Texts {

inline constexpr GameText MoveCommand = {"Hud.Command.Move", "MOVE"};
inline constexpr GameText RotateCommand = {"Hud.Command.Rotate", "ROTATE"};
inline constexpr GameText PlaceCommand = {"Hud.Command.Place", "PLACE"};
inline constexpr GameText FastForwardCommand = {"Hud.Command.FastForward", "FAST FORWARD"};

// What the buttons of a controller do.
inline constexpr GameText Select = {"Controller.Hint.Select", "SELECT"};
inline constexpr GameText Back = {"Controller.Hint.Back", "BACK"};
inline constexpr GameText MainMenu = {"Controller.Hint.MainMenu", "MAIN MENU"};
inline constexpr GameText PauseMenu = {"Controller.Hint.PauseMenu", "PAUSE MENU"};

} // namespace Wirefall::Texts

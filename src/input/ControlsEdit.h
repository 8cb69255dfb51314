#pragma once

// The working copy of the bindings that the Controls page edits. The page begins an edit, changes
// the copy, and either copies it to the live tables or begins again.

#include "input/Bindings.h"

namespace Wirefall {

struct GameApp;

/// Takes a fresh working copy of the live bindings and ends any capture.
void BeginControlsEdit(GameApp& app);

/// Whether the working copy differs from the live bindings. False while there is none.
bool ControlsEditIsDirty(const GameApp& app);

/// The table that edits go to: the working copy's, or the live one while there is no copy.
KeyboardTable& EditedKeyboardTable(GameApp& app);
GamepadTable& EditedGamepadTable(GameApp& app);
JoystickTable& EditedJoystickTable(GameApp& app);

/// Stops waiting for a press to bind.
void EndCapture(BindingCapture& capture);

} // namespace Wirefall

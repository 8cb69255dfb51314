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

/// Sets the working copy to the factory settings, all devices.
void ResetControlsEdit(GameApp& app);

/// If the working copy has changes, makes it the live bindings and asks for them to be saved.
/// Begins the edit anew in any case.
void ApplyControlsEdit(GameApp& app);

/// The table that edits go to: the working copy's, or the live one while there is no copy.
KeyboardTable& EditedKeyboardTable(GameApp& app);
GamepadTable& EditedGamepadTable(GameApp& app);
JoystickTable& EditedJoystickTable(GameApp& app);

/// Stops waiting for a press to bind.
void EndCapture(BindingCapture& capture);

} // namespace Wirefall

#pragma once

// The Controls page: the bindings of one device, edited in a working copy, and the waiting for a
// press to bind. The page begins an edit, changes the copy, and either copies it to the live tables
// or begins again.

#include "game/GameApp.h"
#include "input/PressCodes.h"
#include "options/PageTable.h"

#include <cstdint>

namespace Wirefall {

extern const PageTable ControlsPage;

/// Takes a fresh working copy of the live bindings and ends any capture.
void BeginControlsEdit(GameApp& app);

/// Whether the working copy differs from the live bindings. False while there is none.
bool ControlsEditIsDirty(const GameApp& app);

/// Sets the working copy to the factory settings, all devices.
void ResetControlsEdit(GameApp& app);

/// If the working copy has changes, makes it the live bindings and asks for them to be saved.
/// Begins the edit anew in any case.
void ApplyControlsEdit(GameApp& app);

// A capture changes the working copy, or the live tables while there is none.

/// Whether the Options are open and wait for a press of that device.
bool IsCapturing(const GameApp& app, InputDevice device);

/// Binds the button of a gamepad or a joystick to the row that waits, and ends the capture.
void CaptureButton(GameApp& app, InputDevice device, std::int32_t button);

/// Does what a press means while a capture waits: it binds a key, clears the row, or gives up.
void PressDuringCapture(GameApp& app, PressCode code);

} // namespace Wirefall

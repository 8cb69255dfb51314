#pragma once

// What a press means on the menus: the fixed codes, and the keys that the player has bound to the
// same. A code can mean two things when keys are bound that way; each screen asks in an order of
// its own, and the first that is true counts.

#include "input/Bindings.h"
#include "input/PressCodes.h"

namespace Wirefall {

/// Whether the code is that of the key bound to the action, which must not be one of the menus'
/// two: the keyboard has no bindings for those.
bool IsBoundTo(const KeyboardTable& bindings, PressCode code, InputAction action);

bool IsUp(const KeyboardTable& bindings, PressCode code);
bool IsDown(const KeyboardTable& bindings, PressCode code);
bool IsLeft(const KeyboardTable& bindings, PressCode code);
bool IsRight(const KeyboardTable& bindings, PressCode code);
bool IsConfirm(PressCode code);
bool IsBack(PressCode code);

} // namespace Wirefall

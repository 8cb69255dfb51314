#include "input/PressMeaning.h"

namespace Wirefall {

bool IsBoundTo(const KeyboardTable& bindings, PressCode code, InputAction action) {
    return code == bindings[ActionIndex(action)];
}

bool IsUp(const KeyboardTable& bindings, PressCode code) {
    return code == Press::Up || IsBoundTo(bindings, code, InputAction::CursorUp);
}

bool IsDown(const KeyboardTable& bindings, PressCode code) {
    return code == Press::Down || IsBoundTo(bindings, code, InputAction::CursorDown);
}

bool IsLeft(const KeyboardTable& bindings, PressCode code) {
    return code == Press::Left || IsBoundTo(bindings, code, InputAction::CursorLeft);
}

bool IsRight(const KeyboardTable& bindings, PressCode code) {
    return code == Press::Right || IsBoundTo(bindings, code, InputAction::CursorRight);
}

bool IsConfirm(PressCode code) { return code == Press::Confirm || code == Press::KeypadConfirm; }

bool IsBack(PressCode code) { return code == Press::Back; }

} // namespace Wirefall

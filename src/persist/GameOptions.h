#pragma once

// Everything that the player can set, put together from the layers that own it, and whether
// Config.ini has all of it.

#include "audio/Volumes.h"
#include "display/DisplayState.h"
#include "input/Bindings.h"
#include "words/LanguageCode.h"

namespace Wirefall {

struct GameOptions : InputState, LanguageSetting, DisplayState, AudioSettings {
    bool OptionsDirty = false; ///< Config.ini must be rewritten.
    /// There is a Config.ini that could not be read. It stays as it is until the player applies
    /// something.
    bool OptionsUnread = false;

    bool operator==(const GameOptions&) const = default;
};

} // namespace Wirefall

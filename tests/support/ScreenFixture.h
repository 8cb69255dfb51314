#pragma once

// What the tests of whole screens have in common: the colours that the screens are made of, and a
// world that stands still.

#include "base/Clock.h"
#include "display/LogicalCanvas.h"
#include "support/Scenes.h"
#include "support/SoftwareCanvas.h"
#include "words/Localization.h"

#include <gtest/gtest.h>

namespace Wirefall::ScreenColors {

inline constexpr Testing::Rgb Bright = {0xca, 0xec, 0xe0};
inline constexpr Testing::Rgb Normal = {0xaa, 0xcc, 0xc0};
inline constexpr Testing::Rgb Hint = {0x70, 0x96, 0x8a};
inline constexpr Testing::Rgb Cyan = {0x54, 0xce, 0xe0};
inline constexpr Testing::Rgb Accent = {0x46, 0x84, 0x7a};

} // namespace Wirefall::ScreenColors

namespace Wirefall {

/// A stopped clock, a canvas 1280 wide, the built-in texts, and a game that is about to quit, so
/// that there are no digits in the background.
class ScreenFixture : public testing::Test {
protected:
    ScreenFixture() {
        FreezeClock(5000);
        LogicalWidth = 1280;
        LocalizationCatalog = {};
        App.QuitRequested = true;
    }
    void TearDown() override {
        ResumeClock();
        LogicalWidth = 1280;
        LocalizationCatalog = {};
    }

    Testing::SceneWorld World;
    GameApp& App = World.App;
};

} // namespace Wirefall

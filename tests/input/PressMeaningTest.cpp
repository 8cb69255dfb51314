#include "input/PressMeaning.h"

#include <gtest/gtest.h>

#include <array>

namespace Wirefall {

namespace {

struct CursorCase {
    bool (*Is)(const KeyboardTable& bindings, PressCode code);
    InputAction Action;
    PressCode Fixed;
};

constexpr std::array<CursorCase, 4> CursorCases = {{
    {IsUp, InputAction::CursorUp, Press::Up},
    {IsDown, InputAction::CursorDown, Press::Down},
    {IsLeft, InputAction::CursorLeft, Press::Left},
    {IsRight, InputAction::CursorRight, Press::Right},
}};

TEST(PressMeaningTest, AStepIsItsFixedCodeOrTheBoundKey) {
    for (const CursorCase& c : CursorCases) {
        KeyboardTable bindings = FactoryBindings::Keyboard;
        bindings.at(ActionIndex(c.Action)) = SDL_SCANCODE_W;
        for (PressCode code = 1; code <= MaxScancode; ++code) {
            EXPECT_EQ(c.Is(bindings, code), code == c.Fixed || code == SDL_SCANCODE_W) << code;
        }
    }
}

TEST(PressMeaningTest, TheMenuKeysAreFixed) {
    for (PressCode code = 0; code <= MaxScancode; ++code) {
        EXPECT_EQ(IsConfirm(code), code == 40 || code == 88) << code;
        EXPECT_EQ(IsBack(code), code == 41) << code;
    }
}

TEST(PressMeaningTest, AKeyCanMeanSeveralThings) {
    KeyboardTable bindings = FactoryBindings::Keyboard;
    bindings.at(ActionIndex(InputAction::CursorUp)) = Press::Back;
    bindings.at(ActionIndex(InputAction::RotateLeft)) = Press::Back;
    EXPECT_TRUE(IsUp(bindings, Press::Back));
    EXPECT_TRUE(IsBoundTo(bindings, Press::Back, InputAction::RotateLeft));
    EXPECT_TRUE(IsBack(Press::Back));
}

} // namespace

} // namespace Wirefall

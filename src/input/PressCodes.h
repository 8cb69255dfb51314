#pragma once

// The vocabulary of presses. Whatever the device, a press reaches the screens as one number: the
// scancode of the key that gives it on a default keyboard. A key that means nothing to the screens
// is still a press code, since the player may have bound it.

#include <SDL3/SDL_scancode.h>

#include <cstdint>

namespace Wirefall {

/// An SDL scancode, or Press::None.
using PressCode = std::uint32_t;

namespace Press {

inline constexpr PressCode None = 0;
inline constexpr PressCode Up = SDL_SCANCODE_UP;
inline constexpr PressCode Down = SDL_SCANCODE_DOWN;
inline constexpr PressCode Left = SDL_SCANCODE_LEFT;
inline constexpr PressCode Right = SDL_SCANCODE_RIGHT;
inline constexpr PressCode RotateLeft = SDL_SCANCODE_Q;
inline constexpr PressCode RotateRight = SDL_SCANCODE_E;
inline constexpr PressCode Confirm = SDL_SCANCODE_RETURN;
inline constexpr PressCode KeypadConfirm = SDL_SCANCODE_KP_ENTER; ///< From the keyboard only.
inline constexpr PressCode Back = SDL_SCANCODE_ESCAPE;

} // namespace Press

} // namespace Wirefall

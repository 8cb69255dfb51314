#pragma once

// Text in the built-in font: measuring, fitting, drawing and cutting it. All texts are UTF-8, all
// sizes logical pixels, and a scale is the side of a font pixel. Every character advances 7 font
// pixels, but for the copyright sign, which advances 8.
//
// Two measures live side by side on purpose. Some layouts count characters (TextWidth), others the
// cheaper way count bytes, which makes them shrink or cut a text with umlauts earlier. A screen
// uses the one it was laid out with.

#include "draw/Color.h"
#include "draw/RectBatch.h"

#include <SDL3/SDL_render.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace Wirefall {

/// The width of the text, in characters. It stops growing at the end of the 32-bit range.
std::int32_t TextWidth(std::string_view text, std::int32_t scale);

/// The same as the layouts reckon with it.
float TextWidthPx(std::string_view text, std::int32_t scale);

/// The height of a line of text.
float TextHeight(std::int32_t scale);

/// The width of that many bytes, by the cheaper measure.
float ByteWidth(std::size_t bytes, std::int32_t scale);

/// The largest scale up to `wanted` at which the text, measured in characters, is at most that
/// wide; 1 if there is none, or if `wanted` is below 1.
std::int32_t FitScaleToWidth(std::string_view text, float maxWidth, std::int32_t wanted);

/// The same for a text of that many bytes, measured in bytes. A maximum below 1 counts as 1.
std::int32_t FitScaleToLength(std::size_t bytes, float maxWidth, std::int32_t wanted);

/// Draws from the left edge x and the top y. A control character is a blank; a character that the
/// font lacks is drawn as "?".
void DrawText(SDL_Renderer* renderer, std::string_view text, float x, float y, std::int32_t scale,
              PackedColor color);

/// Adds the rectangles of such a text to a batch, for texts of one colour that go together.
void AddText(RectBatch& batch, std::string_view text, float x, float y, std::int32_t scale);

void DrawTextCentered(SDL_Renderer* renderer, std::string_view text, float centerX, float y,
                      std::int32_t scale, PackedColor color);

/// The y at which DrawText centres what is to be seen of the text (capitals leave the lowest row of
/// their cell empty) in the band that starts at `top`.
float InkCenteredY(std::string_view text, std::int32_t scale, float top, float height);

/// Breaks the text at its white space into lines of at most that width, in characters. A word is
/// never split: one that is wider stands alone and overflows. Never empty: a text without words is
/// its own single line.
std::vector<std::string> WrapWords(std::int32_t scale, std::string_view text, float maxWidth);

/// The text without its outer blanks, cut to at most that width, in bytes, with "..." at its end if
/// something was cut. Empty when not even the dots fit. The cut may leave half a character before
/// the dots, which draws as "?".
std::string Ellipsize(std::string_view text, float maxWidth, std::int32_t scale);

/// The text without leading and trailing blanks. Only U+0020 counts.
std::string TrimBlanks(std::string_view text);

} // namespace Wirefall

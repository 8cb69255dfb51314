#pragma once

// What a frame asks of SDL, taken down as it asks, so that it can be asked again without the work
// of finding out what to draw. The linker puts the recorder between the game and the few functions
// of SDL that draw (see CMakeLists.txt); while nothing is recorded it only passes the calls on.

#include "draw/Color.h"

#include <SDL3/SDL_rect.h>
#include <SDL3/SDL_render.h>

#include <variant>
#include <vector>

namespace Wirefall::Benchmarks {

struct FillOp {
    PackedColor Color;
    std::vector<SDL_FRect> Rects;
};

struct OutlineOp {
    PackedColor Color;
    SDL_FRect Rect;
};

struct TextureOp {
    SDL_Texture* Texture;
    bool Whole; ///< The whole texture rather than Source.
    SDL_FRect Source;
    SDL_FRect Target;
};

struct TargetOp {
    SDL_Texture* Target;
};

struct ClipOp {
    bool Whole; ///< Nothing is clipped.
    SDL_Rect Rect;
};

using DrawOp = std::variant<FillOp, OutlineOp, TextureOp, TargetOp, ClipOp>;
using Recording = std::vector<DrawOp>;

/// Takes down what `draw` asks of SDL, in order. It is drawn all the same.
template <typename Draw>
Recording Record(const Draw& draw);

/// The same picture with as few calls as its order of colours allows: neighbours of one colour
/// become one batch.
Recording Batched(const Recording& recording);

/// The same picture with a call for each rectangle.
Recording Unbatched(const Recording& recording);

void Replay(SDL_Renderer* renderer, const Recording& recording);

void BeginRecording(Recording& recording);
void EndRecording();

template <typename Draw>
Recording Record(const Draw& draw) {
    Recording recording;
    BeginRecording(recording);
    draw();
    EndRecording();
    return recording;
}

} // namespace Wirefall::Benchmarks

#include "FrameRecorder.h"

#include <cstddef>
#include <cstdint>

// The names are the linker's: with --wrap=f a call of f arrives at __wrap_f, and __real_f is f.
// NOLINTBEGIN(readability-identifier-naming)
extern "C" {
bool __real_SDL_SetRenderDrawColor(SDL_Renderer*, Uint8, Uint8, Uint8, Uint8);
bool __real_SDL_RenderFillRect(SDL_Renderer*, const SDL_FRect*);
bool __real_SDL_RenderFillRects(SDL_Renderer*, const SDL_FRect*, int);
bool __real_SDL_RenderRect(SDL_Renderer*, const SDL_FRect*);
bool __real_SDL_RenderTexture(SDL_Renderer*, SDL_Texture*, const SDL_FRect*, const SDL_FRect*);
bool __real_SDL_SetRenderTarget(SDL_Renderer*, SDL_Texture*);
bool __real_SDL_SetRenderClipRect(SDL_Renderer*, const SDL_Rect*);
}

namespace Wirefall::Benchmarks {

namespace {

Recording* Current = nullptr;
PackedColor CurrentColor = 0;

void SetColor(SDL_Renderer* renderer, PackedColor color) {
    __real_SDL_SetRenderDrawColor(renderer, RedOf(color), GreenOf(color), BlueOf(color),
                                  AlphaOf(color));
}

struct Replayer {
    SDL_Renderer* Renderer;

    void operator()(const FillOp& op) const {
        SetColor(Renderer, op.Color);
        if (op.Rects.size() == 1) {
            __real_SDL_RenderFillRect(Renderer, op.Rects.data());
        } else {
            __real_SDL_RenderFillRects(Renderer, op.Rects.data(),
                                       static_cast<int>(op.Rects.size()));
        }
    }

    void operator()(const OutlineOp& op) const {
        SetColor(Renderer, op.Color);
        __real_SDL_RenderRect(Renderer, &op.Rect);
    }

    void operator()(const TextureOp& op) const {
        __real_SDL_RenderTexture(Renderer, op.Texture, op.Whole ? nullptr : &op.Source, &op.Target);
    }

    void operator()(const TargetOp& op) const { __real_SDL_SetRenderTarget(Renderer, op.Target); }

    void operator()(const ClipOp& op) const {
        __real_SDL_SetRenderClipRect(Renderer, op.Whole ? nullptr : &op.Rect);
    }
};

} // namespace

void BeginRecording(Recording& recording) { Current = &recording; }

void EndRecording() { Current = nullptr; }

Recording Batched(const Recording& recording) {
    Recording batched;
    for (const DrawOp& op : recording) {
        const auto* const fill = std::get_if<FillOp>(&op);
        auto* const last = batched.empty() ? nullptr : std::get_if<FillOp>(&batched.back());
        if (fill != nullptr && last != nullptr && fill->Color == last->Color) {
            last->Rects.insert(last->Rects.end(), fill->Rects.begin(), fill->Rects.end());
        } else {
            batched.push_back(op);
        }
    }
    return batched;
}

Recording Unbatched(const Recording& recording) {
    Recording unbatched;
    for (const DrawOp& op : recording) {
        const auto* const fill = std::get_if<FillOp>(&op);
        if (fill == nullptr) {
            unbatched.push_back(op);
            continue;
        }
        for (const SDL_FRect& rect : fill->Rects) {
            unbatched.push_back(FillOp{fill->Color, {rect}});
        }
    }
    return unbatched;
}

void Replay(SDL_Renderer* renderer, const Recording& recording) {
    const Replayer replayer{renderer};
    for (const DrawOp& op : recording) {
        std::visit(replayer, op);
    }
}

} // namespace Wirefall::Benchmarks

using namespace Wirefall;
using namespace Wirefall::Benchmarks;

extern "C" {

bool __wrap_SDL_SetRenderDrawColor(SDL_Renderer* renderer, Uint8 r, Uint8 g, Uint8 b, Uint8 a) {
    CurrentColor =
        Rgba((std::uint32_t{r} << 24U) | (std::uint32_t{g} << 16U) | (std::uint32_t{b} << 8U) | a);
    return __real_SDL_SetRenderDrawColor(renderer, r, g, b, a);
}

bool __wrap_SDL_RenderFillRect(SDL_Renderer* renderer, const SDL_FRect* rect) {
    if (Current != nullptr) {
        Current->push_back(FillOp{CurrentColor, {*rect}});
    }
    return __real_SDL_RenderFillRect(renderer, rect);
}

bool __wrap_SDL_RenderFillRects(SDL_Renderer* renderer, const SDL_FRect* rects, int count) {
    if (Current != nullptr) {
        Current->push_back(FillOp{CurrentColor, std::vector<SDL_FRect>(rects, rects + count)});
    }
    return __real_SDL_RenderFillRects(renderer, rects, count);
}

bool __wrap_SDL_RenderRect(SDL_Renderer* renderer, const SDL_FRect* rect) {
    if (Current != nullptr) {
        Current->push_back(OutlineOp{CurrentColor, *rect});
    }
    return __real_SDL_RenderRect(renderer, rect);
}

bool __wrap_SDL_RenderTexture(SDL_Renderer* renderer, SDL_Texture* texture, const SDL_FRect* source,
                              const SDL_FRect* target) {
    if (Current != nullptr) {
        const bool whole = source == nullptr;
        Current->push_back(TextureOp{texture, whole, whole ? SDL_FRect{} : *source, *target});
    }
    return __real_SDL_RenderTexture(renderer, texture, source, target);
}

bool __wrap_SDL_SetRenderTarget(SDL_Renderer* renderer, SDL_Texture* target) {
    if (Current != nullptr) {
        Current->push_back(TargetOp{target});
    }
    return __real_SDL_SetRenderTarget(renderer, target);
}

bool __wrap_SDL_SetRenderClipRect(SDL_Renderer* renderer, const SDL_Rect* rect) {
    if (Current != nullptr) {
        const bool whole = rect == nullptr;
        Current->push_back(ClipOp{whole, whole ? SDL_Rect{} : *rect});
    }
    return __real_SDL_SetRenderClipRect(renderer, rect);
}
}
// NOLINTEND(readability-identifier-naming)

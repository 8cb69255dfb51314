#pragma once

// A texture that can be drawn on.

#include <SDL3/SDL_render.h>

namespace Wirefall::Testing {

class TargetTexture {
public:
    explicit TargetTexture(SDL_Renderer* renderer)
        : Texture(SDL_CreateTexture(renderer, SDL_PIXELFORMAT_RGBA8888, SDL_TEXTUREACCESS_TARGET,
                                    64, 64)) {}
    ~TargetTexture() { SDL_DestroyTexture(Texture); }
    TargetTexture(const TargetTexture&) = delete;
    TargetTexture& operator=(const TargetTexture&) = delete;
    TargetTexture(TargetTexture&&) = delete;
    TargetTexture& operator=(TargetTexture&&) = delete;

    SDL_Texture* Get() const { return Texture; }

private:
    SDL_Texture* Texture;
};

} // namespace Wirefall::Testing

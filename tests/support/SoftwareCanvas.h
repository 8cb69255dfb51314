#pragma once

// A place to draw screens without a window: SDL's software renderer on a surface, set up as the
// program sets up its own, with the canvas letterboxed into the surface. The atlas and the rain's
// texture belong to one renderer, so of several canvases alive only the first can show them.

#include <SDL3/SDL_render.h>
#include <SDL3/SDL_surface.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace Wirefall::Testing {

struct Rgb {
    std::uint8_t R = 0;
    std::uint8_t G = 0;
    std::uint8_t B = 0;

    bool operator==(const Rgb&) const = default;
};

struct Picture {
    std::int32_t Width = 0;
    std::int32_t Height = 0;
    std::vector<Rgb> Pixels; ///< Row by row from the top.

    const Rgb& At(std::int32_t x, std::int32_t y) const {
        return Pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(Width) +
                      static_cast<std::size_t>(x)];
    }

    bool operator==(const Picture&) const = default;
};

/// The size of a canvas and of the surface that shows it.
struct CanvasSize {
    std::int32_t LogicalWidth = 1280;
    std::int32_t LogicalHeight = 720;
    std::int32_t SurfaceWidth = 1280;
    std::int32_t SurfaceHeight = 720;
};

class SoftwareCanvas {
public:
    /// Black, with the atlas built. Throws std::runtime_error when SDL refuses.
    explicit SoftwareCanvas(const CanvasSize& size = {});
    ~SoftwareCanvas();
    SoftwareCanvas(const SoftwareCanvas&) = delete;
    SoftwareCanvas& operator=(const SoftwareCanvas&) = delete;
    SoftwareCanvas(SoftwareCanvas&&) = delete;
    SoftwareCanvas& operator=(SoftwareCanvas&&) = delete;

    SDL_Renderer* Renderer() const { return RendererOwner.get(); }

    /// Makes the whole surface black, as each frame begins.
    void Clear() const;

    /// What has been drawn since then.
    Picture Read();

private:
    struct Destroy {
        void operator()(SDL_Surface* surface) const { SDL_DestroySurface(surface); }
        void operator()(SDL_Renderer* renderer) const { SDL_DestroyRenderer(renderer); }
    };

    std::unique_ptr<SDL_Surface, Destroy> Surface;
    std::unique_ptr<SDL_Renderer, Destroy> RendererOwner;
};

} // namespace Wirefall::Testing

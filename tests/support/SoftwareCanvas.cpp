#include "support/SoftwareCanvas.h"

#include "draw/BinaryRain.h"
#include "draw/Color.h"
#include "draw/Primitives.h"
#include "draw/SpriteAtlas.h"

#include <SDL3/SDL_error.h>

#include <cstring>
#include <stdexcept>
#include <string>

namespace Wirefall::Testing {

namespace {

[[noreturn]] void Refuse(const char* what) {
    throw std::runtime_error(std::string(what) + ": " + SDL_GetError());
}

} // namespace

SoftwareCanvas::SoftwareCanvas(const CanvasSize& size)
    : Surface(SDL_CreateSurface(size.SurfaceWidth, size.SurfaceHeight, SDL_PIXELFORMAT_XRGB8888)) {
    if (Surface == nullptr) {
        Refuse("SDL_CreateSurface");
    }
    RendererOwner.reset(SDL_CreateSoftwareRenderer(Surface.get()));
    if (RendererOwner == nullptr) {
        Refuse("SDL_CreateSoftwareRenderer");
    }
    SDL_SetRenderDrawBlendMode(Renderer(), SDL_BLENDMODE_BLEND);
    if (!SDL_SetRenderLogicalPresentation(Renderer(), size.LogicalWidth, size.LogicalHeight,
                                          SDL_LOGICAL_PRESENTATION_LETTERBOX)) {
        Refuse("SDL_SetRenderLogicalPresentation");
    }
    if (!BuildTextureAtlas(Renderer())) {
        Refuse("BuildTextureAtlas");
    }
    Clear();
}

SoftwareCanvas::~SoftwareCanvas() {
    ReleaseRainCache();
    ReleaseTextureAtlas();
}

void SoftwareCanvas::Clear() const {
    SetDrawColor(Renderer(), Rgba(0x000000ff));
    SDL_RenderClear(Renderer());
}

Picture SoftwareCanvas::Read() {
    SDL_RenderPresent(Renderer());
    const std::unique_ptr<SDL_Surface, Destroy> rgb(
        SDL_ConvertSurface(Surface.get(), SDL_PIXELFORMAT_RGB24));
    if (rgb == nullptr) {
        Refuse("SDL_ConvertSurface");
    }
    Picture picture{.Width = rgb->w, .Height = rgb->h, .Pixels = {}};
    const auto rowPixels = static_cast<std::size_t>(rgb->w);
    static_assert(sizeof(Rgb) == 3);
    picture.Pixels.resize(rowPixels * static_cast<std::size_t>(rgb->h));
    for (std::size_t row = 0; row < static_cast<std::size_t>(rgb->h); ++row) {
        std::memcpy(picture.Pixels.data() + row * rowPixels,
                    static_cast<const std::uint8_t*>(rgb->pixels) +
                        row * static_cast<std::size_t>(rgb->pitch),
                    rowPixels * sizeof(Rgb));
    }
    return picture;
}

} // namespace Wirefall::Testing

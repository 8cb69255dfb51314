#include "draw/TileArt.h"

#include "sim/Direction.h"
#include "support/SoftwareCanvas.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace Wirefall {

namespace {

using Testing::CanvasSize;
using Testing::Picture;
using Testing::Rgb;
using Testing::SoftwareCanvas;

constexpr CanvasSize SmallCanvas = {
    .LogicalWidth = 80, .LogicalHeight = 80, .SurfaceWidth = 80, .SurfaceHeight = 80};
constexpr Rgb Black = {0, 0, 0};
constexpr Rgb Cyan = {0x54, 0xce, 0xe0};

Picture Drawn(const Tile& tile, float x, float y, float w, float h) {
    SoftwareCanvas canvas(SmallCanvas);
    DrawTile(canvas.Renderer(), tile, x, y, w, h);
    return canvas.Read();
}

Tile WithExits(ConnectionMask exits) {
    Tile tile = MakeTile(TileType::Straight, 0);
    tile.Connections = exits;
    return tile;
}

// The lit pixels of a column or a row.
struct Span {
    std::int32_t First = -1;
    std::int32_t Last = -1;

    bool operator==(const Span&) const = default;

    void Add(std::int32_t at) {
        First = First < 0 ? at : First;
        Last = at;
    }
};

Span LitInColumn(const Picture& picture, std::int32_t x) {
    Span span;
    for (std::int32_t y = 0; y < picture.Height; ++y) {
        if (picture.At(x, y) != Black) {
            span.Add(y);
        }
    }
    return span;
}

Span LitInRow(const Picture& picture, std::int32_t y) {
    Span span;
    for (std::int32_t x = 0; x < picture.Width; ++x) {
        if (picture.At(x, y) != Black) {
            span.Add(x);
        }
    }
    return span;
}

// A cell of 56 at (10, 12): centre (38, 40), inset 7, hub 4, from -2 to +2 around the centre.

TEST(TilePicture, ReachesUpToTheInset) {
    const Picture picture = Drawn(WithExits(1), 10.0F, 12.0F, 56.0F, 56.0F);
    EXPECT_EQ(LitInColumn(picture, 38), (Span{19, 42}));
    EXPECT_EQ(LitInRow(picture, 25), (Span{38, 38}));
    EXPECT_EQ(LitInRow(picture, 40), (Span{36, 40}));
}

TEST(TilePicture, ReachesRightOnePixelFurther) {
    const Picture picture = Drawn(WithExits(2), 10.0F, 12.0F, 56.0F, 56.0F);
    EXPECT_EQ(LitInRow(picture, 40), (Span{36, 59}));
    EXPECT_EQ(LitInColumn(picture, 50), (Span{40, 40}));
}

TEST(TilePicture, ReachesDownOnePixelFurther) {
    const Picture picture = Drawn(WithExits(4), 10.0F, 12.0F, 56.0F, 56.0F);
    EXPECT_EQ(LitInColumn(picture, 38), (Span{38, 61}));
}

TEST(TilePicture, ReachesLeftToTheInset) {
    const Picture picture = Drawn(WithExits(8), 10.0F, 12.0F, 56.0F, 56.0F);
    EXPECT_EQ(LitInRow(picture, 40), (Span{17, 40}));
}

TEST(TilePicture, IsNothingWithoutExits) {
    const Picture nothing = SoftwareCanvas(SmallCanvas).Read();
    EXPECT_EQ(Drawn(WithExits(0), 10.0F, 12.0F, 56.0F, 56.0F), nothing);
    EXPECT_EQ(Drawn(WithExits(0xf0), 10.0F, 12.0F, 56.0F, 56.0F), nothing);
}

TEST(TilePicture, KeepsASmallInsetAndHubInASmallCell) {
    // A cell of 10: centre (5, 5), inset 2, hub 2.
    const Picture picture = Drawn(WithExits(15), 0.0F, 0.0F, 10.0F, 10.0F);
    EXPECT_EQ(LitInColumn(picture, 5), (Span{2, 8}));
    EXPECT_EQ(LitInRow(picture, 5), (Span{2, 8}));
    EXPECT_EQ(LitInRow(picture, 4), (Span{4, 6}));
}

TEST(TilePicture, HasArmsOfAtLeastOnePixelInTheTiniestCell) {
    const Picture picture = Drawn(WithExits(1), 10.0F, 10.0F, 1.0F, 1.0F);
    EXPECT_EQ(LitInColumn(picture, 11), (Span{10, 12}));
}

TEST(TilePicture, RoundsACellAtAFractionalPlace) {
    // The centre's x of 31.5 rounds to 32, the top's y of 2.5 to 3.
    const Picture picture = Drawn(WithExits(1), 3.5F, 2.5F, 56.0F, 56.0F);
    EXPECT_EQ(LitInRow(picture, 15), (Span{32, 32}));
    EXPECT_EQ(LitInColumn(picture, 32).First, 10);
}

TEST(TilePicture, HasTheColourOfItsKind) {
    const auto hubColor = [](TileType type) {
        Tile tile = MakeTile(type, 0);
        tile.Connections = AllExits;
        return Drawn(tile, 10.0F, 12.0F, 56.0F, 56.0F).At(38, 40);
    };
    for (const TileType plain : {TileType::Empty, TileType::Straight, TileType::Corner,
                                 TileType::TJunction, TileType::Cross, static_cast<TileType>(8)}) {
        EXPECT_EQ(hubColor(plain), Cyan);
    }
    EXPECT_EQ(hubColor(TileType::Firewall), (Rgb{0xf4, 0xb0, 0x6c}));
    EXPECT_EQ(hubColor(TileType::Antivirus), (Rgb{0x70, 0xf6, 0x9e}));
    EXPECT_EQ(hubColor(TileType::Buffer), (Rgb{0x92, 0xbc, 0xec}));
}

TEST(TileBackground, TellsTheSpecialKinds) {
    EXPECT_EQ(TileBackgroundColor(TileType::Empty), Rgba(0x091214ff));
    for (const TileType route :
         {TileType::Straight, TileType::Corner, TileType::TJunction, TileType::Cross}) {
        EXPECT_EQ(TileBackgroundColor(route), Rgba(0x142422ff));
    }
    EXPECT_EQ(TileBackgroundColor(TileType::Firewall), Rgba(0x3e2616ff));
    EXPECT_EQ(TileBackgroundColor(TileType::Antivirus), Rgba(0x16422eff));
    EXPECT_EQ(TileBackgroundColor(TileType::Buffer), Rgba(0x1e3042ff));
    EXPECT_EQ(TileBackgroundColor(static_cast<TileType>(8)), Rgba(0x141414ff));
    EXPECT_EQ(TileBackgroundColor(static_cast<TileType>(255)), Rgba(0x141414ff));
}

} // namespace

} // namespace Wirefall

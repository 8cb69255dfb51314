// Where things stand on the Options pages, as pixels of a canvas that is shown at its own size. The
// numbers are worked out by hand: glyphs are 7 by 8, of which most capitals fill columns 1 to 5 and
// rows 0 to 6.

#include "options/OptionsScreen.h"

#include "draw/BinaryRain.h"
#include "support/PictureSearch.h"
#include "support/ScreenFixture.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace Wirefall {

namespace {

using namespace ScreenColors;
using Testing::BoxOfColor;
using Testing::Picture;
using Testing::PixelBox;
using Testing::Rgb;
using Testing::SoftwareCanvas;

class OptionsScreen : public ScreenFixture {
protected:
    Picture Shown() const {
        SoftwareCanvas canvas({.LogicalWidth = LogicalWidth,
                               .LogicalHeight = 720,
                               .SurfaceWidth = LogicalWidth,
                               .SurfaceHeight = 720});
        DrawOptionsScreen(canvas.Renderer(), App, World.Controllers);
        return canvas.Read();
    }

    void EditControlsOf(ControlsDevice device) {
        App.OptionsPage = OptionsPage::Controls;
        App.ControlsEdit.PendingDevice = device;
        App.ControlsEdit.PendingValid = true;
    }
};

TEST_F(OptionsScreen, StandsOnOnePanel) {
    const Picture picture = Shown();
    EXPECT_EQ(BoxOfColor(picture, Accent, 0, 43)->Left, 58) << "behind the bar at its left";
    EXPECT_EQ(BoxOfColor(picture, Accent, 0, 43)->Right, 1221);
    EXPECT_EQ(BoxOfColor(picture, Accent, 0, 43)->Top, 42);
    const Rgb outside = picture.At(10, 10);
    EXPECT_EQ(picture.At(55, 360), outside);
    EXPECT_NE(picture.At(56, 360), outside);
    EXPECT_NE(picture.At(1223, 360), outside);
    EXPECT_EQ(picture.At(1224, 360), outside);
    EXPECT_NE(picture.At(640, 677), outside);
    EXPECT_EQ(picture.At(640, 678), outside);
    // The body lies over the background with an alpha of 182.
    constexpr Rgb Body = {0x08, 0x16, 0x14};
    const auto blended = [](std::uint8_t above, std::uint8_t below) {
        return (above * 182 + below * (255 - 182)) / 255;
    };
    EXPECT_NEAR(picture.At(640, 300).R, blended(Body.R, outside.R), 1);
    EXPECT_NEAR(picture.At(640, 300).G, blended(Body.G, outside.G), 1);
    EXPECT_NEAR(picture.At(640, 300).B, blended(Body.B, outside.B), 1);
}

TEST_F(OptionsScreen, HasAPanelOfAtLeast120Pixels) {
    LogicalWidth = 200;
    const Picture picture = Shown();
    EXPECT_EQ(BoxOfColor(picture, Accent, 42, 43)->Right, 56 + 120 - 3);
}

TEST_F(OptionsScreen, StopsTheDigitsWhileTheGameQuits) {
    Shown();
    EXPECT_FALSE(RainCache.Animated);
    App.QuitRequested = false;
    Shown();
    EXPECT_TRUE(RainCache.Animated);
}

TEST_F(OptionsScreen, HasATitleAndAHeading) {
    const Picture picture = Shown();
    // "OPTIONS" is 294 wide, from 493; its top is 42 + 24.
    EXPECT_EQ(BoxOfColor(picture, Bright, 44, 140),
              (PixelBox{493 + 6, 66, 493 + 6 * 42 + 35, 66 + 41}));
    // "MENU" is 112 wide, from 584; its top is 48 + 24 + 42 + 28.
    EXPECT_EQ(BoxOfColor(picture, Cyan), (PixelBox{584 + 4, 142, 584 + 3 * 28 + 23, 142 + 27}));
}

TEST_F(OptionsScreen, HasTheRowsOfItsRootInTheMiddle) {
    App.Rows.OptionsRootRow = 1;
    const Picture picture = Shown();
    // Four rows, 34 apart, in the 398 pixels from 192 on: the first at 328. The widest has 8
    // characters of 21.
    const std::int32_t left = 640 - 84 + 3;
    EXPECT_EQ(BoxOfColor(picture, Normal, 180, 361)->Top, 328);
    EXPECT_EQ(BoxOfColor(picture, Normal, 180, 361)->Left, left);
    EXPECT_EQ(BoxOfColor(picture, Normal, 362, 395), std::nullopt) << "the selected row";
    EXPECT_EQ(BoxOfColor(picture, Normal, 396, 429)->Top, 396);
    EXPECT_EQ(BoxOfColor(picture, Normal, 430, 600)->Top, 430);
    EXPECT_EQ(BoxOfColor(picture, Normal, 430, 600)->Left, left);
    // The mark stands 12 and five columns of its scale before the rows.
    EXPECT_EQ(BoxOfColor(picture, Bright, 180, 600)->Left, 556 - 12 - 15 + 3);
    EXPECT_EQ(BoxOfColor(picture, Bright, 180, 600)->Top, 362);
    EXPECT_EQ(BoxOfColor(picture, Bright, 180, 600)->Bottom, 362 + 20);
}

TEST_F(OptionsScreen, MarksNoRowThatIsNotThere) {
    for (const OptionsPage page :
         {OptionsPage::Root, OptionsPage::Controls, OptionsPage::Graphics, OptionsPage::Audio}) {
        App.OptionsPage = page;
        for (const std::int32_t row : {-1, 100}) {
            App.Rows = {row, row, row, row};
            EXPECT_EQ(BoxOfColor(Shown(), Bright, 140, 719), std::nullopt);
        }
    }
}

TEST_F(OptionsScreen, SetsTheRowsInTwoColumns) {
    App.OptionsPage = OptionsPage::Audio;
    App.Rows.AudioRow = 9;
    const Picture picture = Shown();
    // Labels of 16 characters and values of 4: 336, 32 between them, and 84, from 414. Ten rows,
    // 34 apart: the first at 192 + (398 - 330) / 2.
    const PixelBox others = *BoxOfColor(picture, Normal, 180, 531);
    EXPECT_EQ(others, (PixelBox{414 + 3, 226, 782 + 3 * 21 + 20, 226 + 8 * 34 + 20}));
    const PixelBox selected = *BoxOfColor(picture, Bright, 180, 600);
    EXPECT_EQ(selected, (PixelBox{414 - 24 + 3, 532, 414 + 3 * 21 + 17, 532 + 20}));
}

TEST_F(OptionsScreen, LetsTheColumnsFollowTheWidestValue) {
    App.OptionsPage = OptionsPage::Graphics;
    App.Rows.GraphicsRow = 0;
    App.Resolutions = {{1280, 720}};
    // "FULLSCREEN" and "WIDESCREEN", 210, are the widest values; "DEFAULT SETTINGS", 336, the
    // widest label: from 351, and the values from 719.
    Picture picture = Shown();
    const auto mark = [&] { return BoxOfColor(picture, Bright, 180, 600)->Left; };
    EXPECT_EQ(mark(), 351 - 24 + 3);
    EXPECT_EQ(BoxOfColor(picture, Normal, 180, 600)->Left, 351 + 3);
    App.Resolutions = {{1000000000, 1000000000}};
    picture = Shown(); // 21 characters, 441
    EXPECT_NEAR(mark(), 640.0 - (336 + 32 + 441) / 2.0 - 24 + 3, 1);
}

TEST_F(OptionsScreen, MovesManyRowsTogether) {
    EditControlsOf(ControlsDevice::Gamepad);
    App.Rows.ControlsRow = 14;
    const Picture picture = Shown();
    // Fifteen rows fill the room from 192 to 590, so they are 26.7 apart.
    EXPECT_EQ(BoxOfColor(picture, Normal, 180, 600)->Top, 192);
    EXPECT_EQ(BoxOfColor(picture, Bright, 180, 609)->Top, 590 - 24);
    EXPECT_EQ(BoxOfColor(picture, Bright, 180, 609)->Bottom, 590 - 4);
}

TEST_F(OptionsScreen, HasTwoLinesOfHintsAtItsFoot) {
    UseGamepad(World);
    const Picture picture = Shown();
    // "ENTER SELECT   ESC BACK TO MAIN MENU", 36 characters of 14, at 678 - 24 - 16 - 28.
    EXPECT_EQ(BoxOfColor(picture, Hint, 600, 630),
              (PixelBox{640 - 252 + 2, 610, 640 + 252 - 3, 610 + 13}));
    // "PAD A SELECT B MAIN MENU", 24 characters.
    EXPECT_EQ(BoxOfColor(picture, Hint, 631, 680),
              (PixelBox{640 - 168 + 2, 638, 640 + 168 - 3, 638 + 13}));
    World.Controllers.Gamepad = nullptr;
    EXPECT_EQ(BoxOfColor(Shown(), Hint, 631, 680), std::nullopt);
}

TEST_F(OptionsScreen, ShrinksOnlyTheHintsOfTheControls) {
    // 84 characters of 14 are 1176, and the panel leaves 1168 - 48.
    LocalizationCatalog.Texts["Options.Controls.Hint.RebindDevice"] = std::string(84, 'H');
    LocalizationCatalog.Texts["Options.Controls.Hint.EscBack"] = std::string(80, 'H');
    LocalizationCatalog.Texts["Options.Hint.LeftRightChange"] = std::string(84, 'H');
    App.OptionsPage = OptionsPage::Controls;
    const Picture controls = Shown();
    EXPECT_EQ(BoxOfColor(controls, Hint, 600, 630),
              (PixelBox{640 - 294 + 1, 610, 640 + 294 - 2, 610 + 6}));
    EXPECT_EQ(BoxOfColor(controls, Hint, 631, 680)->Bottom, 638 + 13) << "80 of them just fit";
    App.OptionsPage = OptionsPage::Graphics;
    EXPECT_EQ(BoxOfColor(Shown(), Hint, 600, 630),
              (PixelBox{640 - 588 + 2, 610, 640 + 588 - 3, 610 + 13}));
}

// --- One row

Picture DrawnRow(const std::string& value, bool selected) {
    SoftwareCanvas canvas(
        {.LogicalWidth = 300, .LogicalHeight = 60, .SurfaceWidth = 300, .SurfaceHeight = 60});
    DrawOptionRow({.Renderer = canvas.Renderer(),
                   .Density = 0,
                   .RowScale = 2,
                   .LabelX = 50.0F,
                   .ValueX = 150.0F},
                  "HH", value, 20.0F, selected);
    return canvas.Read();
}

TEST(OptionRows, AreALabelAndAValue) {
    const Picture picture = DrawnRow("H", false);
    EXPECT_EQ(BoxOfColor(picture, Normal), (PixelBox{50 + 2, 20, 150 + 11, 20 + 13}));
    EXPECT_EQ(BoxOfColor(picture, Bright), std::nullopt);
}

TEST(OptionRows, MayHaveNoValue) {
    EXPECT_EQ(BoxOfColor(DrawnRow("", false), Normal),
              (PixelBox{50 + 2, 20, 50 + 14 + 11, 20 + 13}));
}

TEST(OptionRows, HaveAMarkWhenSelected) {
    const Picture picture = DrawnRow("H", true);
    EXPECT_EQ(BoxOfColor(picture, Bright), (PixelBox{50 - 24 + 2, 20, 150 + 11, 20 + 13}));
    EXPECT_EQ(BoxOfColor(picture, Normal), std::nullopt);
}

} // namespace

} // namespace Wirefall

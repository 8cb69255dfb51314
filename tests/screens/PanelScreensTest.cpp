// The screens that stand on panels: pause, help, credits and the two results. Where their limits
// are, as pixels; the numbers are worked out by hand for a roomy picture.

#include "draw/NoteBox.h"
#include "draw/TileArt.h"
#include "screens/BoardScreen.h"
#include "screens/CreditsScreen.h"
#include "screens/GameOverScreen.h"
#include "screens/HelpScreen.h"
#include "screens/LevelCompleteScreen.h"
#include "screens/PauseScreen.h"
#include "sim/Simulation.h"
#include "support/PictureSearch.h"
#include "support/ScreenFixture.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <set>
#include <string>

namespace Wirefall {

namespace {

using namespace ScreenColors;
using Testing::BoxOfColor;
using Testing::Picture;
using Testing::PixelBox;
using Testing::Rgb;
using Testing::SoftwareCanvas;

constexpr Rgb Green = {0x70, 0xf6, 0x9e};
constexpr Rgb Red = {0xe6, 0x7e, 0x66};
constexpr Rgb RedStripe = {0xa8, 0x2a, 0x2a};
constexpr Rgb RedLine = {0xf0, 0xce, 0xce};
constexpr Rgb RedHint = {0xba, 0x7c, 0x7c};

class PanelScreens : public ScreenFixture {
protected:
    PanelScreens() { ResetRun(); }

    using Screen = void (*)(SDL_Renderer* renderer, const GameApp& app,
                            const ControllerSet& controllers);

    Picture Shown(Screen screen, float scale = 1.0F) const {
        const auto scaled = [scale](std::int32_t logical) {
            return static_cast<std::int32_t>(std::lround(static_cast<float>(logical) * scale));
        };
        SoftwareCanvas canvas({.LogicalWidth = LogicalWidth,
                               .LogicalHeight = 720,
                               .SurfaceWidth = scaled(LogicalWidth),
                               .SurfaceHeight = scaled(720)});
        screen(canvas.Renderer(), App, World.Controllers);
        return canvas.Read();
    }

    static void ShowBoard(SDL_Renderer* renderer, const GameApp&, const ControllerSet&) {
        DrawBoardScreen(renderer, LogicalWidth, LogicalHeight);
    }

    static void ShowCredits(SDL_Renderer* renderer, const GameApp& app, const ControllerSet&) {
        DrawCreditsScreen(renderer, app);
    }

    // Every text of these screens, in place of what it says.
    static void SayEverywhere(const std::string& text) {
        for (const char* const key :
             {"Pause.Title", "Pause.Menu.Resume", "Pause.Menu.Options", "Pause.Menu.Help",
              "Pause.Menu.MainMenu", "Pause.Hint.Primary", "LevelComplete.Title",
              "LevelComplete.CompletedLevel", "LevelComplete.CurrentScore",
              "LevelComplete.NextLevel", "LevelComplete.Hint.Continue", "GameOver.Title",
              "GameOver.FinalScore", "GameOver.Hint.BackToMainMenu"}) {
            LocalizationCatalog.Texts[key] = text;
        }
    }

    void FinishRun(std::int32_t level, std::int32_t score) {
        App.PreviousSnapshot.Level = level;
        App.PreviousSnapshot.TotalScore = score;
        App.PreviousSnapshotValid = true;
    }
};

// The columns of a panel's stripe, in the row of its top. The bars at the sides lie over its ends,
// two pixels each.
PixelBox StripeAt(const Picture& picture, const Rgb& color, std::int32_t row) {
    return BoxOfColor(picture, color, row, row).value_or(PixelBox{});
}

// --- Pause

TEST_F(PanelScreens, PauseStandsOnABoardThatIsNotDimmed) {
    const Picture picture = Shown(DrawPauseScreen);
    const Picture board = Shown(ShowBoard);
    // The hint is the widest, 25 characters of 14, with 68 on either side: 486. The height is
    // 176 for the entries, 48, 54, 26, 40, 16 and 22.
    EXPECT_EQ(StripeAt(picture, Accent, 169), (PixelBox{397 + 2, 169, 883 - 3, 169}));
    EXPECT_EQ(StripeAt(picture, Accent, 170).Left, 397 + 2);
    for (std::int32_t y = 0; y < 720; ++y) {
        for (const std::int32_t x : {0, 396, 883, 1279}) {
            EXPECT_EQ(picture.At(x, y), board.At(x, y));
        }
    }
    for (std::int32_t x = 0; x < 1280; ++x) {
        EXPECT_EQ(picture.At(x, 168), board.At(x, 168));
        EXPECT_EQ(picture.At(x, 551), board.At(x, 551));
    }
    EXPECT_NE(picture.At(640, 550), board.At(640, 550));
}

TEST_F(PanelScreens, PauseHasAPanelBetween420AndTheCanvasWithoutIts96) {
    SayEverywhere("A");
    EXPECT_EQ(StripeAt(Shown(DrawPauseScreen), Accent, 169), (PixelBox{432, 169, 847, 169}));
    LogicalWidth = 960;
    SayEverywhere(std::string(500, 'W'));
    EXPECT_EQ(StripeAt(Shown(DrawPauseScreen), Accent, 169), (PixelBox{50, 169, 909, 169}));
}

TEST_F(PanelScreens, PauseGrowsByTheLineForAController) {
    UseGamepad(World);
    // 16 and 10 more, of which half goes up.
    EXPECT_EQ(StripeAt(Shown(DrawPauseScreen), Accent, 156).Top, 156);
}

TEST_F(PanelScreens, PauseMarksItsEntryAndOnlyThat) {
    // The slack above the hint is all that is left over, so the title stands 26 below the top of
    // the panel and the entries 48 and 54 below that, 48 apart. The widest has 9 characters of 28.
    const auto inPanel = [](const Picture& picture, const Rgb& color, std::int32_t top,
                            std::int32_t bottom) {
        return BoxOfColor(picture, color, {400, top, 880, bottom});
    };
    for (std::int32_t i = 0; i < 4; ++i) {
        App.PauseSelection = i;
        const Picture picture = Shown(DrawPauseScreen);
        const std::int32_t y = 169 + 26 + 102 + 48 * i;
        const PixelBox selected = *inPanel(picture, Bright, 250, 560);
        EXPECT_EQ(selected.Top, y) << i;
        EXPECT_EQ(selected.Bottom, y + 27) << i;
        // The mark: 12 and five columns of 3 to the left.
        EXPECT_EQ(selected.Left, 640 - 126 - 12 - 15 + 3) << i;
        EXPECT_EQ(inPanel(picture, Normal, y, y + 31), std::nullopt) << i;
    }
    App.PauseSelection = 4;
    EXPECT_EQ(inPanel(Shown(DrawPauseScreen), Bright, 250, 560), std::nullopt);
}

// --- Results

TEST_F(PanelScreens, LevelCompleteHasAPanelBetween500AndTheCanvasWithoutIts96) {
    FinishRun(3, 100);
    // 72, 24, 20, 48, 60, 28 and 16 high. The title is 14 characters of 42 wide.
    EXPECT_EQ(StripeAt(Shown(DrawLevelCompleteScreen), Accent, 226),
              (PixelBox{274 + 2, 226, 1006 - 3, 226}));
    SayEverywhere("A");
    EXPECT_EQ(StripeAt(Shown(DrawLevelCompleteScreen), Accent, 226),
              (PixelBox{390 + 2, 226, 890 - 3, 226}));
    LogicalWidth = 960;
    SayEverywhere(std::string(500, 'W'));
    EXPECT_EQ(StripeAt(Shown(DrawLevelCompleteScreen), Accent, 226),
              (PixelBox{48 + 2, 226, 912 - 3, 226}));
}

TEST_F(PanelScreens, LevelCompleteIsAtLeast210High) {
    FinishRun(3, 100);
    const Picture picture = Shown(DrawLevelCompleteScreen, 0.6F);
    // From 255 to 465.
    EXPECT_NE(StripeAt(picture, Accent, 153).Right, 0);
    EXPECT_EQ(StripeAt(picture, Accent, 152).Right, 0);
    EXPECT_NE(picture.At(384, 278), picture.At(384, 279));
}

TEST_F(PanelScreens, LevelCompleteShowsTheLastSnapshotOrElseTheRun) {
    const auto shown = [this](std::int32_t level, std::int32_t score) {
        FinishRun(level, score);
        return Shown(DrawLevelCompleteScreen);
    };
    const Picture first = shown(1, 250);
    EXPECT_EQ(shown(0, 250), first) << "no level is below the first";
    EXPECT_EQ(shown(-7, 250), first);
    EXPECT_NE(shown(2, 250), first);
    EXPECT_NE(shown(1, 251), first);
    App.PreviousSnapshotValid = false;
    LiveRun().TotalScore = 250;
    Shown(DrawLevelCompleteScreen); // the board behind shows the score as well
    const Picture ofTheRun = Shown(DrawLevelCompleteScreen);
    EXPECT_EQ(shown(1, 250), ofTheRun);
}

TEST_F(PanelScreens, LevelCompleteHasItsTextsOnTheirLines) {
    FinishRun(std::numeric_limits<std::int32_t>::max(), -5);
    UseJoystick(World);
    const Picture picture = Shown(DrawLevelCompleteScreen);
    // 30 more for the controller, so the panel begins at 211.
    EXPECT_EQ(BoxOfColor(picture, Green, 0, 500)->Top, 211 + 30);
    const std::int32_t lines = 211 + 30 + 48 + 20;
    for (std::int32_t i = 0; i < 3; ++i) {
        const std::int32_t y = lines + 36 * i;
        EXPECT_EQ(BoxOfColor(picture, Bright, y - 6, y + 29)->Top, y) << i;
        EXPECT_EQ(BoxOfColor(picture, Bright, y - 6, y + 29)->Bottom, y + 20) << i;
    }
    EXPECT_EQ(BoxOfColor(picture, Hint, 400, 460)->Top, 211 + 298 - 30 - 46);
    EXPECT_EQ(BoxOfColor(picture, Hint, 460, 500)->Top, 211 + 298 - 30 - 16);
}

TEST_F(PanelScreens, GameOverHasARedPanelBetween440AndTheCanvasWithoutIts96) {
    FinishRun(3, 100);
    // 34, 24, 48, 24, 30, 16 and 30 high. The hint is 30 characters of 14 wide.
    EXPECT_EQ(StripeAt(Shown(DrawGameOverScreen), RedStripe, 257),
              (PixelBox{358 + 2, 257, 922 - 3, 257}));
    SayEverywhere("A");
    EXPECT_EQ(StripeAt(Shown(DrawGameOverScreen), RedStripe, 257),
              (PixelBox{420 + 2, 257, 860 - 3, 257}));
    LogicalWidth = 960;
    SayEverywhere(std::string(500, 'W'));
    EXPECT_EQ(StripeAt(Shown(DrawGameOverScreen), RedStripe, 257),
              (PixelBox{48 + 2, 257, 912 - 3, 257}));
}

TEST_F(PanelScreens, GameOverIsAtLeast180High) {
    const Picture picture = Shown(DrawGameOverScreen, 0.6F);
    // From 270 to 450.
    EXPECT_NE(StripeAt(picture, RedStripe, 162).Right, 0);
    EXPECT_EQ(StripeAt(picture, RedStripe, 161).Right, 0);
    EXPECT_NE(picture.At(384, 269), picture.At(384, 270));
}

TEST_F(PanelScreens, GameOverHasItsTextsOnTheirLines) {
    FinishRun(3, 100);
    const Picture picture = Shown(DrawGameOverScreen);
    // No slack is left over: the title stands 34 below the top.
    EXPECT_EQ(BoxOfColor(picture, Red, 240, 335)->Top, 257 + 34);
    EXPECT_EQ(BoxOfColor(picture, RedLine)->Top, 257 + 34 + 48 + 24);
    EXPECT_EQ(BoxOfColor(picture, RedHint)->Top, 257 + 206 - 30 - 16);
    UseGamepad(World);
    EXPECT_EQ(BoxOfColor(Shown(DrawGameOverScreen), RedHint)->Bottom, 257 + 206 + 15 - 30 - 3);
}

// --- Help

// Where the icons of the legend begin, from left to right and from top to bottom.
std::set<std::int32_t> LegendColumns(const Picture& picture) {
    std::set<std::int32_t> columns;
    for (const TileType type : {TileType::Firewall, TileType::Antivirus, TileType::Buffer}) {
        const PackedColor color = TileBackgroundColor(type);
        const auto box = BoxOfColor(picture, {RedOf(color), GreenOf(color), BlueOf(color)});
        columns.insert(box ? box->Left : -1);
    }
    return columns;
}

TEST_F(PanelScreens, HelpHasItsLegendInAsManyColumnsAsThereIsRoomFor) {
    // A column is 20 for the icon, 8, 9 characters of 14, and 20 before the next: 174. The outline
    // covers the first pixel of each.
    const std::int32_t first = 72 + 1;
    EXPECT_EQ(LegendColumns(Shown(DrawHelpScreen)),
              (std::set<std::int32_t>{first, first + 174, first + 348}));
    // The margins of the page and of the box are 144 wide; the last column does without its 20.
    LogicalWidth = 144 + 3 * 174 - 20;
    EXPECT_EQ(LegendColumns(Shown(DrawHelpScreen)).size(), 3U);
    LogicalWidth -= 1;
    EXPECT_EQ(LegendColumns(Shown(DrawHelpScreen)), (std::set<std::int32_t>{first, first + 174}));
    LogicalWidth = 144 + 2 * 174 - 20 - 1;
    EXPECT_EQ(LegendColumns(Shown(DrawHelpScreen)), std::set<std::int32_t>{first});
    LogicalWidth = 1;
    EXPECT_EQ(LegendColumns(Shown(DrawHelpScreen)).size(), 1U);
}

TEST_F(PanelScreens, HelpHasAFootOfOneLineOrTwo) {
    // 14 below and above a line of 16; a second one is 12 below it.
    const auto foot = [this] { return BoxOfColor(Shown(DrawHelpScreen), Accent, 200, 719)->Top; };
    EXPECT_EQ(foot(), 678 - 44);
    UseGamepad(World);
    EXPECT_EQ(foot(), 678 - 72);
}

TEST_F(PanelScreens, HelpSaysWhereItLeadsBackTo) {
    const auto hints = [this] { return *BoxOfColor(Shown(DrawHelpScreen), Hint); };
    UseGamepad(World);
    const auto widthOf = [](std::int32_t characters) { return 14 * characters - 5; };
    // "ENTER OR ESC BACK TO MAIN MENU"
    EXPECT_NEAR(hints().Right - hints().Left, widthOf(30), 1);
    App.HelpReturnScreen = AppScreen::Pause;
    EXPECT_NEAR(hints().Right - hints().Left, widthOf(31), 1);
    EXPECT_TRUE(LocalizationCatalog.Texts.contains("Controller.Hint.PauseMenu"));
    EXPECT_TRUE(LocalizationCatalog.Texts.contains("Help.Hint.BackToPauseMenu"));
}

// --- Credits

TEST_F(PanelScreens, CreditsBeginJustBelowWhatIsSeen) {
    App.CreditsScroll = 0.0F;
    Picture picture = Shown(ShowCredits);
    EXPECT_EQ(BoxOfColor(picture, Cyan), std::nullopt);
    EXPECT_EQ(BoxOfColor(picture, Normal), std::nullopt);
    App.CreditsScroll = 1.0F;
    picture = Shown(ShowCredits);
    EXPECT_EQ(BoxOfColor(picture, Cyan)->Top, 675);
    EXPECT_EQ(BoxOfColor(picture, Cyan)->Bottom, 675);
}

TEST_F(PanelScreens, CreditsAreThreeHeadingsWithTheirName) {
    App.CreditsScroll = 500.0F;
    const Picture picture = Shown(ShowCredits);
    for (std::int32_t i = 0; i < 3; ++i) {
        const std::int32_t y = 176 + 114 * i;
        EXPECT_EQ(BoxOfColor(picture, Cyan, y - 40, y + 37)->Top, y) << i;
        EXPECT_EQ(BoxOfColor(picture, Normal, y, y + 73)->Top, y + 38) << i;
    }
    EXPECT_EQ(BoxOfColor(picture, Cyan, 176 + 3 * 114 - 40, 719), std::nullopt);
}

TEST_F(PanelScreens, CreditsLeaveThroughTheTop) {
    App.CreditsScroll = 640.0F;
    EXPECT_EQ(BoxOfColor(Shown(ShowCredits), Cyan)->Top, 44) << "cut off there";
    App.CreditsScroll = 632.0F + 266.0F + 32.0F;
    const Picture picture = Shown(ShowCredits);
    EXPECT_EQ(BoxOfColor(picture, Cyan), std::nullopt);
    EXPECT_EQ(BoxOfColor(picture, Normal), std::nullopt);
}

TEST_F(PanelScreens, CreditsShowInsideTheirPanelOnly) {
    App.CreditsScroll = 500.0F;
    for (const char* const key : {"Credits.ProgrammedBy", "Credits.GfxBy", "Credits.SfxMusicBy"}) {
        LocalizationCatalog.Texts[key] = std::string(100, 'H');
    }
    const PixelBox box = *BoxOfColor(Shown(ShowCredits), Cyan);
    EXPECT_GE(box.Left, 74);
    EXPECT_LE(box.Left, 74 + 28);
    EXPECT_LE(box.Right, 1280 - 74 - 1);
}

TEST_F(PanelScreens, CreditsPutTheClipBack) {
    SoftwareCanvas canvas;
    DrawCreditsScreen(canvas.Renderer(), App);
    EXPECT_FALSE(SDL_RenderClipEnabled(canvas.Renderer()));
    const SDL_Rect clip = {10, 20, 300, 200};
    SDL_SetRenderClipRect(canvas.Renderer(), &clip);
    DrawCreditsScreen(canvas.Renderer(), App);
    SDL_Rect now = {};
    SDL_GetRenderClipRect(canvas.Renderer(), &now);
    EXPECT_TRUE(SDL_RenderClipEnabled(canvas.Renderer()));
    EXPECT_TRUE(SDL_RectsEqual(&now, &clip));
}

// --- Note boxes

float MeasuredHeight(std::int32_t density, std::span<const std::string> paragraphs, float width) {
    UiMetrics metrics;
    metrics.Density = density;
    return MeasureNoteBox({.Renderer = nullptr,
                           .Metrics = metrics,
                           .HeadingScale = 3,
                           .BodyScale = 1,
                           .LinePitch = 15.0F},
                          paragraphs, width);
}

TEST(NoteBoxHeights, CountTheLinesOfAllParagraphs) {
    // 24 for the heading, 20 and 8 for the margins; 150 pixels for text, 21 letters.
    const std::array<std::string, 2> paragraphs = {"ABCDEFGHIJ KLMNOPQRS TUVWXYZ", "ABC"};
    EXPECT_FLOAT_EQ(MeasuredHeight(0, paragraphs, 200.0F), 52.0F + 3.0F * 15.0F);
    EXPECT_FLOAT_EQ(MeasuredHeight(0, paragraphs, 400.0F), 52.0F + 2.0F * 15.0F);
}

TEST(NoteBoxHeights, HaveRoomForALineWithoutAnyText) {
    EXPECT_FLOAT_EQ(MeasuredHeight(0, {}, 200.0F), 52.0F + 15.0F);
    const std::array<std::string, 2> blank = {"", "  "};
    EXPECT_FLOAT_EQ(MeasuredHeight(0, blank, 200.0F), 52.0F + 2.0F * 15.0F);
}

TEST(NoteBoxHeights, WrapAtFortyPixelsAtLeast) {
    const std::array<std::string, 1> words = {"AB CD EF"}; // 5 letters a line
    EXPECT_FLOAT_EQ(MeasuredHeight(0, words, 0.0F), 52.0F + 2.0F * 15.0F);
    EXPECT_FLOAT_EQ(MeasuredHeight(0, words, -100.0F), 52.0F + 2.0F * 15.0F);
}

TEST(NoteBoxHeights, KeepTheEighteenThatTheDrawingDrawsIn) {
    // Ten letters are 70 wide. Of a box of 114 the margins take twice 13.12, and then 18: there is
    // room for nine. What is drawn has room for ten.
    const std::array<std::string, 1> words = {"ABCDE FGHI"};
    EXPECT_FLOAT_EQ(MeasuredHeight(2, words, 114.0F), 24.0F + 0.82F * 28.0F + 2.0F * 15.0F);
    EXPECT_FLOAT_EQ(MeasuredHeight(2, words, 114.3F), 24.0F + 0.82F * 28.0F + 1.0F * 15.0F);
    EXPECT_GT(114.0F - 0.82F * (32.0F + 18.0F), 70.0F);
}

} // namespace

} // namespace Wirefall

#include "screens/Hud.h"

#include "draw/Primitives.h"
#include "draw/SpriteAtlas.h"
#include "draw/Text.h"
#include "draw/TileArt.h"
#include "sim/LevelRules.h"
#include "sim/RunState.h"
#include "sim/Simulation.h"
#include "sim/Virus.h"
#include "words/CommandHints.h"
#include "words/Localization.h"
#include "words/SharedTexts.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace Wirefall {

namespace {

constexpr float IconSize = 16.0F;

constexpr PackedColor QueueBody = Rgba(0x0a1a18e6);
constexpr PackedColor BoxBody = Rgba(0x0a1816e6);
constexpr PackedColor TileInHand = Rgba(0xecd688ff);

constexpr PackedColor BarBack = Rgba(0x162222ff);
constexpr PackedColor BarLine = Rgba(0x4a706aff);
constexpr PackedColor FailureBar = Rgba(0xe49268ff);
constexpr PackedColor FailureText = Rgba(0xeeb27eff);

struct Chip {
    GameText Label;
    PackedColor Fill;
    PackedColor Line;
    PackedColor Text;
    std::int32_t RunState::*Counter;
};

constexpr std::array<Chip, ChipCount> Chips = {{
    {{"Hud.OK", "OK"},
     Rgba(0x143226ff),
     Rgba(0x4ea47aff),
     Palette::Green,
     &RunState::DeliveredPackets},
    {{"Hud.Lost", "LOST"},
     Rgba(0x3a261aff),
     Rgba(0xbc8460ff),
     Rgba(0xf4c698ff),
     &RunState::LostPackets},
    {{"Hud.Bad", "BAD"},
     Rgba(0x3c1e1eff),
     Rgba(0xc26868ff),
     Rgba(0xf8aaaaff),
     &RunState::CorruptedPackets},
}};

struct Command {
    HudHint Hint;
    std::int32_t Sprite;
    GameText Label;
};

constexpr std::array<Command, CommandRowCount> Commands = {{
    {HudHint::Move, SpriteMove, Texts::MoveCommand},
    {HudHint::Rotate, SpriteRotate, Texts::RotateCommand},
    {HudHint::Place, SpritePlace, Texts::PlaceCommand},
    {HudHint::FastForward, SpriteFastForward, Texts::FastForwardCommand},
}};

// The two measures of danger that the bars show.
struct Danger {
    float FailureFraction;
    float InfectionFraction;
};

Danger DangerOf(const RunState& run) {
    return {.FailureFraction = FailureBarFraction(run),
            .InfectionFraction = std::clamp(InfectionRatio(run), 0.0F, 1.0F)};
}

void DrawStripe(const HudContext& context, float x, float y, float w) {
    FillRect(context.Renderer, x, y, w, BarThickness, Palette::Accent);
}

void DrawBox(const HudContext& context, float y, float height, PackedColor body) {
    const HudLayout& hud = context.Layout;
    FillOutlinedRect(context.Renderer, hud.BoxX, y, hud.BoxWidth, height, body, Palette::FrameLine);
    DrawStripe(context, hud.BoxX, y, hud.BoxWidth);
}

void DrawQueue(const HudContext& context, const RunState& run) {
    const HudLayout& hud = context.Layout;
    DrawBox(context, hud.QueueY, hud.QueueHeight, QueueBody);
    const float side = hud.TileSide;
    for (std::size_t i = 0; i < run.TileQueue.size(); ++i) {
        const bool inHand = i == 0;
        const Tile tile = MakeTile(run.TileQueue[i], inHand ? run.PreviewRotation : 0);
        const float y = hud.TileY + static_cast<float>(i) * hud.TilePitch;
        FillOutlinedRect(context.Renderer, hud.TileX, y, side, side, TileBackgroundColor(tile.Type),
                         Palette::FrameLine);
        DrawTile(context.Renderer, tile, hud.TileX, y, side, side);
        if (inHand) {
            OutlineRect(context.Renderer, hud.TileX, y, side, side, TileInHand);
        }
    }
}

void DrawBar(const HudContext& context, float y, float fraction, PackedColor color) {
    const HudLayout& hud = context.Layout;
    FillRect(context.Renderer, hud.InnerX, y, hud.InnerWidth, hud.BarHeight, BarBack);
    FillRect(context.Renderer, hud.InnerX, y, fraction * hud.InnerWidth, hud.BarHeight, color);
    OutlineRect(context.Renderer, hud.InnerX, y, hud.InnerWidth, hud.BarHeight, BarLine);
}

void DrawLabel(const HudContext& context, std::string_view text, float y, std::int32_t scale,
               PackedColor color) {
    DrawText(context.Renderer, text, context.Layout.InnerX, y, scale, color);
}

void DrawTitle(const HudContext& context, const GameText& title, float y) {
    DrawLabel(context, LocalizedText(title), y, context.Layout.TitleScale, Palette::BrightText);
}

void DrawStatusLine(const HudContext& context, const std::string& text, float y,
                    PackedColor color) {
    const HudLayout& hud = context.Layout;
    DrawLabel(context, text, y, FitScaleToLength(text.size(), hud.InnerWidth, hud.TextScale),
              color);
}

void DrawBarValue(const HudContext& context, const std::string& text, float y) {
    const HudLayout& hud = context.Layout;
    const std::int32_t scale = FitScaleToLength(text.size(), hud.InnerWidth / 2.0F, hud.TextScale);
    const float x = hud.InnerX + hud.InnerWidth - ByteWidth(text.size(), scale) - 2.0F;
    DrawText(context.Renderer, text, x, y, scale, Palette::BrightText);
}

void DrawStatusTexts(const HudContext& context, const RunState& run, const Danger& danger) {
    const HudLayout& hud = context.Layout;
    DrawTitle(context, {"Hud.Status", "STATUS"}, hud.StatusTitleY);
    DrawStatusLine(context, LocalizedText("Hud.Level", "LEVEL") + " " + std::to_string(run.Level),
                   hud.LevelY, Palette::NormalText);
    DrawStatusLine(context,
                   LocalizedText("Hud.Score", "SCORE") + " " + std::to_string(run.TotalScore),
                   hud.ScoreY, Palette::BrightText);
    DrawStatusLine(context,
                   LocalizedText("Hud.Target", "TARGET") + " " +
                       std::to_string(run.DeliveredPackets) + "/" +
                       std::to_string(run.LevelTargetPackets),
                   hud.TargetY, Palette::Green);

    DrawLabel(context, LocalizedText("Hud.Failure", "FAILURE"), hud.FailureLabelY, hud.TextScale,
              FailureText);
    DrawBarValue(context,
                 std::to_string(FailureCount(run)) + "/" + std::to_string(run.FailureThreshold),
                 hud.FailureLabelY);
    DrawLabel(context, LocalizedText("Hud.VirusInfection", "VIRUS INFECTION"), hud.InfectionLabelY,
              hud.TextScale, Palette::Red);
    // Halves go up in single precision, which is not always what std::lround does.
    const float percent = std::trunc(danger.InfectionFraction * 100.0F + 0.5F);
    DrawBarValue(context, std::to_string(static_cast<std::int32_t>(percent)) + "%",
                 hud.InfectionLabelY);

    for (std::size_t i = 0; i < Chips.size(); ++i) {
        const Chip& chip = Chips[i];
        const std::string text =
            LocalizedText(chip.Label) + ": " + std::to_string(run.*chip.Counter);
        DrawChipText(context, text, hud.InnerX, hud.ChipY[i], chip.Text, hud.ChipScale);
    }
}

void DrawCommands(const HudContext& context) {
    DrawTitle(context, {"Hud.Commands", "COMMANDS"}, context.Layout.CommandsTitleY);
    for (std::size_t i = 0; i < Commands.size(); ++i) {
        const Command& command = Commands[i];
        const std::string& label = LocalizedText(command.Label);
        DrawCommandRow(context, command.Sprite, static_cast<std::int32_t>(i), label,
                       StripLabelPrefix(HudHintLines()[command.Hint], label), Palette::BrightText);
    }
}

// The chevrons stand in the title line of the status box.
void DrawFastForwardMark(const HudContext& context) {
    const HudLayout& hud = context.Layout;
    const float size = hud.TitleHeight >= IconSize ? IconSize : std::max(12.0F, hud.TitleHeight);
    const float x = hud.InnerX + hud.InnerWidth - size - 2.0F;
    const float y = hud.StatusTitleY + std::max(0.0F, (hud.TitleHeight - size) / 2.0F) - 1.0F;
    DrawSprite(context.Renderer, SpriteFastForward, x, y, size);
}

constexpr std::size_t ValueLines = 2;

// Where the line that starts at `start` ends.
std::size_t LineEnd(std::string_view value, std::size_t start, float maxWidth, std::int32_t scale) {
    constexpr std::string_view BreakAfter = " +-/|";
    std::size_t end = start;
    std::size_t breakEnd = start;
    for (; end < value.size(); ++end) {
        if (BreakAfter.find(value[end]) != std::string_view::npos) {
            breakEnd = end + 1;
        }
        if (ByteWidth(end + 1 - start, scale) > maxWidth) {
            break;
        }
    }
    end = std::max(end, start + 1);
    // A break character that itself no longer fits still ends a word where the line is full.
    return end < value.size() && breakEnd > start ? std::min(end, breakEnd) : end;
}

} // namespace

std::vector<std::string> SplitCommandValue(std::string_view value, float maxWidth,
                                           std::int32_t scale) {
    const float limit = std::max(1.0F, maxWidth);
    std::vector<std::string> lines;
    for (std::size_t at = 0; at < value.size();) {
        if (lines.size() == ValueLines) {
            std::string& last = lines.back();
            const std::string rest = TrimBlanks(value.substr(at));
            if (!last.empty() && !rest.empty()) {
                last += ' ';
            }
            last += rest;
            last = Ellipsize(last, limit, scale);
            break;
        }
        at = value.find_first_not_of(' ', at);
        if (at == std::string_view::npos) {
            break;
        }
        const std::size_t end = LineEnd(value, at, limit, scale);
        lines.push_back(Ellipsize(value.substr(at, end - at), limit, scale));
        at = end;
    }
    if (lines.empty()) {
        lines.push_back(Ellipsize(value, limit, scale));
    }
    return lines;
}

void DrawCommandRow(const HudContext& context, std::int32_t sprite, std::int32_t row,
                    std::string_view label, std::string_view value, PackedColor valueColor) {
    const HudLayout& hud = context.Layout;
    const std::int32_t valueScale = FitScaleToLength(value.size(), hud.TextWidth, hud.TextScale);
    const std::vector<std::string> lines = SplitCommandValue(value, hud.TextWidth, valueScale);
    const std::int32_t labelScale = FitScaleToLength(label.size(), hud.TextWidth, hud.TextScale);
    const float labelHeight = TextHeight(labelScale);
    const float valueHeight = TextHeight(valueScale);
    const auto lineCount = static_cast<float>(lines.size());

    const float rowTop = hud.RowsTop + static_cast<float>(row) * (hud.RowHeight + hud.RowGap);
    const float content =
        labelHeight + hud.LabelGap + lineCount * valueHeight + (lineCount - 1.0F) * hud.ValueGap;
    const float labelY = rowTop + std::max(0.0F, (hud.RowHeight - content) / 2.0F);

    DrawSprite(context.Renderer, sprite, hud.InnerX,
               rowTop + std::max(0.0F, (hud.RowHeight - IconSize) / 2.0F), IconSize);
    DrawText(context.Renderer, label, hud.TextX, labelY, labelScale, Palette::NormalText);
    float valueY = labelY + labelHeight + hud.LabelGap;
    for (const std::string& line : lines) {
        DrawText(context.Renderer, line, hud.TextX, valueY, valueScale, valueColor);
        valueY += valueHeight + hud.ValueGap;
    }
}

void DrawChipText(const HudContext& context, std::string_view text, float x, float y,
                  PackedColor color, std::int32_t wantedScale) {
    const HudLayout& hud = context.Layout;
    const std::int32_t scale =
        FitScaleToLength(text.size(), std::max(8.0F, hud.InnerWidth - 10.0F), wantedScale);
    const float dx = std::max(0.0F, (hud.InnerWidth - ByteWidth(text.size(), scale)) / 2.0F);
    const float dy = std::max(0.0F, (hud.ChipHeight - TextHeight(scale)) / 2.0F);
    DrawText(context.Renderer, text, x + dx, y + dy, scale, color);
}

void DrawHud(SDL_Renderer* renderer, const BoardLayout& layout, const UiMetrics& metrics) {
    const RunState& run = LiveRun();
    const Danger danger = DangerOf(run);
    const HudLayout hud = PlaceHud(layout, metrics);
    const HudContext context = {renderer, hud};

    FillOutlinedRect(renderer, hud.PanelX, hud.PanelY, hud.PanelWidth, hud.PanelHeight,
                     Palette::PanelBody, Palette::FrameLine);
    DrawStripe(context, hud.PanelX, hud.PanelY, hud.PanelWidth);
    DrawQueue(context, run);
    DrawBox(context, hud.StatusY, hud.StatusHeight, BoxBody);
    DrawBox(context, hud.CommandsY, hud.CommandsHeight, BoxBody);
    DrawBar(context, hud.FailureBarY, danger.FailureFraction, FailureBar);
    DrawBar(context, hud.InfectionBarY, danger.InfectionFraction, Palette::Red);
    for (std::size_t i = 0; i < Chips.size(); ++i) {
        FillOutlinedRect(renderer, hud.InnerX, hud.ChipY[i], hud.InnerWidth, hud.ChipHeight,
                         Chips[i].Fill, Chips[i].Line);
    }

    DrawTitle(context, {"Hud.Queue", "QUEUE"}, hud.PanelY + 18.0F);
    DrawStatusTexts(context, run, danger);
    DrawCommands(context);
    if (run.FastForward) {
        DrawFastForwardMark(context);
    }
}

} // namespace Wirefall

#include "player/Player.h"

#include "sim/LevelRules.h"
#include "sim/Simulation.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace Wirefall {

namespace {

constexpr std::int32_t StepMilliseconds = static_cast<std::int32_t>(StepMs);
constexpr std::int32_t BudgetPerPress = 1000;

// Even the fastest hands wait for the world to move on after so many tiles have not helped.
constexpr int MostPlacementsPerStep = 200;

// A way that the virus could get at is good enough while nothing happens to packets for so long.
constexpr int ForecastTicks = 60;

} // namespace

Player::Player(const PlayStyle& style, PressFunction press)
    : Style(style), Told(std::move(press)) {}

void Player::PlayStep() {
    if (LiveRun().GameOver || IsLevelComplete()) {
        return;
    }
    if (Style.PressesPerSecond == 0) {
        PlayAtOnce();
    } else {
        PlayInTime();
    }
}

void Player::PlayAtOnce() {
    for (int placement = 0; placement < MostPlacementsPerStep; ++placement) {
        const std::vector<std::uint32_t> presses = Decide();
        if (presses.empty()) {
            return;
        }
        std::ranges::for_each(presses, [this](std::uint32_t code) { GivePress(code); });
    }
}

void Player::PlayInTime() {
    PressBudget += Style.PressesPerSecond * StepMilliseconds;
    DelayLeftMs = std::max(DelayLeftMs - StepMilliseconds, 0);
    for (;;) {
        if (NextPending == Pending.size()) {
            Pending = Decide();
            NextPending = 0;
            if (LiveRun().Tiles != ExpectedTiles) {
                ExpectedTiles = LiveRun().Tiles;
                DelayLeftMs = Style.DelayMs;
            }
        }
        if (Pending.empty() || DelayLeftMs > 0) {
            // Hands that rest save up no presses.
            PressBudget = std::min(PressBudget, BudgetPerPress);
            return;
        }
        if (PressBudget < BudgetPerPress) {
            return;
        }
        PressBudget -= BudgetPerPress;
        const bool expected = LiveRun().Tiles == ExpectedTiles;
        GivePress(Pending[NextPending++]);
        if (expected) {
            ExpectedTiles = LiveRun().Tiles;
        }
    }
}

bool Player::NeedsHelp() {
    const RunState& run = LiveRun();
    if (run.Tiles == SettledTiles) {
        return false;
    }
    if (IsSettled(run)) {
        SettledTiles = run.Tiles;
        return false;
    }
    return !DeliversCleanly(run) || ForecastStrikes(run, ForecastTicks) > 0;
}

std::vector<std::uint32_t> Player::Decide() {
    if (!NeedsHelp()) {
        return {};
    }
    const PlanWeights& weights = Style.PressesPerSecond == 0 ? FreePresses : CountedPresses;
    const std::optional<Placement> placement = PlanPlacement(LiveRun(), weights);
    return placement ? PressesFor(LiveRun(), *placement) : std::vector<std::uint32_t>{};
}

void Player::GivePress(std::uint32_t code) {
    ApplyRunCommand(code);
    if (Told) {
        Told(code);
    }
}

} // namespace Wirefall

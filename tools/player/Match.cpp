#include "player/Match.h"

#include "player/PressCodes.h"
#include "sim/LevelRules.h"
#include "sim/Simulation.h"
#include "sim/Virus.h"

#include <algorithm>
#include <array>
#include <utility>

namespace Wirefall {

namespace {

constexpr std::uint64_t StepsPerSecond = 1000 / StepMs;

// Packets can go round in circles for ever, and a run with them. The slowest level takes about a
// twentieth of this.
constexpr std::uint64_t LongestLevelTicks = 200000;

constexpr std::array<std::string_view, 3> RunEndNames = {"failed", "last level", "time limit"};

std::int32_t CountCorrupted(const RunState& run) {
    return static_cast<std::int32_t>(
        std::ranges::count_if(run.Packets, [](const Packet& p) { return p.Corrupted; }));
}

std::int32_t& StrikesOf(LevelReport& report, StrikeKind kind) {
    return report.Strikes[static_cast<std::size_t>(kind)];
}

// One level of the live run as it is being played.
class LevelWatch {
public:
    explicit LevelWatch(std::int32_t level) { Report.Level = level; }

    void CountPress(std::uint32_t code) {
        ++Report.Presses;
        Report.Placements += code == Press::Place ? 1 : 0;
    }

    void BeforeStep(const RunState& run) {
        CorruptedInFlight = CountCorrupted(run);
        Corruptions = run.CorruptedPackets;
        Losses = run.LostPackets;
        if (run.Tiles != KnownTiles) {
            KnownTiles = run.Tiles;
            WayStands = DeliversCleanly(run);
        }
    }

    void AfterStep(const RunState& run) {
        const std::int32_t corrupted = run.CorruptedPackets - Corruptions;
        const std::int32_t lost = run.LostPackets - Losses;
        const std::int32_t lostCorrupted = CorruptedInFlight + corrupted - CountCorrupted(run);
        StrikesOf(Report, StrikeKind::Corrupted) += corrupted;
        StrikesOf(Report, StrikeKind::LostCorrupted) += lostCorrupted;
        StrikesOf(Report, WayStands ? StrikeKind::LostOnWay : StrikeKind::LostUnbuilt) +=
            lost - lostCorrupted;
        if (Report.Deliveries == 0 && run.DeliveredPackets > 0) {
            Report.TicksToFirstDelivery = run.Tick;
        }
        Report.Deliveries = run.DeliveredPackets;
        Report.Ticks = run.Tick;
        const float infection = InfectionRatio(run);
        InfectionSum += static_cast<double>(infection);
        Report.PeakInfection = std::max(Report.PeakInfection, infection);
        if (run.Tick % StepsPerSecond == 0) {
            Report.InfectionBySecond.push_back(infection);
        }
    }

    LevelReport Finish(bool completed) {
        Report.Completed = completed;
        if (Report.Ticks > 0) {
            Report.MeanInfection =
                static_cast<float>(InfectionSum / static_cast<double>(Report.Ticks));
        }
        return std::move(Report);
    }

private:
    LevelReport Report;
    double InfectionSum = 0.0;
    std::int32_t CorruptedInFlight = 0;
    std::int32_t Corruptions = 0;
    std::int32_t Losses = 0;
    std::vector<Tile> KnownTiles;
    bool WayStands = false;
};

LevelReport PlayLevel(const PlayStyle& style, const MatchObserver& observer) {
    LevelWatch watch(LiveRun().Level);
    Player player(style, [&](std::uint32_t code) {
        watch.CountPress(code);
        if (observer.OnPress) {
            observer.OnPress(code);
        }
    });
    while (!LiveRun().GameOver && !IsLevelComplete() && LiveRun().Tick < LongestLevelTicks) {
        player.PlayStep();
        watch.BeforeStep(LiveRun());
        AdvanceSimulation(StepMs);
        watch.AfterStep(LiveRun());
        if (observer.OnStep) {
            observer.OnStep();
        }
    }
    return watch.Finish(IsLevelComplete());
}

} // namespace

std::string_view RunEndName(RunEnd end) { return RunEndNames[static_cast<std::size_t>(end)]; }

void StartSeededRun(std::uint32_t seed) {
    ResetRun();
    RunState& run = LiveRun();
    run.Seed = seed;
    SeedEngine(run.RandomEngine, seed);
    GenerateLevel(run);
}

void CompleteByDecree() { LiveRun().DeliveredPackets = LiveRun().LevelTargetPackets; }

RunReport PlayMatch(const MatchSettings& settings, const MatchObserver& observer) {
    StartSeededRun(settings.Seed);
    while (LiveRun().Level < settings.FirstLevel) {
        CompleteByDecree();
        AdvanceLevel();
    }
    RunReport report;
    report.Seed = settings.Seed;
    for (;;) {
        report.Levels.push_back(PlayLevel(settings.Style, observer));
        if (!report.Levels.back().Completed) {
            report.End = LiveRun().GameOver ? RunEnd::Failed : RunEnd::TimeLimit;
            break;
        }
        if (LiveRun().Level >= settings.LastLevel) {
            report.End = RunEnd::LastLevel;
            break;
        }
        AdvanceLevel();
        if (observer.OnLevel) {
            observer.OnLevel();
        }
    }
    report.Score = LiveRun().TotalScore;
    return report;
}

} // namespace Wirefall

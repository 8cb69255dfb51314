#include "player/Report.h"

#include "sim/Simulation.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <functional>
#include <numeric>
#include <type_traits>

namespace Wirefall {

namespace {

constexpr double SecondsPerTick = static_cast<double>(StepMs) / 1000.0;

constexpr std::size_t EndColumnWidth = 10;

constexpr std::string_view StrikeColumns = "corrupted,lost_corrupted,lost_unbuilt,lost_on_way";
constexpr std::string_view RunColumns = "presses_per_second,delay_ms,seed";

constexpr std::array<std::string_view, StrikeKindCount> StrikeNames = {
    "corrupted", "lost corrupted", "lost, no way built", "lost on the way"};

std::string Fixed(double number, int digits) {
    std::array<char, 64> text{};
    const std::to_chars_result end = std::to_chars(text.data(), text.data() + text.size(), number,
                                                   std::chars_format::fixed, digits);
    return {text.data(), end.ptr};
}

std::string Text(std::string_view text) { return std::string(text); }

template <typename Number>
std::string Text(Number number) requires std::is_arithmetic_v<Number> {
    return std::to_string(number);
}

// A line of comma-separated values.
template <typename... Values>
std::string Line(const Values&... values) {
    std::string line;
    ((line += Text(values), line += ','), ...);
    line.back() = '\n';
    return line;
}

std::string Right(const std::string& text, std::size_t width) {
    return std::string(width - std::min(width, text.size()), ' ') + text;
}

double Seconds(std::uint64_t ticks) { return static_cast<double>(ticks) * SecondsPerTick; }

std::string StrikesText(const std::array<std::int32_t, StrikeKindCount>& strikes) {
    std::string text;
    for (const std::int32_t count : strikes) {
        text += (text.empty() ? "" : ",") + std::to_string(count);
    }
    return text;
}

// All levels of a run together.
struct RunTotals {
    std::int32_t Deliveries = 0;
    std::array<std::int32_t, StrikeKindCount> Strikes{};
    std::int32_t Presses = 0;
    std::int32_t Placements = 0;
    std::uint64_t Ticks = 0;
};

RunTotals TotalsOf(const RunReport& report) {
    RunTotals totals;
    for (const LevelReport& level : report.Levels) {
        totals.Deliveries += level.Deliveries;
        totals.Presses += level.Presses;
        totals.Placements += level.Placements;
        totals.Ticks += level.Ticks;
        std::ranges::transform(totals.Strikes, level.Strikes, totals.Strikes.begin(),
                               std::plus<>{});
    }
    return totals;
}

void AppendSummary(std::string& text, const std::vector<RunReport>& reports) {
    std::vector<std::int32_t> levels;
    std::array<std::int32_t, StrikeKindCount> strikes{};
    int failed = 0;
    for (const RunReport& report : reports) {
        levels.push_back(report.LevelReached());
        if (report.End == RunEnd::Failed) {
            ++failed;
            std::ranges::transform(strikes, report.Levels.back().Strikes, strikes.begin(),
                                   std::plus<>{});
        }
    }
    std::ranges::sort(levels);
    const auto quantile = [&levels](std::size_t percent) {
        return levels.at((levels.size() - 1) * percent / 100);
    };
    text += "\n" + Text(reports.size()) + " runs, " + Text(failed) +
            " failed; level reached: least " + Text(quantile(0)) + ", 10% " + Text(quantile(10)) +
            ", median " + Text(quantile(50)) + ", 90% " + Text(quantile(90)) + ", most " +
            Text(quantile(100)) + "\nstrikes of the levels that failed:";
    for (std::size_t kind = 0; kind < StrikeKindCount; ++kind) {
        text += (kind == 0 ? " " : ", ") + Text(StrikeNames[kind]) + " " + Text(strikes[kind]);
    }
    text += '\n';
}

} // namespace

std::string RunsCsv(const PlayStyle& style, const std::vector<RunReport>& reports) {
    std::string text =
        Line(RunColumns, "level,end,score,deliveries", StrikeColumns, "presses,placements,seconds");
    for (const RunReport& report : reports) {
        const RunTotals totals = TotalsOf(report);
        text += Line(style.PressesPerSecond, style.DelayMs, report.Seed, report.LevelReached(),
                     RunEndName(report.End), report.Score, totals.Deliveries,
                     StrikesText(totals.Strikes), totals.Presses, totals.Placements,
                     Fixed(Seconds(totals.Ticks), 3));
    }
    return text;
}

std::string LevelsCsv(const PlayStyle& style, const std::vector<RunReport>& reports) {
    std::string text = Line(RunColumns, "level,completed,seconds,first_delivery_seconds,deliveries",
                            StrikeColumns, "presses,placements,mean_infection,peak_infection");
    for (const RunReport& report : reports) {
        for (const LevelReport& level : report.Levels) {
            text += Line(style.PressesPerSecond, style.DelayMs, report.Seed, level.Level,
                         level.Completed ? 1 : 0, Fixed(Seconds(level.Ticks), 3),
                         Fixed(Seconds(level.TicksToFirstDelivery), 3), level.Deliveries,
                         StrikesText(level.Strikes), level.Presses, level.Placements,
                         Fixed(static_cast<double>(level.MeanInfection), 4),
                         Fixed(static_cast<double>(level.PeakInfection), 4));
        }
    }
    return text;
}

std::string InfectionCsv(const PlayStyle& style, const std::vector<RunReport>& reports) {
    std::string text = Line(RunColumns, "level,second,infection");
    for (const RunReport& report : reports) {
        for (const LevelReport& level : report.Levels) {
            int second = 0;
            for (const float infection : level.InfectionBySecond) {
                text += Line(style.PressesPerSecond, style.DelayMs, report.Seed, level.Level,
                             ++second, Fixed(static_cast<double>(infection), 4));
            }
        }
    }
    return text;
}

std::string RunsTable(const std::vector<RunReport>& reports) {
    std::string text = "      seed  level  end         delivered  strikes  presses  minutes\n";
    for (const RunReport& report : reports) {
        const RunTotals totals = TotalsOf(report);
        const std::int32_t strikes =
            std::accumulate(totals.Strikes.begin(), totals.Strikes.end(), 0);
        std::string end(RunEndName(report.End));
        end.resize(EndColumnWidth, ' ');
        text += Right(Text(report.Seed), 10) + Right(Text(report.LevelReached()), 7) + "  " + end +
                Right(Text(totals.Deliveries), 11) + Right(Text(strikes), 9) +
                Right(Text(totals.Presses), 9) + Right(Fixed(Seconds(totals.Ticks) / 60.0, 1), 9) +
                "\n";
    }
    if (!reports.empty()) {
        AppendSummary(text, reports);
    }
    return text;
}

} // namespace Wirefall

#include "sim/LevelGeneration.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <map>
#include <random>

namespace Wirefall {
namespace {

RunState GeneratedLevel(std::int32_t level, std::uint32_t seed = DefaultSeed) {
    RunState run;
    run.Level = level;
    SeedEngine(run.RandomEngine, seed);
    GenerateLevel(run);
    return run;
}

std::map<TileType, int> CountTiles(const RunState& run) {
    std::map<TileType, int> counts;
    for (const Tile& tile : run.Tiles) {
        if (!tile.OccupiedBySource && !tile.OccupiedBySink) {
            ++counts[tile.Type];
        }
    }
    return counts;
}

std::vector<Cell> CellsWhere(const RunState& run, bool (*holds)(const Tile&)) {
    std::vector<Cell> cells;
    for (std::int32_t y = 0; y < run.GridHeight; ++y) {
        for (std::int32_t x = 0; x < run.GridWidth; ++x) {
            if (holds(TileAt(run, x, y))) {
                cells.push_back({x, y});
            }
        }
    }
    return cells;
}

bool IsInfected(const Tile& tile) { return tile.VirusInfected; }

TEST(LevelGeneration, TheFirstBoardIsTheKnownOne) {
    RunState run;
    ConstructRunState(run);
    ASSERT_EQ(run.Sources, (std::vector<Endpoint>{{9, 5, Direction::Left}}));
    ASSERT_EQ(run.Sinks, (std::vector<Endpoint>{{0, 1, Direction::Right}}));
    const auto isFirewall = [](const Tile& tile) { return tile.Type == TileType::Firewall; };
    const auto isBuffer = [](const Tile& tile) { return tile.Type == TileType::Buffer; };
    const auto isAntivirus = [](const Tile& tile) { return tile.Type == TileType::Antivirus; };
    EXPECT_EQ(CellsWhere(run, isFirewall), (std::vector<Cell>{{8, 9}}));
    EXPECT_EQ(CellsWhere(run, isBuffer), (std::vector<Cell>{{1, 8}}));
    EXPECT_EQ(CellsWhere(run, isAntivirus), (std::vector<Cell>{{4, 2}}));
    EXPECT_EQ(CellsWhere(run, IsInfected), (std::vector<Cell>{{2, 2}}));
    EXPECT_EQ(run.TileQueue,
              (std::array<TileType, 3>{TileType::Cross, TileType::Corner, TileType::Straight}));
}

TEST(LevelGeneration, SourceAndSinkLieOnOppositeEdgesAndPointInward) {
    std::map<Direction, int> sourceDirections;
    for (std::uint32_t seed = 0; seed < 200; ++seed) {
        SCOPED_TRACE(seed);
        const RunState run = GeneratedLevel(1, seed);
        ASSERT_EQ(run.Sources.size(), 1U);
        ASSERT_EQ(run.Sinks.size(), 1U);
        const Endpoint source = run.Sources.front();
        const Endpoint sink = run.Sinks.front();
        EXPECT_EQ(sink.Dir, OppositeDirection(source.Dir));
        ++sourceDirections[source.Dir];
        for (const Endpoint& endpoint : {source, sink}) {
            EXPECT_FALSE(InBounds(run, endpoint.X - DirectionDx(endpoint.Dir),
                                  endpoint.Y - DirectionDy(endpoint.Dir)))
                << "the side behind it is the edge";
            EXPECT_EQ(TileAt(run, endpoint.X, endpoint.Y).Connections, DirectionBit(endpoint.Dir));
            EXPECT_EQ(TileAt(run, endpoint.X, endpoint.Y).Type, TileType::Straight);
        }
        EXPECT_TRUE(TileAt(run, source.X, source.Y).OccupiedBySource);
        EXPECT_TRUE(TileAt(run, sink.X, sink.Y).OccupiedBySink);
        const auto isEndpoint = [](const Tile& tile) {
            return tile.OccupiedBySource || tile.OccupiedBySink;
        };
        EXPECT_EQ(CellsWhere(run, isEndpoint).size(), 2U);
    }
    EXPECT_EQ(sourceDirections.size(), 4U) << "all four edges come up";
}

struct SpecialsCase {
    std::int32_t Level;
    int Firewalls;
    int Buffers;
    std::size_t Infected;
};

TEST(LevelGeneration, SpecialsAndInfectedCellsGrowWithTheLevel) {
    for (const SpecialsCase& c : std::vector<SpecialsCase>{{1, 1, 1, 1},
                                                           {2, 1, 1, 1},
                                                           {3, 2, 1, 2},
                                                           {4, 2, 2, 2},
                                                           {6, 3, 2, 3},
                                                           {8, 3, 3, 3},
                                                           {9, 4, 3, 4},
                                                           {12, 5, 4, 5},
                                                           {15, 6, 4, 5},
                                                           {60, 21, 16, 5}}) {
        SCOPED_TRACE(c.Level);
        for (std::uint32_t seed = 0; seed < 20; ++seed) {
            const RunState run = GeneratedLevel(c.Level, seed);
            auto counts = CountTiles(run);
            EXPECT_EQ(counts[TileType::Firewall], c.Firewalls);
            EXPECT_EQ(counts[TileType::Buffer], c.Buffers);
            EXPECT_EQ(counts[TileType::Antivirus], 1);
            EXPECT_EQ(CellsWhere(run, IsInfected).size(), c.Infected);
            EXPECT_GE(counts[TileType::Empty], 32);
        }
    }
}

TEST(LevelGeneration, TheVirusStartsOnTilesThatCanCarryIt) {
    for (std::uint32_t seed = 0; seed < 200; ++seed) {
        const RunState run = GeneratedLevel(12, seed);
        for (const Cell& cell : CellsWhere(run, IsInfected)) {
            const Tile& tile = TileAt(run, cell.X, cell.Y);
            EXPECT_NE(tile.Type, TileType::Empty);
            EXPECT_NE(tile.Type, TileType::Firewall);
            EXPECT_FALSE(IsEndpointCell(run, cell.X, cell.Y));
        }
    }
}

TEST(LevelGeneration, MixOfTilesFollowsTheLevelBands) {
    struct Band {
        std::int32_t Level;
        std::array<int, 5> Percent;
    };
    for (const Band& band : {Band{1, {55, 20, 15, 7, 3}}, Band{3, {55, 20, 15, 7, 3}},
                             Band{4, {50, 20, 16, 9, 5}}, Band{6, {50, 20, 16, 9, 5}},
                             Band{7, {45, 20, 17, 11, 7}}, Band{30, {45, 20, 17, 11, 7}}}) {
        SCOPED_TRACE(band.Level);
        // The specials and the cleared cells take from all plain kinds alike, so the shares of the
        // plain kinds among each other show the table.
        std::map<TileType, int> sums;
        int total = 0;
        for (std::uint32_t seed = 0; seed < 400; ++seed) {
            for (const auto& [type, count] : CountTiles(GeneratedLevel(band.Level, seed))) {
                sums[type] += count;
            }
        }
        for (const TileType type :
             {TileType::Straight, TileType::Corner, TileType::TJunction, TileType::Cross}) {
            total += sums[type];
        }
        const int routes = 100 - band.Percent[0];
        for (std::size_t kind = 1; kind <= 4; ++kind) {
            const double expected = static_cast<double>(band.Percent.at(kind)) / routes;
            const double found = static_cast<double>(sums[static_cast<TileType>(kind)]) / total;
            EXPECT_NEAR(found, expected, 0.02) << "kind " << kind;
        }
    }
}

// The whole procedure once more, written as one long recipe over the standard library's engine, to
// hold the order of the draws.
class Recipe {
public:
    explicit Recipe(std::uint32_t seed) : Engine(seed) {}

    std::uint32_t Draw(std::uint32_t low, std::uint32_t high) {
        const std::uint64_t range = std::uint64_t{high} - low + 1;
        const std::uint64_t threshold = ((std::uint64_t{1} << 32) - range) % range;
        std::uint64_t product = 0;
        do {
            product = std::uint64_t{Engine()} * range;
        } while ((product & 0xffffffffU) < threshold);
        return low + static_cast<std::uint32_t>(product >> 32);
    }

    template <typename T>
    void Shuffle(std::vector<T>& list) {
        std::size_t i = 1;
        if (!list.empty() && list.size() % 2 == 0) {
            std::swap(list[1], list[Draw(0, 1)]);
            i = 2;
        }
        for (; i < list.size(); i += 2) {
            const auto width = static_cast<std::uint32_t>(i + 2);
            const std::uint32_t r = Draw(0, static_cast<std::uint32_t>(i + 1) * width - 1);
            std::swap(list[i], list[r / width]);
            std::swap(list[i + 1], list[r % width]);
        }
    }

    std::mt19937 Engine;
};

// What a recipe for one board comes to.
struct RecipeBoard {
    std::vector<Tile> Tiles = std::vector<Tile>(100);
    std::size_t Source = 0;
    std::size_t Sink = 0;
    int EmptyCells = 0;
};

RecipeBoard DrawBoard(Recipe& recipe, std::int32_t level) {
    RecipeBoard board;
    const std::uint32_t edge = recipe.Draw(0, 3);
    const std::size_t at = recipe.Draw(0, 9);
    const std::size_t to = recipe.Draw(0, 9);
    // Left, right, top, bottom.
    const std::array<std::size_t, 4> cells = {at * 10, at * 10 + 9, at, 90 + at};
    const std::array<std::size_t, 4> opposite = {to * 10 + 9, to * 10, 90 + to, to};
    board.Source = cells.at(edge);
    board.Sink = opposite.at(edge);
    const std::uint32_t empty = level < 4 ? 55 : level < 7 ? 50 : 45;
    const std::uint32_t corner = level < 4 ? 15 : level < 7 ? 16 : 17;
    const std::uint32_t junction = level < 4 ? 7 : level < 7 ? 9 : 11;
    std::vector<std::size_t> free;
    for (std::size_t i = 0; i < 100; ++i) {
        if (i == board.Source || i == board.Sink) {
            continue;
        }
        const std::uint32_t d = recipe.Draw(0, 99);
        const int kind = d < empty                            ? 0
                         : d < empty + 20                     ? 1
                         : d < empty + 20 + corner            ? 2
                         : d < empty + 20 + corner + junction ? 3
                                                              : 4;
        const auto rotation = static_cast<std::int32_t>(recipe.Draw(0, 3));
        board.Tiles[i] = MakeTile(static_cast<TileType>(kind), rotation);
        free.push_back(i);
    }
    std::vector<std::size_t> spots = free;
    recipe.Shuffle(spots);
    std::size_t next = 0;
    const auto place = [&](TileType kind, int count) {
        for (int i = 0; i < count && next < spots.size(); ++i) {
            const auto rotation = static_cast<std::int32_t>(recipe.Draw(0, 3));
            board.Tiles[spots[next++]] = MakeTile(kind, rotation);
        }
    };
    place(TileType::Firewall, level / 3 + 1);
    place(TileType::Buffer, level / 4 + 1);
    place(TileType::Antivirus, 1);
    std::vector<std::size_t> plain;
    for (const std::size_t cell : free) {
        const int kind = static_cast<int>(board.Tiles[cell].Type);
        if (kind == 0) {
            ++board.EmptyCells;
        } else if (kind <= 4) {
            plain.push_back(cell);
        }
    }
    recipe.Shuffle(plain);
    for (std::size_t i = 0; board.EmptyCells < 32 && i < plain.size(); ++i, ++board.EmptyCells) {
        board.Tiles[plain[i]] = Tile{};
    }
    std::vector<std::size_t> eligible;
    for (const std::size_t cell : free) {
        const TileType type = board.Tiles[cell].Type;
        if (type != TileType::Empty && type != TileType::Firewall) {
            eligible.push_back(cell);
        }
    }
    recipe.Shuffle(eligible);
    for (int i = 0; i < std::min(level / 3 + 1, 5); ++i) {
        board.Tiles[eligible[static_cast<std::size_t>(i)]].VirusInfected = true;
    }
    return board;
}

std::array<TileType, 3> DrawQueue(Recipe& recipe) {
    std::array<TileType, 3> queue{};
    for (TileType& tile : queue) {
        tile = static_cast<TileType>(recipe.Draw(0, 6) + 1);
    }
    return queue;
}

TEST(LevelGeneration, DrawsInThePromisedOrder) {
    for (const std::int32_t level : {1, 5, 8, 13, 110}) {
        for (std::uint32_t seed = 1; seed < 30; ++seed) {
            SCOPED_TRACE(testing::Message() << "level " << level << ", seed " << seed);
            Recipe recipe(seed);
            const RecipeBoard board = DrawBoard(recipe, level);
            ASSERT_GE(board.EmptyCells, 32);
            const std::array<TileType, 3> queue = DrawQueue(recipe);

            RunState run = GeneratedLevel(level, seed);
            EXPECT_EQ(run.TileQueue, queue);
            EXPECT_EQ(NextOutput(run.RandomEngine), recipe.Engine());
            for (std::size_t i = 0; i < 100; ++i) {
                if (i == board.Source || i == board.Sink) {
                    EXPECT_EQ(run.Tiles[i].OccupiedBySource, i == board.Source);
                    EXPECT_EQ(run.Tiles[i].OccupiedBySink, i == board.Sink);
                } else {
                    EXPECT_EQ(run.Tiles[i], board.Tiles[i]) << "cell " << i;
                }
            }
        }
    }
}

TEST(LevelGeneration, StartsTheCountersOfTheLevelAndKeepsThoseOfTheRun) {
    RunState run;
    ConstructRunState(run);
    run.Level = 5;
    run.TotalScore = -25;
    run.LevelTargetPackets = 60;
    run.FailureThreshold = 4;
    run.SpawnIntervalTicks = 12;
    run.VirusSpreadIntervalTicks = 3;
    run.PacketGraceTicks = 27;
    run.VirusGraceTicks = 32;
    run.Seed = 12345;
    run.CursorX = 0;
    run.CursorY = 9;
    run.PreviewRotation = 3;
    run.Tick = 900;
    run.GameOver = true;
    run.FastForward = true;
    run.VirusActiveTicks = 70;
    run.LostPackets = 1;
    run.CorruptedPackets = 2;
    run.DeliveredPackets = 3;
    run.Packets.push_back({});
    run.Sources.push_back({});
    GenerateLevel(run);
    EXPECT_EQ(run.CursorX, 5);
    EXPECT_EQ(run.CursorY, 5);
    EXPECT_EQ(run.PreviewRotation, 0);
    EXPECT_EQ(run.Tick, 0U);
    EXPECT_FALSE(run.GameOver);
    EXPECT_FALSE(run.FastForward);
    EXPECT_EQ(run.NextSpawnTick, 12U);
    EXPECT_EQ(run.PacketGraceRemaining, 27);
    EXPECT_EQ(run.VirusGraceRemaining, 32);
    EXPECT_EQ(run.VirusActiveTicks, 0U);
    EXPECT_EQ(run.LostPackets, 0);
    EXPECT_EQ(run.CorruptedPackets, 0);
    EXPECT_EQ(run.DeliveredPackets, 0);
    EXPECT_TRUE(run.Packets.empty());
    EXPECT_EQ(run.Sources.size(), 1U);

    EXPECT_EQ(run.Level, 5);
    EXPECT_EQ(run.TotalScore, -25);
    EXPECT_EQ(run.LevelTargetPackets, 60);
    EXPECT_EQ(run.FailureThreshold, 4);
    EXPECT_EQ(run.SpawnIntervalTicks, 12);
    EXPECT_EQ(run.VirusSpreadIntervalTicks, 3);
    EXPECT_EQ(run.PacketGraceTicks, 27);
    EXPECT_EQ(run.VirusGraceTicks, 32);
    EXPECT_EQ(run.Seed, 12345U);
}

TEST(LevelGeneration, DamagedSettingsStartAtTheirFloors) {
    RunState run;
    SeedEngine(run.RandomEngine, 1);
    run.SpawnIntervalTicks = std::numeric_limits<std::int32_t>::min();
    run.PacketGraceTicks = -1;
    run.VirusGraceTicks = std::numeric_limits<std::int32_t>::min();
    run.GridWidth = 3;
    run.GridHeight = -4;
    GenerateLevel(run);
    EXPECT_EQ(run.NextSpawnTick, 1U);
    EXPECT_EQ(run.PacketGraceRemaining, 0);
    EXPECT_EQ(run.VirusGraceRemaining, 0);
    EXPECT_EQ(run.GridWidth, 10);
    EXPECT_EQ(run.GridHeight, 10);
}

TEST(LevelGeneration, TheLastLevelWithARealBoardIs110) {
    for (std::uint32_t seed = 0; seed < 20; ++seed) {
        const RunState run = GeneratedLevel(110, seed);
        EXPECT_EQ(CountTiles(run)[TileType::Firewall], 37);
        EXPECT_EQ(CountTiles(run)[TileType::Empty], 32);
    }
}

TEST(LevelGeneration, FromLevel111TheBoardIsBare) {
    for (const std::int32_t level : {111, 200, std::numeric_limits<std::int32_t>::max()}) {
        SCOPED_TRACE(level);
        const RunState run = GeneratedLevel(level);
        EXPECT_EQ(run.Sources, (std::vector<Endpoint>{{0, 5, Direction::Right}}));
        EXPECT_EQ(run.Sinks, (std::vector<Endpoint>{{9, 5, Direction::Left}}));
        EXPECT_EQ(CountTiles(run)[TileType::Empty], 98);
        EXPECT_EQ(TileAt(run, 0, 5).Connections, 2);
        EXPECT_TRUE(TileAt(run, 0, 5).OccupiedBySource);
        EXPECT_EQ(TileAt(run, 9, 5).Connections, 8);
        EXPECT_TRUE(TileAt(run, 9, 5).OccupiedBySink);
        EXPECT_TRUE(CellsWhere(run, IsInfected).empty());
    }
}

TEST(LevelGeneration, ABareBoardComesAfter64Attempts) {
    Recipe recipe(DefaultSeed);
    for (int attempt = 0; attempt < 64; ++attempt) {
        ASSERT_LT(DrawBoard(recipe, 111).EmptyCells, 32);
    }
    const std::array<TileType, 3> queue = DrawQueue(recipe);
    RunState run = GeneratedLevel(111);
    EXPECT_EQ(run.TileQueue, queue);
    EXPECT_EQ(NextOutput(run.RandomEngine), recipe.Engine());
}

TEST(LevelGeneration, ANegativeLevelFromADamagedRunStillMakesABoard) {
    const RunState run = GeneratedLevel(std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(run.Sources.size(), 1U);
    EXPECT_EQ(CellsWhere(run, IsInfected).size(), 1U);
}

std::vector<Cell> Numbered(std::int32_t count) {
    std::vector<Cell> list;
    list.reserve(static_cast<std::size_t>(count));
    for (std::int32_t i = 0; i < count; ++i) {
        list.push_back({i, -i});
    }
    return list;
}

TEST(ShuffleCells, MakesTwoSwapsFromOneDraw) {
    struct Case {
        std::int32_t Count;
        std::uint32_t Draws;
    };
    for (const Case& c : {Case{0, 0}, Case{1, 0}, Case{2, 1}, Case{3, 1}, Case{4, 2}, Case{5, 2},
                          Case{98, 49}, Case{99, 49}}) {
        SCOPED_TRACE(c.Count);
        MersenneTwister engine;
        SeedEngine(engine, 4);
        std::vector<Cell> list = Numbered(c.Count);
        ShuffleCells(list, engine);
        EXPECT_EQ(engine.Position, c.Draws == 0 ? 624 : c.Draws);
        const auto byX = [](const Cell& a, const Cell& b) { return a.X < b.X; };
        std::sort(list.begin(), list.end(), byX);
        EXPECT_EQ(list, Numbered(c.Count)) << "nothing is lost";
    }
}

TEST(ShuffleCells, AnyOrderIsAsLikelyAsAnyOther) {
    MersenneTwister engine;
    SeedEngine(engine, 99);
    std::map<std::string, int> orders;
    for (int i = 0; i < 24 * 500; ++i) {
        std::vector<Cell> list = Numbered(4);
        ShuffleCells(list, engine);
        std::string order;
        for (const Cell& cell : list) {
            order += static_cast<char>('0' + cell.X);
        }
        ++orders[order];
    }
    EXPECT_EQ(orders.size(), 24U);
    for (const auto& [order, count] : orders) {
        EXPECT_NEAR(count, 500, 120) << order;
    }
}

TEST(TileQueue, AllSevenKindsAreEquallyFrequent) {
    MersenneTwister engine;
    SeedEngine(engine, 3);
    std::map<TileType, int> counts;
    for (int i = 0; i < 7000; ++i) {
        ++counts[DrawQueueTile(engine)];
    }
    EXPECT_EQ(counts.size(), 7U);
    EXPECT_EQ(counts.count(TileType::Empty), 0U);
    for (const auto& [type, count] : counts) {
        EXPECT_NEAR(count, 1000, 150) << static_cast<int>(type);
    }
}

} // namespace
} // namespace Wirefall

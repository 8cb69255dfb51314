#include "player/Route.h"

#include "support/BoardDrawing.h"

#include <gtest/gtest.h>

namespace Wirefall {
namespace {

using Testing::DrawnRun;

void Infect(RunState& run, std::int32_t x, std::int32_t y) {
    TileAt(run, x, y).VirusInfected = true;
}

CellSet Cells(std::initializer_list<Cell> list) {
    CellSet cells;
    for (const Cell& cell : list) {
        cells.set(CellIndex(cell));
    }
    return cells;
}

std::vector<Cell> Places(const Route& route) {
    std::vector<Cell> places;
    for (const RouteStep& step : route.Steps) {
        places.push_back(step.Where);
    }
    return places;
}

TEST(ContagiousCells, AreThoseThatTheVirusCanReach) {
    RunState run = DrawnRun({"→──┐", "│.─┘"});
    Infect(run, 1, 0);
    EXPECT_EQ(ContagiousCells(run), Cells({{0, 0}, {1, 0}, {2, 0}, {3, 0}, {3, 1}, {2, 1}}));
}

TEST(ContagiousCells, EndAtAFirewall) {
    RunState run = DrawnRun({"→─F─"});
    Infect(run, 1, 0);
    EXPECT_EQ(ContagiousCells(run), Cells({{0, 0}, {1, 0}}));
}

TEST(ContagiousCells, DoNotStartAtAnInfectedFirewall) {
    RunState run = DrawnRun({"→─F─"});
    Infect(run, 2, 0);
    EXPECT_TRUE(ContagiousCells(run).none());
}

struct CarryCase {
    const char* Name;
    std::vector<std::string_view> Rows;
    RouteStep Step;
    bool Carries;
};

class CarriesTest : public testing::TestWithParam<CarryCase> {};

TEST_P(CarriesTest, GoesByTheRulesOfTheTick) {
    EXPECT_EQ(Carries(DrawnRun(GetParam().Rows), GetParam().Step), GetParam().Carries);
}

constexpr auto Up = Direction::Up;
constexpr auto Right = Direction::Right;
constexpr auto Down = Direction::Down;

INSTANTIATE_TEST_SUITE_P(
    Tiles, CarriesTest,
    testing::Values(CarryCase{"StraightAlong", {"───"}, {{1, 0}, Right, Right}, true},
                    CarryCase{"StraightAcross", {"─│─"}, {{1, 0}, Right, Right}, false},
                    CarryCase{"CornerTurns", {"─┐", ".│"}, {{1, 0}, Right, Down}, true},
                    CarryCase{"CornerDoesNotGoOn", {"─┐─"}, {{1, 0}, Right, Right}, false},
                    CarryCase{"CrossGoesOn", {"─┼─"}, {{1, 0}, Right, Right}, true},
                    CarryCase{"CrossNeverTurns", {"─┼.", ".│."}, {{1, 0}, Right, Down}, false},
                    CarryCase{"JunctionGoesOnFirst", {"─┬─", ".│."}, {{1, 0}, Right, Down}, false},
                    CarryCase{
                        "JunctionTurnsWhereItMust", {"─┬.", ".│."}, {{1, 0}, Right, Down}, true},
                    CarryCase{"StemPrefersTheRight", {"─┬─", ".│."}, {{1, 0}, Up, Right}, true},
                    CarryCase{"NothingOnAnEmptyCell", {"─.─"}, {{1, 0}, Right, Right}, false}),
    [](const auto& test) { return std::string(test.param.Name); });

TEST(FindRoute, FollowsTheWayThatStands) {
    const RunState run = DrawnRun({"→─┐", "..│", "..└⇐"});
    const Route route = FindRoute(run, {});
    EXPECT_EQ(Places(route), (std::vector<Cell>{{1, 0}, {2, 0}, {2, 1}, {2, 2}}));
}

TEST(FindRoute, PrefersTilesThatLieThere) {
    const RunState run = DrawnRun({"→....⇐", "......"});
    RunState detour = DrawnRun({"→┐.┌⇐", ".└─┘."});
    EXPECT_EQ(FindRoute(run, {}).Steps.size(), 4U);
    EXPECT_EQ(FindRoute(detour, {}).Steps.size(), 5U);
    EXPECT_LT(FindRoute(detour, {}).Cost, FindRoute(run, {}).Cost);
}

TEST(FindRoute, GoesAroundTheVirus) {
    RunState run = DrawnRun({".┌──┐.", "→┘──└⇐", "......"});
    Infect(run, 3, 1);
    const Route route = FindRoute(run, {});
    ASSERT_TRUE(route.Exists());
    for (const Cell& cell : Places(route)) {
        EXPECT_FALSE(TileAt(run, cell.X, cell.Y).VirusInfected);
    }
}

TEST(FindRoute, LeadsThroughAnAntivirusThatWaits) {
    RunState run = DrawnRun({"→─A─⇐"});
    Infect(run, 2, 0);
    EXPECT_EQ(FindRoute(run, {}).Cost, FindRoute(DrawnRun({"→───⇐"}), {}).Cost);
}

TEST(FindRoute, PaysForACureThatCannotBeAvoided) {
    RunState run = DrawnRun({"→───⇐"});
    const int clean = FindRoute(run, {}).Cost;
    Infect(run, 1, 0);
    EXPECT_GT(FindRoute(run, {}).Cost, clean);
    EXPECT_EQ(Places(FindRoute(run, {})).front(), (Cell{1, 0}));
}

TEST(FindRoute, CuresTheSourceAndTheSinkFromBeside) {
    RunState run = DrawnRun({"→A─A⇐"});
    const int clean = FindRoute(run, {}).Cost;
    Infect(run, 0, 0);
    Infect(run, 4, 0);
    EXPECT_EQ(FindRoute(run, {}).Cost, clean);
    RunState plain = DrawnRun({"→───⇐"});
    Infect(plain, 0, 0);
    Infect(plain, 4, 0);
    EXPECT_GT(FindRoute(plain, {}).Cost, clean);
}

// Between two ways that cost the same to build.
TEST(FindRoute, PrefersTheWayThatTheVirusCannotReach) {
    const RunState run = DrawnRun({".┌─┐.", "→.─.⇐", ".└─┘."});
    const CellSet upper = Cells({{1, 0}, {2, 0}, {3, 0}});
    const CellSet lower = Cells({{1, 2}, {2, 2}, {3, 2}});
    const CellSet middle = Cells({{2, 1}});
    EXPECT_TRUE((CellsOf(FindRoute(run, upper | middle)) & upper).none());
    EXPECT_TRUE((CellsOf(FindRoute(run, lower | middle)) & lower).none());
}

TEST(FindRoute, UsesNoCellThatIsToBeAvoided) {
    const RunState run = DrawnRun({"→───⇐"});
    const Route other = FindRoute(run, {}, Cells({{2, 0}}));
    EXPECT_TRUE(other.Exists());
    EXPECT_FALSE(CellsOf(other)[CellIndex({2, 0})]);
    EXPECT_FALSE(FindRoute(run, {}, Cells({{1, 0}})).Exists());
}

TEST(FindRoute, FindsNoneWhereTheSourceFacesTheWall) {
    const RunState run = DrawnRun({"←──⇐"});
    EXPECT_FALSE(FindRoute(run, {}).Exists());
}

} // namespace
} // namespace Wirefall

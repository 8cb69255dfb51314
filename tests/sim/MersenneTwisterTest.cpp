#include "sim/MersenneTwister.h"

#include <gtest/gtest.h>

#include <array>
#include <random>

namespace Wirefall {
namespace {

TEST(MersenneTwister, FirstOutputOfTheGamesSeed) {
    MersenneTwister engine;
    SeedEngine(engine, 1337);
    EXPECT_EQ(engine.Position, 624U);
    EXPECT_EQ(NextOutput(engine), 1125387415U);
    EXPECT_EQ(engine.Position, 1U);
}

// The value that the C++ standard demands of every conforming mt19937.
TEST(MersenneTwister, TenThousandthOutputOfTheReferenceSeed) {
    MersenneTwister engine;
    SeedEngine(engine, 5489);
    for (int i = 0; i < 9999; ++i) {
        NextOutput(engine);
    }
    EXPECT_EQ(NextOutput(engine), 4123659995U);
}

TEST(MersenneTwister, AgreesWithTheStandardLibraryForManySeeds) {
    for (const std::uint32_t seed : {0U, 1U, 1337U, 0x7fffffffU, 0x80000000U, 0xffffffffU}) {
        MersenneTwister engine;
        SeedEngine(engine, seed);
        std::mt19937 reference(seed);
        for (int i = 0; i < 2000; ++i) {
            ASSERT_EQ(NextOutput(engine), reference()) << "seed " << seed << ", output " << i;
        }
    }
}

TEST(MersenneTwister, AllWordsAreRenewedTogetherWhenTheyAreUsedUp) {
    MersenneTwister engine;
    SeedEngine(engine, 1337);
    const auto seeded = engine.Words;
    NextOutput(engine);
    const auto renewed = engine.Words;
    EXPECT_NE(renewed, seeded);
    for (int i = 1; i < 624; ++i) {
        NextOutput(engine);
    }
    EXPECT_EQ(engine.Words, renewed);
    EXPECT_EQ(engine.Position, 624U);
    NextOutput(engine);
    EXPECT_NE(engine.Words, renewed);
    EXPECT_EQ(engine.Position, 1U);
}

TEST(MersenneTwister, GoesOnFromCopiedWordsAndPosition) {
    MersenneTwister engine;
    SeedEngine(engine, 42);
    for (int i = 0; i < 1000; ++i) {
        NextOutput(engine);
    }
    MersenneTwister copy;
    copy.Words = engine.Words;
    copy.Position = engine.Position;
    for (int i = 0; i < 1000; ++i) {
        ASSERT_EQ(NextOutput(copy), NextOutput(engine));
    }
}

TEST(MersenneTwister, ADamagedPositionRenewsTheWords) {
    MersenneTwister engine;
    SeedEngine(engine, 1337);
    engine.Position = 0xffffffff;
    EXPECT_EQ(NextOutput(engine), 1125387415U);
}

// The procedure written out with plain division, for comparison.
std::uint32_t SlowDraw(std::mt19937& engine, std::uint32_t low, std::uint32_t high) {
    const std::uint64_t range = std::uint64_t{high} - low + 1;
    const std::uint64_t threshold = ((std::uint64_t{1} << 32) - range) % range;
    for (;;) {
        const std::uint64_t product = std::uint64_t{engine()} * range;
        if (product % (std::uint64_t{1} << 32) >= threshold) {
            return static_cast<std::uint32_t>(low + product / (std::uint64_t{1} << 32));
        }
    }
}

TEST(UniformDraw, MultipliesAndRejects) {
    MersenneTwister engine;
    SeedEngine(engine, 1337);
    std::mt19937 reference(1337);
    // The large ranges reject often: the last one throws away almost every second output.
    for (const std::uint32_t high : {0U, 1U, 3U, 6U, 9U, 99U, 8929U, 0x55555555U, 0x80000000U}) {
        for (int i = 0; i < 3000; ++i) {
            ASSERT_EQ(UniformDraw(engine, 0, high), SlowDraw(reference, 0, high))
                << "up to " << high << ", draw " << i;
        }
    }
    EXPECT_EQ(NextOutput(engine), reference()) << "the same number of outputs was drawn";
}

TEST(UniformDraw, StaysInTheClosedIntervalAndReachesBothEnds) {
    MersenneTwister engine;
    SeedEngine(engine, 7);
    std::array<int, 3> seen{};
    for (int i = 0; i < 300; ++i) {
        const std::uint32_t drawn = UniformDraw(engine, 5, 7);
        ASSERT_GE(drawn, 5U);
        ASSERT_LE(drawn, 7U);
        ++seen.at(drawn - 5);
    }
    for (const int count : seen) {
        EXPECT_GT(count, 50);
    }
}

TEST(UniformDraw, AChoiceOfOneStillDrawsAnOutput) {
    MersenneTwister engine;
    SeedEngine(engine, 1337);
    EXPECT_EQ(UniformDraw(engine, 4, 4), 4U);
    EXPECT_EQ(engine.Position, 1U);
}

} // namespace
} // namespace Wirefall

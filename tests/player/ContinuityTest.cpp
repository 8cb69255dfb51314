// A run that is saved, thrown away and loaded at any moment goes on as one that never stopped.

#include "game/GameApp.h"
#include "persist/SaveState.h"
#include "player/KeptPlays.h"
#include "player/StateDigest.h"
#include "support/SampleRuns.h"
#include "support/UserFolder.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace Wirefall {
namespace {

using Testing::KeptPlay;

constexpr std::uint32_t Moments = 50;

// A moment of a play: all that there is of it then.
struct Moment {
    std::size_t Step;
    Simulation State;
    PlayReader Rest;
};

// The checksum after each step to come.
std::vector<std::uint64_t> PlayOn(PlayReader reader) {
    std::vector<std::uint64_t> sums;
    Digester digester;
    while (reader.RunStep()) {
        sums.push_back(ChecksumOf(digester.Next(LiveSimulation())));
    }
    return sums;
}

std::vector<std::size_t> DrawSteps(std::size_t steps) {
    MersenneTwister random;
    SeedEngine(random, 12);
    std::vector<std::size_t> drawn;
    for (std::uint32_t i = 0; i < Moments; ++i) {
        drawn.push_back(UniformDraw(random, 1, static_cast<std::uint32_t>(steps)));
    }
    std::ranges::sort(drawn);
    return drawn;
}

std::vector<Moment> MomentsOf(const std::vector<PlayCommand>& play,
                              const std::vector<std::size_t>& steps) {
    std::vector<Moment> moments;
    PlayReader reader(play);
    std::size_t done = 0;
    for (const std::size_t step : steps) {
        for (; done < step; ++done) {
            reader.RunStep();
        }
        moments.push_back({step, LiveSimulation(), reader});
    }
    return moments;
}

// The moment as loading would give it back if nothing but its rules were applied.
Simulation Normalised(const Simulation& state) {
    Simulation normalised = state;
    normalised.Run = Testing::Normalised(state.Run);
    normalised.Run.FastForward = false;
    return normalised;
}

void SaveAndLoad() {
    GameApp app;
    app.HasSavedRun = true;
    ASSERT_TRUE(WriteSaveState(app));
    LiveSimulation() = Simulation{};
    GameApp fresh;
    ASSERT_TRUE(LoadSaveState(fresh));
    ASSERT_TRUE(fresh.HasSavedRun);
}

class ContinuityTest : public testing::TestWithParam<KeptPlay> {};

TEST_P(ContinuityTest, ARunGoesOnWhereItWasSaved) {
    const Testing::UserFolder user;
    const std::vector<PlayCommand> play = GetParam().Commands();
    const std::vector<std::uint64_t> whole = PlayOn(PlayReader(play));
    for (const Moment& moment : MomentsOf(play, DrawSteps(whole.size()))) {
        LiveSimulation() = moment.State;
        ASSERT_NO_FATAL_FAILURE(SaveAndLoad());
        const std::vector<std::uint64_t> loaded = PlayOn(moment.Rest);

        const Simulation control = Normalised(moment.State);
        std::vector<std::uint64_t> expected;
        if (control.Run == moment.State.Run) {
            expected.assign(whole.begin() + static_cast<std::ptrdiff_t>(moment.Step), whole.end());
        } else {
            LiveSimulation() = control;
            expected = PlayOn(moment.Rest);
        }
        ASSERT_EQ(loaded.size(), expected.size());
        const auto [difference, end] = std::ranges::mismatch(loaded, expected);
        ASSERT_EQ(difference, loaded.end()) << "saved at step " << moment.Step << ", different "
                                            << difference - loaded.begin() + 1 << " steps later";
    }
}

INSTANTIATE_TEST_SUITE_P(Corpus, ContinuityTest, testing::ValuesIn(Testing::KeptPlays()),
                         [](const auto& test) { return Testing::TestName(test.param); });

} // namespace
} // namespace Wirefall

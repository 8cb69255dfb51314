// The pieces that players hear: that they are what their scores say, and fit to be heard for hours.

#include "music/Loudness.h"
#include "music/Renderer.h"
#include "music/ScoreParser.h"
#include "tools/DecodedOgg.h"
#include "tools/Seam.h"
#include "velini/VelINIStream.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <string>

namespace Wirefall::Music {
namespace {

namespace fs = std::filesystem;

const fs::path DataFolder = WIREFALL_DATA_DIR;

class ShippedMusic : public testing::TestWithParam<const char*> {
protected:
    static fs::path OggPath() { return DataFolder / "Music" / (std::string(GetParam()) + ".ogg"); }

    static Score ReadScore() {
        const fs::path path = fs::path(WIREFALL_SCORE_DIR) / (std::string(GetParam()) + ".score");
        std::ostringstream text;
        text << std::ifstream(path).rdbuf();
        return ParseScore(text.str(), path.string());
    }

    const Sound Heard = Testing::DecodeOgg(OggPath().string());
};

INSTANTIATE_TEST_SUITE_P(Pieces, ShippedMusic,
                         testing::Values("MenuCredits", "Gameplay", "Infection", "Water",
                                         "GameOver"),
                         [](const auto& piece) { return std::string(piece.param); });

/// How alike two sounds of the same length are: 1 is the same, whatever the level.
double Correlation(const std::vector<float>& a, const std::vector<float>& b) {
    double ab = 0;
    double aa = 0;
    double bb = 0;
    for (std::size_t i = 0; i < a.size(); ++i) {
        const auto x = static_cast<double>(a[i]);
        const auto y = static_cast<double>(b[i]);
        ab += x * y;
        aa += x * x;
        bb += y * y;
    }
    return ab / std::sqrt(aa * bb);
}

TEST_P(ShippedMusic, IsWhatItsScoreSays) {
    const Sound rendered = Render(ReadScore()).Mix;
    ASSERT_EQ(Heard.Frames(), rendered.Frames()) << "render-music has not been run";
    EXPECT_GT(Correlation(Heard.Left, rendered.Left), 0.998) << "render-music has not been run";
    EXPECT_GT(Correlation(Heard.Right, rendered.Right), 0.998) << "render-music has not been run";
}

TEST_P(ShippedMusic, LastsBetween45And90Seconds) {
    const double seconds = static_cast<double>(Heard.Frames()) / SampleRate;
    EXPECT_GE(seconds, 45);
    EXPECT_LE(seconds, 90);
}

TEST_P(ShippedMusic, IsAsLoudAsTheOthersAndDoesNotClip) {
    EXPECT_NEAR(IntegratedLoudness(Heard), -18, 0.5);
    EXPECT_LT(TruePeak(Heard), -1);
}

TEST_P(ShippedMusic, HasNoStepAtTheSeam) {
    const Testing::Seam seam = Testing::SeamOf(Heard);
    EXPECT_LE(seam.Step, seam.Largest);
}

TEST_P(ShippedMusic, StaysBelowOneAndAHalfMegabytes) {
    EXPECT_LT(fs::file_size(OggPath()), 1'500'000U);
}

/// A switch comes up to a frame late, so that the beginning of the old piece is heard once more.
TEST_P(ShippedMusic, BeginsNoNoteInTheFirstMoments) {
    constexpr double QuietSeconds = 0.05;
    const Score score = ReadScore();
    const double barSeconds = score.QuartersPerBar * 60 / score.QuartersPerMinute;
    for (const Note& note : score.Notes) {
        const double fromSeam = std::fmod(note.Start + score.Upbeat, score.Bars) * barSeconds;
        EXPECT_GE(fromSeam, QuietSeconds) << score.Instruments[note.Instrument].Name;
    }
}

TEST(MusicPatterns, UseEveryPiece) {
    velINI::velINIStream patterns;
    ASSERT_TRUE(patterns.ReadFile((DataFolder / "Music/MusicPatterns.ini").string()));
    std::set<std::string> files;
    for (const char* role : {"MenuPattern", "GameplayPattern", "InfectionPattern", "DangerPattern",
                             "GameOverPattern"}) {
        const std::string pattern = patterns.GetValue("Music", role, "");
        const std::string file = patterns.GetValue("Pattern." + pattern, "FileName", "");
        EXPECT_TRUE(fs::is_regular_file(DataFolder / file)) << role << " is " << file;
        files.insert(file);
    }
    EXPECT_EQ(files.size(), 5U);
}

} // namespace
} // namespace Wirefall::Music

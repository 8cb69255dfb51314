// The pieces that players hear: that they are what their scores say, and fit to be heard for hours.

#include "audio/SoundEffects.h"
#include "music/Loudness.h"
#include "music/Renderer.h"
#include "music/ScoreParser.h"
#include "tools/DecodedOgg.h"
#include "tools/Seam.h"
#include "tools/Spectrum.h"
#include "velini/VelINIStream.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <ostream>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace Wirefall::Music {
namespace {

namespace fs = std::filesystem;

const fs::path DataFolder = WIREFALL_DATA_DIR;

// What a piece has to keep to besides what all of them do.
struct Piece {
    std::string Name;
    double LeastSeconds = 0;
    double MostSeconds = 0;
    std::set<std::string> Singers; ///< The instruments that have the melody.
};

std::ostream& operator<<(std::ostream& out, const Piece& piece) { return out << piece.Name; }

// A switch between these three waits for the end of the one that plays.
const std::vector<Piece> BoardPieces = {
    {"Gameplay", 32, 36, {"bell", "flute"}},
    {"Infection", 16, 24, {"reed"}},
    {"Water", 16, 24, {"lead", "second"}},
};

const std::vector<Piece> OtherPieces = {
    {"MenuCredits", 45, 90, {"bell", "flute"}},
    {"GameOver", 45, 90, {"bell", "flute"}},
};

fs::path OggPath(const std::string& name) { return DataFolder / "Music" / (name + ".ogg"); }

Sound HeardOf(const std::string& name) { return Testing::DecodeOgg(OggPath(name).string()); }

Score ScoreOf(const std::string& name) {
    const fs::path path = fs::path(WIREFALL_SCORE_DIR) / (name + ".score");
    std::ostringstream text;
    text << std::ifstream(path).rdbuf();
    return ParseScore(text.str(), path.string());
}

class ShippedMusic : public testing::TestWithParam<Piece> {
protected:
    const Sound Heard = HeardOf(GetParam().Name);
};

// What only the pieces of the board have to keep to.
class BoardMusic : public ShippedMusic {};

std::string NameOf(const testing::TestParamInfo<Piece>& piece) { return piece.param.Name; }

INSTANTIATE_TEST_SUITE_P(Board, ShippedMusic, testing::ValuesIn(BoardPieces), NameOf);
INSTANTIATE_TEST_SUITE_P(Others, ShippedMusic, testing::ValuesIn(OtherPieces), NameOf);
INSTANTIATE_TEST_SUITE_P(Pieces, BoardMusic, testing::ValuesIn(BoardPieces), NameOf);

// How alike two sounds of the same length are: 1 is the same, whatever the level.
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

// The encoder keeps noise only roughly: the hats of a piece are what parts it most from its score.
TEST_P(ShippedMusic, IsWhatItsScoreSays) {
    constexpr double Same = 0.995;
    const Sound rendered = Render(ScoreOf(GetParam().Name)).Mix;
    ASSERT_EQ(Heard.Frames(), rendered.Frames()) << "render-music has not been run";
    EXPECT_GT(Correlation(Heard.Left, rendered.Left), Same) << "render-music has not been run";
    EXPECT_GT(Correlation(Heard.Right, rendered.Right), Same) << "render-music has not been run";
}

// The length of a piece of the board is also the longest time that a switch away from it waits.
TEST_P(ShippedMusic, IsNeitherTooShortNorTooLong) {
    const double seconds = static_cast<double>(Heard.Frames()) / SampleRate;
    EXPECT_GE(seconds, GetParam().LeastSeconds);
    EXPECT_LE(seconds, GetParam().MostSeconds);
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
    EXPECT_LT(fs::file_size(OggPath(GetParam().Name)), 1'500'000U);
}

// A switch comes up to a frame late, so that the beginning of the old piece is heard once more.
TEST_P(ShippedMusic, BeginsNoNoteInTheFirstMoments) {
    constexpr double QuietSeconds = 0.05;
    const Score score = ScoreOf(GetParam().Name);
    const double barSeconds = score.QuartersPerBar * 60 / score.QuartersPerMinute;
    for (const Note& note : score.Notes) {
        const double fromSeam = std::fmod(note.Start + score.Upbeat, score.Bars) * barSeconds;
        EXPECT_GE(fromSeam, QuietSeconds) << score.Instruments[note.Instrument].Name;
    }
}

// The melody leaves a third of the bars to the others. A bar counts as sung when a note of the
// melody begins in it.
TEST_P(ShippedMusic, LeavesAThirdOfTheBarsWithoutMelody) {
    const Score score = ScoreOf(GetParam().Name);
    std::set<int> sung;
    for (const Note& note : score.Notes) {
        if (GetParam().Singers.contains(score.Instruments[note.Instrument].Name)) {
            sung.insert(static_cast<int>(note.Start));
        }
    }
    EXPECT_FALSE(sung.empty());
    EXPECT_LE(3 * sung.size(), 2 * static_cast<std::size_t>(score.Bars));
}

TEST_P(ShippedMusic, HasATenthOfItsPowerAbove700Hertz) {
    EXPECT_GE(Testing::RollOff(Testing::SpectrumOf(Heard), 0.9), 700);
}

// A switch cuts from the end of a piece, or from its first moments, to the beginning of another.
TEST_P(ShippedMusic, IsSilentWhereASwitchCuts) {
    constexpr float Faint = 0.00316F; // -50 dB
    constexpr std::size_t LateFrames = SampleRate / 20;
    constexpr std::size_t LastFrames = 64;
    for (const std::vector<float>* channel : {&Heard.Left, &Heard.Right}) {
        for (std::size_t i = 0; i < LateFrames; ++i) {
            ASSERT_LT(std::abs((*channel)[i]), Faint) << "frame " << i;
        }
        for (std::size_t i = channel->size() - LastFrames; i < channel->size(); ++i) {
            ASSERT_LT(std::abs((*channel)[i]), Faint) << "frame " << i;
        }
    }
}

// A switch lands in the first three seconds.
TEST_P(BoardMusic, BeginsAsLoudAsItGoesOn) {
    constexpr std::size_t Frames = std::size_t{3} * SampleRate;
    Sound beginning = Heard;
    beginning.Left.resize(Frames);
    beginning.Right.resize(Frames);
    EXPECT_GT(IntegratedLoudness(beginning), IntegratedLoudness(Heard) - 1.5);
}

TEST_P(BoardMusic, SingsAtOnce) {
    const Score score = ScoreOf(GetParam().Name);
    const bool sings = std::any_of(score.Notes.begin(), score.Notes.end(), [&](const Note& note) {
        return GetParam().Singers.contains(score.Instruments[note.Instrument].Name) &&
               note.Start < 1;
    });
    EXPECT_TRUE(sings) << "in the first bar";
}

TEST_P(BoardMusic, IsWide) {
    const double side = Testing::SideAgainstMid(Heard);
    EXPECT_GE(side, -10.5);
    EXPECT_LE(side, -7);
}

// The effects that come with every move on the board, each by its amplitude. Pieces that know
// nothing of them come to 0.017 to 0.027.
TEST_P(BoardMusic, IsSmoothAgainstTheEffects) {
    constexpr std::array Moves = {SoundEvent::CursorMove, SoundEvent::Rotate, SoundEvent::Place,
                                  SoundEvent::PacketDelivered};
    const Testing::Spectrum spectrum = Testing::SpectrumOf(Heard);
    double rough = 0;
    double whole = 0;
    for (const SfxSpec& effect : SfxSpecs) {
        if (std::find(Moves.begin(), Moves.end(), effect.Event) != Moves.end()) {
            const auto amplitude = static_cast<double>(effect.Amplitude);
            rough += amplitude * Testing::Roughness(spectrum, effect.FrequencyHz);
            whole += amplitude;
        }
    }
    EXPECT_LT(rough / whole, 0.0145);
}

TEST(PiecesOfTheBoard, DifferAtOnce) {
    std::vector<Testing::Spectrum> spectra(BoardPieces.size());
    std::transform(BoardPieces.begin(), BoardPieces.end(), spectra.begin(),
                   [](const Piece& piece) { return Testing::SpectrumOf(HeardOf(piece.Name)); });
    constexpr double ClearlyDecibels = 4;
    EXPECT_GT(Testing::Distance(spectra[0], spectra[1]), ClearlyDecibels) << "play, infection";
    EXPECT_GT(Testing::Distance(spectra[0], spectra[2]), ClearlyDecibels) << "play, danger";
    EXPECT_GT(Testing::Distance(spectra[1], spectra[2]), ClearlyDecibels) << "infection, danger";
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

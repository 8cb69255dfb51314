#include "music/SoundFile.h"

#include "music/Loudness.h"
#include "music/Renderer.h"
#include "music/ScoreParser.h"
#include "tools/DecodedOgg.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>

namespace Wirefall::Music {
namespace {

class SoundFile : public testing::Test {
protected:
    void SetUp() override { std::filesystem::create_directories(Folder); }
    void TearDown() override { std::filesystem::remove_all(Folder); }

    static std::string Contents(const std::string& path) {
        std::ostringstream text;
        text << std::ifstream(path, std::ios::binary).rdbuf();
        return text.str();
    }

    const std::string Folder = testing::TempDir() + "/wirefall-" +
                               testing::UnitTest::GetInstance()->current_test_info()->name();
    const Score Piece = ParseScore("instrument a\n pan 0.5\npattern p\n A4 - C5 E5\nsection s 2\n"
                                   " a p\nsong s\n",
                                   "test");
    const Sound Rendered = Render(Piece).Mix;
};

TEST_F(SoundFile, OggHasEveryFrame) {
    // Lengths around the encoder's blocks, besides a whole piece.
    for (const std::size_t frames : {1U, 63U, 64U, 1024U, 1025U, 4096U, 100000U, 176400U}) {
        Sound sound = Rendered;
        sound.Left.resize(frames);
        sound.Right.resize(frames);
        WriteOgg(Folder + "/a.ogg", sound, "Piece");
        EXPECT_EQ(Testing::DecodeOgg(Folder + "/a.ogg").Frames(), frames);
    }
}

TEST_F(SoundFile, OggSoundsLikeWhatWentIn) {
    WriteOgg(Folder + "/a.ogg", Rendered, "Piece");
    const Sound decoded = Testing::DecodeOgg(Folder + "/a.ogg");
    ASSERT_EQ(decoded.Frames(), Rendered.Frames());
    EXPECT_NEAR(IntegratedLoudness(decoded), IntegratedLoudness(Rendered), 0.2);
    double difference = 0;
    for (std::size_t i = 0; i < decoded.Frames(); ++i) {
        const auto left = static_cast<double>(decoded.Left[i] - Rendered.Left[i]);
        difference += left * left;
    }
    EXPECT_LT(difference / static_cast<double>(decoded.Frames()), 1e-4);
}

TEST_F(SoundFile, OggHasTheSameBytesEachTime) {
    WriteOgg(Folder + "/a.ogg", Rendered, "Piece");
    WriteOgg(Folder + "/b.ogg", Rendered, "Piece");
    EXPECT_GT(Contents(Folder + "/a.ogg").size(), 1000U);
    EXPECT_EQ(Contents(Folder + "/a.ogg"), Contents(Folder + "/b.ogg"));
}

TEST_F(SoundFile, WavHasHeaderAndSamples) {
    WriteWav(Folder + "/a.wav", Rendered);
    const std::string wav = Contents(Folder + "/a.wav");
    ASSERT_EQ(wav.size(), 44 + Rendered.Frames() * 8);
    EXPECT_EQ(wav.substr(0, 4), "RIFF");
    EXPECT_EQ(wav.substr(8, 8), "WAVEfmt ");
    EXPECT_EQ(wav.substr(24, 4), std::string("\x44\xAC\0\0", 4)) << "44100";
    EXPECT_EQ(wav.substr(36, 4), "data");
}

TEST_F(SoundFile, TellsThatItCannotWrite) {
    EXPECT_THROW(WriteOgg(Folder + "/missing/a.ogg", Rendered, "Piece"), std::runtime_error);
    EXPECT_THROW(WriteWav(Folder + "/missing/a.wav", Rendered), std::runtime_error);
    EXPECT_THROW(WriteOgg(Folder + "/a.ogg", Sound(), "Piece"), std::runtime_error);
}

} // namespace
} // namespace Wirefall::Music

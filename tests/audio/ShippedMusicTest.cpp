// The music that ships, whole and damaged.

#include "app/Game.h"
#include "audio/AudioEngine.h"
#include "audio/AudioSupport.h"
#include "audio/MixerFaults.h"
#include "audio/MusicPatterns.h"
#include "audio/MusicPlayer.h"
#include "game/GameApp.h"
#include "support/CapturedLog.h"
#include "support/TestHome.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace Wirefall {
namespace {

using Testing::Bytes;
using Testing::CapturedLog;

const std::filesystem::path DataPath = WIREFALL_DATA_DIR;

TEST(ShippedMusic, FillsEveryRoleWithoutARepair) {
    const Testing::TestHome home;
    const std::string base = DataPath.string() + "/";
    const Testing::ScopedBasePath data(base.c_str());
    const GameApp app;
    MusicRuntime music;
    {
        const CapturedLog log;
        ASSERT_TRUE(InitAudio(app, music));
        EXPECT_EQ(log.Messages(), std::vector<std::string>{});
    }
    const std::set<std::string> roles = {music.MenuPatternName, music.GameplayPatternName,
                                         music.GameOverPatternName, music.DangerPatternName,
                                         music.InfectionPatternName};
    EXPECT_EQ(roles.size(), 5U) << "each its own piece";
    for (const auto& pattern : music.Patterns) {
        EXPECT_TRUE(PlayMusicPattern(music, pattern.get(), 0));
        // Switches on the board wait for the end of a piece, and nobody waits for the others'.
        const bool awaited = IsInGameFamily(music, pattern->PatternName);
        EXPECT_GE(music.CurrentDurationMs, awaited ? 16000 : 45000) << pattern->PatternName;
        EXPECT_LE(music.CurrentDurationMs, awaited ? 36000 : 90000) << pattern->PatternName;
    }
    ShutdownAudio(music, false);
}

TEST(ShippedMusic, HasEveryPieceOfTheBuiltInPatterns) {
    const std::string base = DataPath.string() + "/";
    const Testing::ScopedBasePath data(base.c_str());
    Testing::MemoryEngine engine;
    velINI::velINIStream builtIn;
    BuildDefaultMusicDocument(builtIn);
    const CapturedLog log;
    EXPECT_TRUE(LoadMusicPatterns(builtIn, engine.Music));
    EXPECT_EQ(log.Messages(), std::vector<std::string>{});
    EXPECT_EQ(engine.Music.Patterns.size(), 5U);
}

TEST(ShippedMusic, AccompaniesAGame) {
    const Testing::TestHome home;
    const Testing::DataFolder folder;
    const std::string output = folder.Path() / "output.raw";
    const Testing::ScopedVariable driver("SDL_AUDIO_DRIVER", "disk");
    const Testing::ScopedVariable file("SDL_AUDIO_DISK_OUTPUT_FILE", output);
    const std::string base = DataPath.string() + "/";
    const Testing::ScopedBasePath data(base.c_str());
    Game game;
    ASSERT_TRUE(StartGame(game));
    const std::uintmax_t silence = std::filesystem::file_size(output);
    const MusicRuntime& music = game.Music;
    EXPECT_EQ(music.CurrentPatternName, music.MenuPatternName) << "before the first frame";
    EXPECT_TRUE(music.StartupFadeActive);
    game.App.VSyncActive = true; // No waits between the frames.
    const auto frameOn = [&game](AppScreen screen) {
        game.App.Screen = screen;
        RunFrame(game);
        return game.Music.CurrentPatternName;
    };
    EXPECT_EQ(frameOn(AppScreen::Credits), music.MenuPatternName);
    Testing::InstallInfectedRun(0);
    EXPECT_EQ(frameOn(AppScreen::Playing), music.GameplayPatternName);
    EXPECT_EQ(frameOn(AppScreen::Help), music.MenuPatternName);
    EXPECT_EQ(frameOn(AppScreen::Pause), music.GameplayPatternName);
    Testing::InstallInfectedRun(20);
    EXPECT_EQ(frameOn(AppScreen::Pause), music.GameplayPatternName) << "until it wraps";
    ASSERT_NE(music.RequestedPattern, nullptr);
    EXPECT_EQ(music.RequestedPattern->PatternName, music.InfectionPatternName);
    EXPECT_EQ(frameOn(AppScreen::GameOver), music.GameOverPatternName);
    EXPECT_TRUE(
        Testing::WaitUntil([&] { return std::filesystem::file_size(output) > silence + 100000; }));
    ShutdownGame(game);
    const Bytes played = Testing::ReadFileBytes(output);
    EXPECT_GT(std::ranges::count_if(played, [](std::uint8_t byte) { return byte != 0; }), 10000)
        << "there is something to hear";
}

// Where the pages of an Ogg file begin that have sound on them: those with a position other than 0
// (RFC 3533, section 6).
std::vector<std::size_t> SoundPages(const Bytes& ogg) {
    const std::string_view capture = "OggS";
    constexpr std::ptrdiff_t PositionOffset = 6;
    constexpr std::ptrdiff_t PositionBytes = 8;
    std::vector<std::size_t> pages;
    const auto pageFrom = [&](Bytes::const_iterator from) {
        return std::search(from, ogg.end(), capture.begin(), capture.end());
    };
    for (auto page = pageFrom(ogg.begin()); ogg.end() - page > PositionOffset + PositionBytes;
         page = pageFrom(page + 1)) {
        if (std::any_of(page + PositionOffset, page + PositionOffset + PositionBytes,
                        [](std::uint8_t byte) { return byte != 0; })) {
            pages.push_back(static_cast<std::size_t>(page - ogg.begin()));
        }
    }
    return pages;
}

class DamagedMusic : public testing::Test {
protected:
    // Whether the file loads. What loads also loops, at least for a second.
    bool Loads(const Bytes& content) {
        Testing::WriteFileBytes(Folder.Path() / "damaged.ogg", content);
        const CapturedLog quiet;
        const bool loaded = LoadMusicPatterns(
            Testing::DocumentOf("[Pattern.MENU]\nFileName=" + Folder.Relative("damaged.ogg")),
            Music);
        if (loaded) {
            UpdateMusic(App, Music);
            Engine.Play(44100);
            EXPECT_TRUE(MIX_TrackPlaying(Music.MusicTrack));
        }
        return loaded;
    }

    Testing::DataFolder Folder;
    Testing::MemoryEngine Engine;
    MusicRuntime& Music = Engine.Music;
    GameApp App;
    const Bytes Whole = Testing::ReadFileBytes(DataPath / "Music" / "Gameplay.ogg");
};

TEST_F(DamagedMusic, PlaysAsFarAsItIsThere) {
    ASSERT_GT(Whole.size(), 100000U);
    int loaded = 0;
    int refused = 0;
    for (std::size_t length = 0; length < Whole.size();
         length += length < 16384 ? 509 : Whole.size() / 20) {
        const bool loads =
            Loads(Bytes(Whole.begin(), Whole.begin() + static_cast<std::ptrdiff_t>(length)));
        ++(loads ? loaded : refused);
    }
    EXPECT_GT(loaded, 15);
    EXPECT_GT(refused, 5) << "without all of its headers and some sound it is none";
}

TEST_F(DamagedMusic, WithNothingButBrokenPagesIsRefused) {
    EXPECT_TRUE(Loads(Whole));
    const std::vector<std::size_t> pages = SoundPages(Whole);
    ASSERT_GT(pages.size(), 10U);
    // The headers stand, and so does the last page, which tells the length.
    Bytes broken = Whole;
    for (std::size_t i = pages.front() + 100; i < pages.back(); i += 64) {
        broken[i] ^= 0x55U;
    }
    Loads(broken);
    Bytes emptied = Whole;
    std::fill(emptied.begin() + static_cast<std::ptrdiff_t>(pages.front()), emptied.end(),
              std::uint8_t{0});
    EXPECT_FALSE(Loads(emptied));
}

TEST_F(DamagedMusic, WithABrokenPageAnywhereNeverHangs) {
    for (std::size_t place = 28; place < Whole.size(); place += Whole.size() / 40) {
        Bytes broken = Whole;
        broken[place] ^= 0xFFU;
        Loads(broken);
    }
    for (std::size_t place = 0; place < 12000; place += 331) {
        Bytes broken = Whole;
        broken[place] ^= 0xFFU;
        Loads(broken);
    }
}

} // namespace
} // namespace Wirefall

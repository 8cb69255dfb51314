#include "audio/MusicPatterns.h"

#include "audio/AudioSupport.h"
#include "support/CapturedLog.h"
#include "support/SdlAllocationLimit.h"

#include <SDL3/SDL_filesystem.h>
#include <gtest/gtest.h>

#include <utility>

namespace Wirefall {
namespace {

using Testing::Bytes;
using Testing::CapturedLog;
using Testing::WavFormat;

using Lines = std::vector<std::string>;

// --- Loading

class Patterns : public testing::Test {
protected:
    void SetUp() override {
        for (const char* const name : {"a.wav", "b.wav", "c.wav"}) {
            WriteTone(name, 1000);
        }
    }

    void WriteTone(const char* name, int frames, const WavFormat& format = {}) {
        Testing::WriteFileBytes(
            Folder.Path() / name,
            Testing::WavFile(format, Testing::Tone(format, frames, 440.0, 0.5F)));
    }

    std::string File(std::string_view name) const { return Folder.Relative(name); }
    std::string FullPath(std::string_view name) const { return (Folder.Path() / name).string(); }

    // A section with the file in the folder.
    std::string Section(const std::string& suffix, std::string_view file,
                        const std::string& more = {}) const {
        return "[Pattern." + suffix + "]\nFileName=" + File(file) + "\n" + more;
    }

    // With the roles of a new record.
    bool Load(const std::string& text) {
        const MusicRuntime fresh;
        Music.MenuPatternName = fresh.MenuPatternName;
        Music.GameplayPatternName = fresh.GameplayPatternName;
        Music.GameOverPatternName = fresh.GameOverPatternName;
        Music.DangerPatternName = fresh.DangerPatternName;
        Music.InfectionPatternName = fresh.InfectionPatternName;
        const CapturedLog log;
        const bool loaded = LoadMusicPatterns(Testing::DocumentOf(text), Music);
        Log = log.Messages();
        return loaded;
    }

    // What the roles log when they fall back to this pattern, but for those that `named` names.
    static Lines RoleRepairs(const std::string& fallback, const std::string& named = {}) {
        Lines lines;
        for (const auto& [label, name] : std::initializer_list<std::pair<const char*, const char*>>{
                 {"MenuPattern", "MENU"},
                 {"GameplayPattern", "GAMEPLAY"},
                 {"GameOverPattern", "GAMEOVER"},
                 {"DangerPattern", "DANGER"},
                 {"InfectionPattern", "INFECTION"}}) {
            if (named != name) {
                lines.push_back(std::string("Music pattern '") + label +
                                "' points to missing pattern '" + name + "'; using '" + fallback +
                                "' instead");
            }
        }
        return lines;
    }

    Lines Names() const { return Testing::NamesOf(Music.Patterns); }

    Testing::DataFolder Folder;
    Testing::MemoryEngine Engine;
    MusicRuntime& Music = Engine.Music;
    Lines Log;
};

TEST_F(Patterns, AreLoadedInTheOrderOfTheFile) {
    EXPECT_TRUE(Load("[Music]\n"
                     "MenuPattern=one\nGameplayPattern=two\nGameOverPattern=three\n"
                     "DangerPattern=one\nInfectionPattern=two\n" +
                     Section("two", "b.wav", "NextPatternName=one\n") + Section("one", "a.wav") +
                     Section("x", "c.wav", "PatternName=three\nNextPatternName=two\n")));
    EXPECT_EQ(Log, Lines{});
    ASSERT_EQ(Names(), (Lines{"two", "one", "three"}));
    EXPECT_EQ(Music.Patterns[0]->NextPatternName, "one");
    EXPECT_EQ(Music.Patterns[1]->NextPatternName, "one");
    EXPECT_EQ(Music.Patterns[2]->NextPatternName, "two");
    EXPECT_EQ(Music.Patterns[0]->ResolvedPath, FullPath("b.wav"));
    EXPECT_EQ(MIX_GetAudioDuration(Music.Patterns[0]->Audio.get()), 1000);
    EXPECT_EQ(Music.MenuPatternName, "one");
    EXPECT_EQ(Music.GameplayPatternName, "two");
    EXPECT_EQ(Music.GameOverPatternName, "three");
    EXPECT_EQ(Music.DangerPatternName, "one");
    EXPECT_EQ(Music.InfectionPatternName, "two");
}

TEST_F(Patterns, LoadingForgetsWhatWasThere) {
    ASSERT_TRUE(Load(Section("one", "a.wav")));
    Music.CurrentPatternName = "one";
    Music.PendingNextPatternName = "one";
    Music.RequestedPattern = Music.Patterns[0].get();
    Music.LastPositionFrames = 77;
    Music.CurrentDurationMs = 88;
    EXPECT_FALSE(Load("[Music]\n"));
    EXPECT_TRUE(Music.Patterns.empty());
    EXPECT_EQ(Music.CurrentPatternName, "");
    EXPECT_EQ(Music.PendingNextPatternName, "");
    EXPECT_EQ(Music.RequestedPattern, nullptr);
    EXPECT_EQ(Music.LastPositionFrames, -1);
    EXPECT_EQ(Music.CurrentDurationMs, 0);
}

TEST_F(Patterns, WithoutPatternsTheRolesStayAsTheyWereRead) {
    EXPECT_FALSE(Load("[Music]\nMenuPattern=NOPE\nGameplayPattern=\n"));
    EXPECT_EQ(Log, Lines{});
    EXPECT_EQ(Music.MenuPatternName, "NOPE");
    EXPECT_EQ(Music.GameplayPatternName, "");
    EXPECT_EQ(Music.GameOverPatternName, "GAMEOVER");
}

TEST_F(Patterns, WhateverIsNoPatternSectionIsPassedOver) {
    EXPECT_FALSE(Load("FileName=" + File("a.wav") + "\n[pattern.x]\nFileName=" + File("a.wav") +
                      "\n[Pattern]\nFileName=" + File("a.wav") + "\n[MyPattern.x]\nFileName=" +
                      File("a.wav") + "\n[VI_Global]\nFileName=" + File("a.wav") + "\n"));
    EXPECT_EQ(Log, Lines{});
}

TEST_F(Patterns, AnEmptySuffixWithoutANameIsPassedOverSilently) {
    EXPECT_FALSE(Load(Section("", "a.wav")));
    EXPECT_EQ(Log, Lines{});
    EXPECT_FALSE(Load(Section("x", "a.wav", "PatternName=\n")));
    EXPECT_EQ(Log, Lines{});
    EXPECT_TRUE(Load(Section("", "a.wav", "PatternName=named\n")));
    EXPECT_EQ(Names(), Lines{"named"});
}

TEST_F(Patterns, OnlyWhatIsClearlySwitchedOffIsLeftOut) {
    struct Case {
        const char* Text;
        bool Enabled;
    };
    for (const Case& c : std::vector<Case>{{"1", true},
                                           {"true", true},
                                           {"YES", true},
                                           {"On", true},
                                           {"0", false},
                                           {"False", false},
                                           {"NO", false},
                                           {"off", false},
                                           {"", true},
                                           {"2", true},
                                           {"nope", true},
                                           {"disabled", true}}) {
        EXPECT_EQ(Load(Section("x", "a.wav", std::string("Enabled=") + c.Text + "\n")), c.Enabled)
            << c.Text;
        EXPECT_EQ(Log, c.Enabled ? RoleRepairs("x") : Lines{});
    }
}

TEST_F(Patterns, WithoutAFileNameTheSectionIsPassedOverSilently) {
    EXPECT_FALSE(Load("[Pattern.x]\nNextPatternName=x\n[Pattern.y]\nFileName=\n"));
    EXPECT_EQ(Log, Lines{});
}

TEST_F(Patterns, OfTwoOfOneNameTheFirstWins) {
    EXPECT_TRUE(Load(Section("MENU", "a.wav") + Section("other", "b.wav", "PatternName=MENU\n")));
    ASSERT_EQ(Names(), Lines{"MENU"});
    EXPECT_EQ(Music.Patterns[0]->ResolvedPath, FullPath("a.wav"));
    ASSERT_FALSE(Log.empty());
    EXPECT_EQ(Log[0],
              "Duplicate music pattern name 'MENU' in section 'Pattern.other'; ignoring duplicate");
}

TEST_F(Patterns, WhenTheFirstOfTwoCannotBeLoadedTheSecondIsNoDuplicate) {
    EXPECT_TRUE(
        Load(Section("MENU", "missing.wav") + Section("other", "b.wav", "PatternName=MENU\n")));
    ASSERT_EQ(Names(), Lines{"MENU"});
    EXPECT_EQ(Music.Patterns[0]->ResolvedPath, FullPath("b.wav"));
    EXPECT_TRUE(Log[0].starts_with("MIX_LoadAudio failed for pattern 'MENU'"));
}

TEST_F(Patterns, ADisabledDuplicateIsReportedToo) {
    EXPECT_TRUE(Load(Section("MENU", "a.wav") +
                     Section("other", "b.wav", "PatternName=MENU\nEnabled=0\n")));
    EXPECT_EQ(Log[0],
              "Duplicate music pattern name 'MENU' in section 'Pattern.other'; ignoring duplicate");
}

TEST_F(Patterns, NamesAreComparedByteForByte) {
    EXPECT_TRUE(Load(Section("menu", "a.wav") + Section("MENU", "b.wav")));
    EXPECT_EQ(Names(), (Lines{"menu", "MENU"}));
    EXPECT_EQ(FindMusicPattern(Music.Patterns, "Menu"), nullptr);
    EXPECT_EQ(FindMusicPattern(Music.Patterns, "MENU"), Music.Patterns[1].get());
    EXPECT_EQ(FindMusicPattern(Music.Patterns, ""), nullptr);
    Music.Patterns.emplace_back();
    std::swap(Music.Patterns[0], Music.Patterns[2]);
    EXPECT_EQ(FindMusicPattern(Music.Patterns, "menu"), Music.Patterns[2].get())
        << "a gap in the list is passed over";
}

TEST_F(Patterns, UnsafeFileNamesAreNotOpened) {
    for (const std::string& path : std::vector<std::string>{
             "C:/x.ogg", "a/../b.ogg", "/x.ogg", "..", "./x.ogg", "a/.", "x.ogg:stream",
             "../" + File("a.wav"), (Folder.Path() / "a.wav").string()}) {
        EXPECT_FALSE(Load("[Pattern.x]\nFileName=" + path + "\n"));
        EXPECT_EQ(Log, Lines{"Music pattern 'x' has unsafe FileName '" + path + "'; skipping"});
    }
}

TEST_F(Patterns, EmptySegmentsOfAPathAreSafe) {
    EXPECT_TRUE(Load(Section("MENU", "/a.wav")));
    EXPECT_EQ(Music.Patterns[0]->ResolvedPath, SDL_GetBasePath() + File("/a.wav"));
    EXPECT_EQ(Log, RoleRepairs("MENU", "MENU"));
}

// --- Fades

TEST_F(Patterns, FadesAreClampedOrStay) {
    struct Case {
        const char* Text;
        std::int32_t Stored;
    };
    for (const Case& c : std::vector<Case>{{"99999", 5000},
                                           {"5001", 5000},
                                           {"5000", 5000},
                                           {"1", 1},
                                           {"0", 0},
                                           {"-1", 0},
                                           {"-2147483648", 0},
                                           {"abc", 360},
                                           {"+5", 360},
                                           {"", 360},
                                           {"5.5", 360},
                                           {"2147483648", 360}}) {
        Music.FadeInMs = 360;
        Music.FadeOutMs = 360;
        Load(std::string("[Music]\nFadeInMs=") + c.Text + "\n");
        EXPECT_EQ(Music.FadeInMs, c.Stored) << c.Text;
        EXPECT_EQ(Music.FadeOutMs, 360);
        Music.FadeInMs = 360;
        Load(std::string("[Music]\nFadeOutMs=") + c.Text + "\n");
        EXPECT_EQ(Music.FadeInMs, 360);
        EXPECT_EQ(Music.FadeOutMs, c.Stored) << c.Text;
    }
}

TEST_F(Patterns, FadesThatAreNotNamedStay) {
    Music.FadeInMs = 120;
    Music.FadeOutMs = 0;
    Load("[Music]\nMenuPattern=x\n");
    EXPECT_EQ(Music.FadeInMs, 120);
    EXPECT_EQ(Music.FadeOutMs, 0);
}

// --- Repair

TEST_F(Patterns, AMissingMenuFallsToTheFirstAndTheOthersFollow) {
    EXPECT_TRUE(Load("[Music]\nMenuPattern=NOPE\nGameplayPattern=ALSO_NOPE\nDangerPattern=\n" +
                     Section("first", "a.wav") + Section("GAMEOVER", "b.wav") +
                     Section("INFECTION", "c.wav")));
    EXPECT_EQ(Music.MenuPatternName, "first");
    EXPECT_EQ(Music.GameplayPatternName, "first");
    EXPECT_EQ(Music.GameOverPatternName, "GAMEOVER");
    EXPECT_EQ(Music.DangerPatternName, "first");
    EXPECT_EQ(Music.InfectionPatternName, "INFECTION");
    EXPECT_EQ(Log,
              (Lines{"Music pattern 'MenuPattern' points to missing pattern 'NOPE'; using 'first' "
                     "instead",
                     "Music pattern 'GameplayPattern' points to missing pattern 'ALSO_NOPE'; using "
                     "'first' instead",
                     "Music pattern 'DangerPattern' points to missing pattern ''; using 'first' "
                     "instead"}));
}

TEST_F(Patterns, OtherRolesFallToTheMenuAndNotToTheFirst) {
    EXPECT_TRUE(Load(Section("first", "a.wav") + Section("MENU", "b.wav")));
    EXPECT_EQ(Music.MenuPatternName, "MENU");
    EXPECT_EQ(Music.GameplayPatternName, "MENU");
    EXPECT_EQ(Log, RoleRepairs("MENU", "MENU"));
}

TEST_F(Patterns, ASuccessorThatDidNotLoadBecomesALoop) {
    EXPECT_TRUE(Load(Section("MENU", "a.wav", "NextPatternName=B\n") + Section("B", "missing.wav") +
                     Section("C", "c.wav", "NextPatternName=\n")));
    ASSERT_EQ(Names(), (Lines{"MENU", "C"}));
    EXPECT_EQ(Music.Patterns[0]->NextPatternName, "MENU");
    EXPECT_EQ(Music.Patterns[1]->NextPatternName, "C");
    ASSERT_EQ(Log.size(), 7U);
    EXPECT_EQ(Log[5], "Music pattern 'MENU' has missing NextPatternName 'B'; using self loop");
    EXPECT_EQ(Log[6], "Music pattern 'C' has missing NextPatternName ''; using self loop");
}

TEST_F(Patterns, ARoleThatIsThereIsNotTouched) {
    ASSERT_TRUE(Load(Section("MENU", "a.wav")));
    const CapturedLog log;
    std::string name = "MENU";
    RepairPatternReference(Music, name, "MenuPattern", "other");
    EXPECT_EQ(name, "MENU");
    EXPECT_EQ(log.Messages(), Lines{});
    name.clear();
    RepairPatternReference(Music, name, "MenuPattern", "MENU");
    EXPECT_EQ(name, "MENU");
    EXPECT_EQ(log.Messages(), Lines{"Music pattern 'MenuPattern' points to missing pattern ''; "
                                    "using 'MENU' instead"});
}

// --- Audio that cannot be played

class BadAudio : public Patterns {
protected:
    void Write(const char* name, const Bytes& content) {
        Testing::WriteFileBytes(Folder.Path() / name, content);
    }

    // Whether the file counts as failed, with everything else as it should be then.
    bool IsRefused(const char* name) {
        const bool loaded = Load(Section("bad", name) + Section("MENU", "a.wav"));
        EXPECT_TRUE(loaded);
        const std::string expected = "MIX_LoadAudio failed for pattern 'bad' (configured='" +
                                     File(name) + "', resolved='" + FullPath(name) + "'): ";
        const bool refused = Names() == Lines{"MENU"};
        if (refused) {
            EXPECT_TRUE(Log[0].starts_with(expected)) << Log[0];
            EXPECT_GT(Log[0].size(), expected.size()) << "with a reason";
        } else {
            EXPECT_EQ(Log, RoleRepairs("MENU", "MENU"));
        }
        return refused;
    }

    // The file plays on and on: its first seconds have sound in them.
    bool Plays(const char* name) {
        EXPECT_FALSE(IsRefused(name));
        const MusicPattern* const pattern = FindMusicPattern(Music.Patterns, "bad");
        if (pattern == nullptr) {
            return false;
        }
        MIX_SetTrackAudio(Music.MusicTrack, pattern->Audio.get());
        const SDL_PropertiesID options = SDL_CreateProperties();
        SDL_SetNumberProperty(options, MIX_PROP_PLAY_LOOPS_NUMBER, -1);
        MIX_PlayTrack(Music.MusicTrack, options);
        SDL_DestroyProperties(options);
        Engine.Play(44100);
        return Testing::PeakOf(Engine.Play(44100)) > 0.1F && MIX_TrackPlaying(Music.MusicTrack);
    }
};

TEST_F(BadAudio, MissingFilesAreSkipped) { EXPECT_TRUE(IsRefused("missing.wav")); }

TEST_F(BadAudio, FoldersAreSkipped) {
    std::filesystem::create_directory(Folder.Path() / "folder.wav");
    EXPECT_TRUE(IsRefused("folder.wav"));
}

TEST_F(BadAudio, EmptyFilesAreSkipped) {
    Write("bad.wav", {});
    EXPECT_TRUE(IsRefused("bad.wav"));
}

TEST_F(BadAudio, TextIsSkipped) {
    Write("bad.ogg", Testing::BytesOf("This is the sound of text, all of it, to the very end.\n"));
    EXPECT_TRUE(IsRefused("bad.ogg"));
}

TEST_F(BadAudio, NoiseIsSkipped) {
    Bytes noise(50000);
    std::uint32_t state = 1;
    for (std::uint8_t& byte : noise) {
        state = state * 1664525U + 1013904223U;
        byte = static_cast<std::uint8_t>(state >> 24U);
    }
    Write("bad.ogg", noise);
    EXPECT_TRUE(IsRefused("bad.ogg"));
}

TEST_F(BadAudio, SilenceOfNoLengthIsSkipped) {
    // Looping it would never come to its first sample.
    WriteTone("bad.wav", 0);
    EXPECT_TRUE(IsRefused("bad.wav"));
}

TEST_F(BadAudio, ASingleFrameIsMusicEnough) {
    Write("bad.wav", Testing::WavFile({}, std::vector<float>{0.5F, 0.5F}));
    EXPECT_TRUE(Plays("bad.wav"));
}

// Shorter than what a device asks for at a time, in one block and in several.
TEST_F(BadAudio, AFewFramesOfCompressedMusicAreEnough) {
    for (const WavFormat& format : std::vector<WavFormat>{{44100, 2}, {8000, 2}, {192000, 6}}) {
        for (const unsigned blockFrames : {16U, 192U, 4096U}) {
            for (const int frames : {1, 2, 16, 17, 100, 441, 1000, 1323, 5000}) {
                const std::vector<float> samples(static_cast<std::size_t>(frames * format.Channels),
                                                 0.5F);
                Testing::WriteFlacFile(Folder.Path() / "short.flac", format, samples, blockFrames);
                EXPECT_TRUE(Plays("short.flac"))
                    << frames << " frames at " << format.Rate << " in blocks of " << blockFrames;
            }
        }
    }
}

// The mixer's loop does not get on with as little as that.
TEST_F(BadAudio, ASingleSampleOfCompressedMusicIsSkipped) {
    for (const int rate : {22050, 44100, 48000}) {
        Testing::WriteFlacFile(Folder.Path() / "short.flac", {rate, 1}, std::vector{0.5F}, 16);
        EXPECT_TRUE(IsRefused("short.flac")) << rate;
    }
}

TEST_F(BadAudio, CompressedMusicOfNoLengthIsSkipped) {
    Testing::WriteFlacFile(Folder.Path() / "empty.flac", {}, {}, 4096);
    EXPECT_TRUE(IsRefused("empty.flac"));
}

TEST_F(BadAudio, UnusualRatesAndChannelsPlay) {
    for (const WavFormat& format : std::vector<WavFormat>{{8000, 1},
                                                          {11025, 2},
                                                          {22050, 4},
                                                          {44100, 6},
                                                          {48000, 8},
                                                          {96000, 1},
                                                          {192000, 2},
                                                          {12345, 3},
                                                          {100, 1}}) {
        WriteTone("bad.wav", 5000, format);
        EXPECT_TRUE(Plays("bad.wav")) << format.Rate << " Hz, " << format.Channels;
    }
}

TEST_F(BadAudio, ImpossibleFormatsNeverHang) {
    for (const WavFormat& format : std::vector<WavFormat>{
             {0, 2}, {-1, 2}, {44100, 0}, {44100, 9}, {44100, 255}, {2000000000, 2}}) {
        WriteTone("bad.wav", 100, format);
        if (!IsRefused("bad.wav")) {
            MIX_SetTrackAudio(Music.MusicTrack,
                              FindMusicPattern(Music.Patterns, "bad")->Audio.get());
            MIX_PlayTrack(Music.MusicTrack, 0);
            Engine.Play(1000);
        }
    }
}

TEST_F(BadAudio, AFileCutAnywhereIsSkippedOrPlaysWhatIsLeft) {
    const Bytes whole = Testing::WavFile({}, Testing::Tone({}, 400, 440.0, 0.5F));
    for (std::size_t length = 0; length < whole.size(); length += length < 60 ? 1 : 97) {
        Write("bad.wav", Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length)));
        if (!IsRefused("bad.wav")) {
            EXPECT_TRUE(Plays("bad.wav")) << length;
        }
    }
}

TEST_F(BadAudio, WithoutMemoryThePatternIsSkipped) {
    const velINI::velINIStream document = Testing::DocumentOf(Section("MENU", "a.wav"));
    const CapturedLog log;
    {
        const Testing::SdlAllocationLimit limit(64);
        EXPECT_FALSE(LoadMusicPatterns(document, Music));
    }
    ASSERT_EQ(log.Messages().size(), 1U);
    EXPECT_TRUE(log.Messages()[0].starts_with("MIX_LoadAudio failed for pattern 'MENU'"));
}

// --- Strange pattern files

TEST_F(Patterns, BinaryAndEmptyFilesHaveNoPatterns) {
    EXPECT_FALSE(Load(""));
    EXPECT_FALSE(Load(std::string(1000, '\0')));
    EXPECT_FALSE(Load("\x7F"
                      "ELF\x02\x01\x01 [[[[ ==== ;;;; \"\"\"\" \n\n\n]]]]"));
    EXPECT_EQ(Music.MenuPatternName, "MENU");
}

TEST_F(Patterns, ThousandsOfSectionsAreRead) {
    std::string text = "[Music]\nMenuPattern=P1999\n";
    for (int i = 0; i < 2000; ++i) {
        text += Section("P" + std::to_string(i), "a.wav",
                        "NextPatternName=P" + std::to_string((i + 1) % 2000) + "\n");
    }
    EXPECT_TRUE(Load(text));
    EXPECT_EQ(Music.Patterns.size(), 2000U);
    EXPECT_EQ(Music.MenuPatternName, "P1999");
    EXPECT_EQ(Log, RoleRepairs("P1999", "MENU"));
}

TEST_F(Patterns, NamesMayBeAnyText) {
    const std::string name = "M\u00fcnze %s%n";
    const std::string longName(3000, 'x');
    EXPECT_TRUE(Load(
        "[Music]\nMenuPattern=\"" + name + "\"\n" +
        Section("x", "a.wav", "PatternName=\"" + name + "\"\nNextPatternName=" + longName + "\n") +
        Section(longName, "b.wav")));
    EXPECT_EQ(Names(), (Lines{name, longName}));
    EXPECT_EQ(Log, RoleRepairs(name, "MENU"));
}

} // namespace
} // namespace Wirefall

#include "game/GameApp.h"
#include "options/AudioPage.h"
#include "support/CapturedOutput.h"
#include "support/SameApp.h"
#include "words/LanguageFiles.h"
#include "words/Localization.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <utility>
#include <vector>

namespace Wirefall {

namespace {

using Testing::SameApp;

constexpr std::int32_t MusicRow = 3;
constexpr std::int32_t SfxRow = 4;
constexpr std::int32_t LanguageRow = 5;

// No language files lie beside this program, so the built-in languages serve: English and German.
class AudioEditTest : public testing::Test {
public:
    AudioEditTest(const AudioEditTest&) = delete;
    AudioEditTest(AudioEditTest&&) = delete;
    AudioEditTest& operator=(const AudioEditTest&) = delete;
    AudioEditTest& operator=(AudioEditTest&&) = delete;
    ~AudioEditTest() override { LocalizationCatalog = {}; }

protected:
    AudioEditTest() {
        const Testing::CapturedOutput quiet; // velINI tells there of files that are not
        LoadLocalization(App);
        BeginAudioEdit(App);
    }
    void Adjust(std::int32_t row, std::int32_t direction) {
        App.Rows.AudioRow = row;
        AdjustAudioRow(App, direction);
    }

    void Apply() {
        const Testing::CapturedOutput quiet;
        ApplyAudioEdit(App);
    }

    GameApp App;
};

TEST_F(AudioEditTest, BeginsWithTheLiveOptions) {
    App.MasterVolume = 10;
    App.MusicVolume = 20;
    App.SfxVolume = 30;
    App.MusicEnabled = false;
    App.SfxEnabled = false;
    App.Language = " D e ";
    BeginAudioEdit(App);
    EXPECT_EQ(App.AudioEdit.MasterVolume, 10);
    EXPECT_EQ(App.AudioEdit.MusicVolume, 20);
    EXPECT_EQ(App.AudioEdit.SfxVolume, 30);
    EXPECT_FALSE(App.AudioEdit.MusicEnabled);
    EXPECT_FALSE(App.AudioEdit.SfxEnabled);
    EXPECT_EQ(App.AudioEdit.Language, "de");
    EXPECT_TRUE(App.AudioEdit.Valid);
    EXPECT_FALSE(AudioEditIsDirty(App)) << "two ways to write one language";
}

TEST_F(AudioEditTest, EachSettingMakesItDirty) {
    for (std::int32_t row = 0; row <= LanguageRow; ++row) {
        BeginAudioEdit(App);
        ASSERT_FALSE(AudioEditIsDirty(App));
        Adjust(row, -1);
        EXPECT_TRUE(AudioEditIsDirty(App)) << row;
        App.AudioEdit.Valid = false;
        EXPECT_FALSE(AudioEditIsDirty(App)) << "never while there is none";
    }
}

struct VolumeStep {
    std::int32_t From;
    std::int32_t Direction;
    std::int32_t To;
};

TEST_F(AudioEditTest, VolumesGoByFiveFrom0To100) {
    for (const VolumeStep& step : std::vector<VolumeStep>{{50, 1, 55},
                                                          {50, -1, 45},
                                                          {97, 1, 100},
                                                          {3, -1, 0},
                                                          {100, 1, 100},
                                                          {0, -1, 0},
                                                          {95, 1, 100},
                                                          {5, -1, 0}}) {
        for (std::int32_t row = 0; row < 3; ++row) {
            App.AudioEdit.MasterVolume = step.From;
            App.AudioEdit.MusicVolume = step.From;
            App.AudioEdit.SfxVolume = step.From;
            Adjust(row, step.Direction);
            EXPECT_EQ(App.AudioEdit.MasterVolume, row == 0 ? step.To : step.From);
            EXPECT_EQ(App.AudioEdit.MusicVolume, row == 1 ? step.To : step.From);
            EXPECT_EQ(App.AudioEdit.SfxVolume, row == 2 ? step.To : step.From);
        }
    }
}

TEST_F(AudioEditTest, SwitchesToggleEitherWay) {
    for (const std::int32_t direction : {1, -1}) {
        BeginAudioEdit(App);
        Adjust(MusicRow, direction);
        EXPECT_FALSE(App.AudioEdit.MusicEnabled);
        EXPECT_TRUE(App.AudioEdit.SfxEnabled);
        Adjust(SfxRow, direction);
        EXPECT_FALSE(App.AudioEdit.SfxEnabled);
        Adjust(MusicRow, direction);
        EXPECT_TRUE(App.AudioEdit.MusicEnabled);
    }
}

TEST_F(AudioEditTest, LanguagesRunInACircle) {
    for (const std::int32_t direction : {1, -1}) {
        BeginAudioEdit(App);
        Adjust(LanguageRow, direction);
        EXPECT_EQ(App.AudioEdit.Language, "de");
        Adjust(LanguageRow, direction);
        EXPECT_EQ(App.AudioEdit.Language, "en");
    }
}

TEST_F(AudioEditTest, TheOtherRowsAreNoSettings) {
    for (const std::int32_t row : {6, 7, 8, 9, 10, -1}) {
        GameApp expected = App;
        expected.Rows.AudioRow = row;
        Adjust(row, 1);
        EXPECT_TRUE(SameApp(expected, App));
    }
}

TEST_F(AudioEditTest, AdjustingLeavesTheLiveOptionsAlone) {
    GameApp expected = App;
    for (std::int32_t row = 0; row <= LanguageRow; ++row) {
        Adjust(row, -1);
    }
    expected.Rows.AudioRow = LanguageRow;
    expected.AudioEdit = {{.MasterVolume = 95,
                           .MusicVolume = 45,
                           .SfxVolume = 70,
                           .MusicEnabled = false,
                           .SfxEnabled = false},
                          {"de"},
                          true};
    EXPECT_TRUE(SameApp(expected, App));
}

TEST_F(AudioEditTest, TheFactorySettingsLeaveTheLanguageAsItIs) {
    App.AudioEdit = {{.MasterVolume = 1,
                      .MusicVolume = 2,
                      .SfxVolume = 3,
                      .MusicEnabled = false,
                      .SfxEnabled = false},
                     {"de"},
                     true};
    ResetAudioEdit(App);
    EXPECT_EQ(App.AudioEdit.MasterVolume, 100);
    EXPECT_EQ(App.AudioEdit.MusicVolume, 50);
    EXPECT_EQ(App.AudioEdit.SfxVolume, 75);
    EXPECT_TRUE(App.AudioEdit.MusicEnabled);
    EXPECT_TRUE(App.AudioEdit.SfxEnabled);
    EXPECT_EQ(App.AudioEdit.Language, "de");
    EXPECT_FALSE(App.OptionsDirty);
}

TEST_F(AudioEditTest, ApplyingMakesTheChangesLive) {
    App.AudioEdit.MasterVolume = 15;
    App.AudioEdit.MusicVolume = 25;
    App.AudioEdit.SfxVolume = 35;
    App.AudioEdit.MusicEnabled = false;
    App.AudioEdit.SfxEnabled = false;
    GameApp expected = App;
    expected.MasterVolume = 15;
    expected.MusicVolume = 25;
    expected.SfxVolume = 35;
    expected.MusicEnabled = false;
    expected.SfxEnabled = false;
    expected.OptionsDirty = true;
    Apply();
    EXPECT_TRUE(SameApp(expected, App));
    EXPECT_FALSE(AudioEditIsDirty(App));
}

TEST_F(AudioEditTest, ApplyingNothingSavesNothing) {
    const GameApp before = App;
    App.AudioEdit.Language = " EN";
    Apply();
    EXPECT_TRUE(SameApp(before, App)) << "and the edit has begun anew";
}

TEST_F(AudioEditTest, ALanguageIsLoadedWhenItIsApplied) {
    LocalizationCatalog.Texts["Test.Key"] = "OLD";
    Adjust(LanguageRow, 1);
    EXPECT_EQ(LocalizationCatalog.ActiveLanguage, "en");
    Apply();
    EXPECT_EQ(LocalizationCatalog.ActiveLanguage, "de");
    EXPECT_EQ(App.Language, "de");
    EXPECT_EQ(App.AudioEdit.Language, "de");
    EXPECT_EQ(LocalizationCatalog.Texts.count("Test.Key"), 0U) << "the catalog is a new one";
    EXPECT_TRUE(App.OptionsDirty);
}

TEST_F(AudioEditTest, WithoutAChangeOfLanguageTheCatalogStays) {
    LocalizationCatalog.Texts["Test.Key"] = "KEPT";
    Adjust(0, -1);
    App.Language = "E n";
    App.AudioEdit.Language = " EN"; // two ways to write one language
    Apply();
    EXPECT_EQ(LocalizationCatalog.Texts.count("Test.Key"), 1U);
    EXPECT_EQ(App.MasterVolume, 95);
    EXPECT_EQ(App.Language, "en");
}

// The list of languages can have changed since: the one that was really loaded is what counts.
TEST_F(AudioEditTest, AnUnknownLanguageBecomesTheDefaultOne) {
    App.Language = "de";
    BeginAudioEdit(App);
    App.AudioEdit.Language = "xx";
    Apply();
    EXPECT_EQ(App.Language, "en");
    EXPECT_EQ(App.AudioEdit.Language, "en");
    EXPECT_TRUE(App.OptionsDirty);
}

} // namespace

} // namespace Wirefall

#include "options/AudioPage.h"

#include "draw/Metrics.h"
#include "words/LanguageFiles.h"
#include "words/Localization.h"

#include <algorithm>
#include <string>

namespace Wirefall {

namespace {

constexpr std::int32_t VolumeStep = 5;

// The working copy, or the live options while there is none.

const AudioSettings& ShownAudio(const GameApp& app) {
    return app.AudioEdit.Valid ? static_cast<const AudioSettings&>(app.AudioEdit) : app;
}

const LanguageSetting& ShownLanguage(const GameApp& app) {
    return app.AudioEdit.Valid ? static_cast<const LanguageSetting&>(app.AudioEdit) : app;
}

template <std::int32_t AudioSettings::*Volume>
std::string VolumeText(const PageView& view, std::int32_t /*row*/) {
    return PercentText(static_cast<float>(ShownAudio(view.App).*Volume) / 100.0F);
}

template <std::int32_t AudioSettings::*Volume>
void ChangeVolume(const PageContext& context, std::int32_t direction) {
    std::int32_t& volume = context.App.AudioEdit.*Volume;
    volume = std::clamp(volume + VolumeStep * direction, 0, MaxVolume);
}

template <bool AudioSettings::*Flag>
std::string FlagText(const PageView& view, std::int32_t /*row*/) {
    return OnOffText(ShownAudio(view.App).*Flag);
}

template <bool AudioSettings::*Flag>
void Toggle(const PageContext& context, std::int32_t /*direction*/) {
    bool& flag = context.App.AudioEdit.*Flag;
    flag = !flag;
}

std::string LanguageText(const PageView& view, std::int32_t /*row*/) {
    return LanguageDisplayName(ShownLanguage(view.App).Language);
}

void ChangeLanguage(const PageContext& context, std::int32_t direction) {
    CycleLanguage(context.App.AudioEdit.Language, direction);
}

void Prepare(const PageContext& context) {
    if (!context.App.AudioEdit.Valid) {
        BeginAudioEdit(context.App);
    }
}

void Reset(const PageContext& context) { ResetAudioEdit(context.App); }
void Apply(const PageContext& context) { ApplyAudioEdit(context.App); }
void Revert(const PageContext& context) { BeginAudioEdit(context.App); }

void Leave(const PageContext& context) {
    GameApp& app = context.App;
    if (AudioEditIsDirty(app)) {
        BeginAudioEdit(app);
    }
    app.AudioEdit.Valid = false;
    app.OptionsPage = OptionsPage::Root;
}

constexpr auto Rows = JoinRows(std::to_array<PageRow>({
                                   {.Label = {"Options.Audio.MasterVolume", "MASTER VOLUME"},
                                    .Value = VolumeText<&AudioSettings::MasterVolume>,
                                    .Adjust = ChangeVolume<&AudioSettings::MasterVolume>},
                                   {.Label = {"Options.Audio.MusicVolume", "MUSIC VOLUME"},
                                    .Value = VolumeText<&AudioSettings::MusicVolume>,
                                    .Adjust = ChangeVolume<&AudioSettings::MusicVolume>},
                                   {.Label = {"Options.Audio.SfxVolume", "SFX VOLUME"},
                                    .Value = VolumeText<&AudioSettings::SfxVolume>,
                                    .Adjust = ChangeVolume<&AudioSettings::SfxVolume>},
                                   {.Label = {"Options.Audio.Music", "MUSIC"},
                                    .Value = FlagText<&AudioSettings::MusicEnabled>,
                                    .Adjust = Toggle<&AudioSettings::MusicEnabled>,
                                    .Confirm = StepOn<Toggle<&AudioSettings::MusicEnabled>>},
                                   {.Label = {"Options.Audio.Sfx", "SFX"},
                                    .Value = FlagText<&AudioSettings::SfxEnabled>,
                                    .Adjust = Toggle<&AudioSettings::SfxEnabled>,
                                    .Confirm = StepOn<Toggle<&AudioSettings::SfxEnabled>>},
                                   {.Label = {"Options.Audio.Language", "LANGUAGE"},
                                    .Value = LanguageText,
                                    .Adjust = ChangeLanguage,
                                    .Confirm = StepOn<ChangeLanguage>},
                               }),
                               ClosingRows(Do<Reset>, Do<Apply>, Do<Revert>, Do<Leave>));

} // namespace

constinit const PageTable AudioPage = {
    .Heading = {"Options.Section.Audio", "AUDIO"},
    .Row = &OptionsRows::AudioRow,
    .Rows = [](const GameApp& /*app*/) -> std::span<const PageRow> { return Rows; },
    .Hints = ValuePageHints,
    .Prepare = Prepare,
    .Back = Leave,
};

void BeginAudioEdit(GameApp& app) {
    app.AudioEdit = {
        static_cast<const AudioSettings&>(app), {NormalizeLanguageCode(app.Language)}, true};
}

bool AudioEditIsDirty(const GameApp& app) {
    const PendingAudio& edit = app.AudioEdit;
    return edit.Valid &&
           (static_cast<const AudioSettings&>(edit) != static_cast<const AudioSettings&>(app) ||
            NormalizeLanguageCode(edit.Language) != NormalizeLanguageCode(app.Language));
}

void AdjustAudioRow(GameApp& app, std::int32_t direction) {
    AdjustSelectedRow(AudioPage, {app, nullptr, nullptr}, direction);
}

void ResetAudioEdit(GameApp& app) { static_cast<AudioSettings&>(app.AudioEdit) = {}; }

void ApplyAudioEdit(GameApp& app) {
    if (AudioEditIsDirty(app)) {
        const std::string before = NormalizeLanguageCode(app.Language);
        static_cast<AudioSettings&>(app) = static_cast<const AudioSettings&>(app.AudioEdit);
        app.Language = NormalizeLanguageCode(app.AudioEdit.Language);
        if (app.Language != before) {
            LoadLocalization(app);
        }
        app.OptionsDirty = true;
    }
    BeginAudioEdit(app);
}

} // namespace Wirefall

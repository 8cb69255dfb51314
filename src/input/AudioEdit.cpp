#include "input/AudioEdit.h"

#include "app/GameApp.h"
#include "ui/LanguageFiles.h"
#include "ui/Localization.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>

namespace Wirefall {

namespace {

constexpr std::int32_t VolumeStep = 5;

// What the page edits besides the language, in the options and in the working copy.

struct VolumePair {
    std::int32_t GameOptions::*Live;
    std::int32_t PendingAudio::*Pending;
};

constexpr std::array<VolumePair, 3> Volumes = {{
    {&GameOptions::MasterVolume, &PendingAudio::MasterVolume},
    {&GameOptions::MusicVolume, &PendingAudio::MusicVolume},
    {&GameOptions::SfxVolume, &PendingAudio::SfxVolume},
}};

struct SwitchPair {
    bool GameOptions::*Live;
    bool PendingAudio::*Pending;
};

constexpr std::array<SwitchPair, 2> Switches = {{
    {&GameOptions::MusicEnabled, &PendingAudio::MusicEnabled},
    {&GameOptions::SfxEnabled, &PendingAudio::SfxEnabled},
}};

void CopyToPending(const GameOptions& options, PendingAudio& pending) {
    for (const VolumePair& volume : Volumes) {
        pending.*volume.Pending = options.*volume.Live;
    }
    for (const SwitchPair& flag : Switches) {
        pending.*flag.Pending = options.*flag.Live;
    }
}

void CopyToLive(const PendingAudio& pending, GameOptions& options) {
    for (const VolumePair& volume : Volumes) {
        options.*volume.Live = pending.*volume.Pending;
    }
    for (const SwitchPair& flag : Switches) {
        options.*flag.Live = pending.*flag.Pending;
    }
}

template <std::int32_t PendingAudio::*Volume>
void ChangeVolume(PendingAudio& pending, std::int32_t direction) {
    pending.*Volume = std::clamp(pending.*Volume + VolumeStep * direction, 0, MaxVolume);
}

template <bool PendingAudio::*Flag>
void Toggle(PendingAudio& pending, std::int32_t /*direction*/) {
    pending.*Flag = !(pending.*Flag);
}

void ChangeLanguage(PendingAudio& pending, std::int32_t direction) {
    CycleLanguage(pending.Language, direction);
}

using Adjustment = void (*)(PendingAudio& pending, std::int32_t direction);

// By row.
constexpr std::array<Adjustment, 6> Adjustments = {
    ChangeVolume<&PendingAudio::MasterVolume>, ChangeVolume<&PendingAudio::MusicVolume>,
    ChangeVolume<&PendingAudio::SfxVolume>,    Toggle<&PendingAudio::MusicEnabled>,
    Toggle<&PendingAudio::SfxEnabled>,         ChangeLanguage,
};

} // namespace

void BeginAudioEdit(GameApp& app) {
    CopyToPending(app, app.AudioEdit);
    app.AudioEdit.Language = NormalizeLanguageCode(app.Language);
    app.AudioEdit.Valid = true;
}

bool AudioEditIsDirty(const GameApp& app) {
    const PendingAudio& pending = app.AudioEdit;
    if (!pending.Valid) {
        return false;
    }
    return std::ranges::any_of(Volumes,
                               [&](const VolumePair& volume) {
                                   return pending.*volume.Pending != app.*volume.Live;
                               }) ||
           std::ranges::any_of(
               Switches,
               [&](const SwitchPair& flag) { return pending.*flag.Pending != app.*flag.Live; }) ||
           NormalizeLanguageCode(pending.Language) != NormalizeLanguageCode(app.Language);
}

void AdjustAudioRow(GameApp& app, std::int32_t direction) {
    const auto row = static_cast<std::size_t>(app.Rows.AudioRow);
    if (row < Adjustments.size()) {
        Adjustments[row](app.AudioEdit, direction);
    }
}

void ResetAudioEdit(GameApp& app) { CopyToPending(GameOptions{}, app.AudioEdit); }

void ApplyAudioEdit(GameApp& app) {
    if (AudioEditIsDirty(app)) {
        const std::string before = NormalizeLanguageCode(app.Language);
        CopyToLive(app.AudioEdit, app);
        app.Language = NormalizeLanguageCode(app.AudioEdit.Language);
        if (app.Language != before) {
            LoadLocalization(app);
        }
        app.OptionsDirty = true;
    }
    BeginAudioEdit(app);
}

} // namespace Wirefall

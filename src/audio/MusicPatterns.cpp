#include "audio/MusicPatterns.h"

#include "base/TextValues.h"
#include "storage/Storage.h"
#include "velini/VelINIStream.h"

#include <SDL3/SDL_error.h>
#include <SDL3/SDL_filesystem.h>
#include <SDL3/SDL_log.h>

#include <algorithm>
#include <array>
#include <utility>

namespace Wirefall {

namespace {

using velINI::IniSection;
using velINI::velINIStream;

constexpr const char* ConfigPath = "Music/MusicPatterns.ini";

constexpr std::string_view MusicSection = "Music";
constexpr std::string_view PatternPrefix = "Pattern.";

constexpr std::int32_t MaxFadeMs = 5000;

struct Role {
    const char* Key;
    std::string MusicRuntime::*Name;
};
// The menu comes first: what is wrong with the others falls back to it.
constexpr std::array<Role, 5> Roles = {{
    {"MenuPattern", &MusicRuntime::MenuPatternName},
    {"GameplayPattern", &MusicRuntime::GameplayPatternName},
    {"GameOverPattern", &MusicRuntime::GameOverPatternName},
    {"DangerPattern", &MusicRuntime::DangerPatternName},
    {"InfectionPattern", &MusicRuntime::InfectionPatternName},
}};

struct Fade {
    std::string_view Key;
    std::int32_t MusicRuntime::*Ms;
};
constexpr std::array<Fade, 2> Fades = {{
    {"FadeInMs", &MusicRuntime::FadeInMs},
    {"FadeOutMs", &MusicRuntime::FadeOutMs},
}};

struct DefaultEntry {
    std::string_view Section;
    std::string_view Key;
    std::string_view Value;
};
// Game over and infection share a file.
constexpr std::array<DefaultEntry, 17> DefaultEntries = {{
    {MusicSection, "MenuPattern", "MENU"},
    {MusicSection, "GameplayPattern", "GAMEPLAY"},
    {MusicSection, "GameOverPattern", "GAMEOVER"},
    {MusicSection, "DangerPattern", "DANGER"},
    {MusicSection, "InfectionPattern", "INFECTION"},
    {MusicSection, "FadeInMs", "360"},
    {MusicSection, "FadeOutMs", "360"},
    {"Pattern.MENU", "FileName", "Music/MenuCredits.ogg"},
    {"Pattern.MENU", "NextPatternName", "MENU"},
    {"Pattern.GAMEPLAY", "FileName", "Music/Gameplay.ogg"},
    {"Pattern.GAMEPLAY", "NextPatternName", "GAMEPLAY"},
    {"Pattern.GAMEOVER", "FileName", "Music/GameOver.ogg"},
    {"Pattern.GAMEOVER", "NextPatternName", "GAMEOVER"},
    {"Pattern.DANGER", "FileName", "Music/Water.ogg"},
    {"Pattern.DANGER", "NextPatternName", "DANGER"},
    {"Pattern.INFECTION", "FileName", "Music/GameOver.ogg"},
    {"Pattern.INFECTION", "NextPatternName", "INFECTION"},
}};

void ForgetPatterns(MusicRuntime& music) {
    music.Patterns.clear();
    music.CurrentPatternName.clear();
    music.PendingNextPatternName.clear();
    music.RequestedPattern = nullptr;
    music.LastPositionFrames = -1;
    music.CurrentDurationMs = 0;
}

void ReadFade(const velINIStream& document, const Fade& fade, MusicRuntime& music) {
    std::int32_t ms = 0;
    if (ParseStrictInt(document.GetValue(MusicSection, fade.Key, std::to_string(music.*fade.Ms)),
                       ms)) {
        music.*fade.Ms = std::clamp(ms, 0, MaxFadeMs);
    }
}

std::string ValueOf(const IniSection& section, std::string_view key, std::string_view fallback) {
    const auto entry = section.FindKey(key);
    return entry == section.Keys.end() ? std::string(fallback) : entry->Value;
}

// Empty when the path must not be opened.
std::string ResolvePath(const std::string& fileName) {
    if (!IsSafeRelativePath(fileName)) {
        return {};
    }
    const char* const folder = SDL_GetBasePath();
    if (folder == nullptr || *folder == '\0') {
        return {};
    }
    return WithSeparator(folder) + fileName;
}

// Whether the audio can be played on and on. In a loop without end the mixer's thread would look
// for the first sound of an empty or broken piece for ever. So here the loop has one, so late that
// the shortest piece is still playing when there is enough for the device. What gives nothing, or
// too little for the mixer to get on, has used up its turns by then.
bool CanLoop(MIX_Audio* audio, MIX_Mixer* mixer) {
    constexpr int MostLoops = 5000;
    SDL_AudioSpec format = {SDL_AUDIO_F32, 2, 44100};
    MIX_GetMixerFormat(mixer, &format);
    const MixerHandle trial(MIX_CreateMixer(&format));
    MIX_Track* const track = MIX_CreateTrack(trial.get());
    if (track == nullptr || !MIX_SetTrackAudio(track, audio)) {
        return false;
    }
    const SDL_PropertiesID loops = SDL_CreateProperties();
    SDL_SetNumberProperty(loops, MIX_PROP_PLAY_LOOPS_NUMBER, MostLoops);
    const bool plays = MIX_PlayTrack(track, loops);
    SDL_DestroyProperties(loops);
    if (!plays) {
        return false;
    }
    std::array<std::uint8_t, 4096> start{}; // About as much as devices ask for.
    MIX_Generate(trial.get(), start.data(), sizeof(start));
    return MIX_TrackPlaying(track) || SDL_SetError("There is no sound in it");
}

AudioHandle LoadPatternAudio(MIX_Mixer* mixer, const std::string& path) {
    AudioHandle audio(MIX_LoadAudio(mixer, path.c_str(), false));
    if (audio && !CanLoop(audio.get(), mixer)) {
        audio.reset();
    }
    return audio;
}

void LoadPattern(const IniSection& section, MusicRuntime& music) {
    if (!section.Name.starts_with(PatternPrefix)) {
        return;
    }
    const std::string name =
        ValueOf(section, "PatternName", section.Name.substr(PatternPrefix.size()));
    if (name.empty()) {
        return;
    }
    if (FindMusicPattern(music.Patterns, name) != nullptr) {
        SDL_Log("Duplicate music pattern name '%s' in section '%s'; ignoring duplicate",
                name.c_str(), section.Name.c_str());
        return;
    }
    if (!ParseBool(ValueOf(section, "Enabled", "1"), true)) {
        return;
    }
    const std::string fileName = ValueOf(section, "FileName", {});
    if (fileName.empty()) {
        return;
    }
    const std::string path = ResolvePath(fileName);
    if (path.empty()) {
        SDL_Log("Music pattern '%s' has unsafe FileName '%s'; skipping", name.c_str(),
                fileName.c_str());
        return;
    }
    AudioHandle audio = LoadPatternAudio(music.Mixer.get(), path);
    if (!audio) {
        SDL_Log("MIX_LoadAudio failed for pattern '%s' (configured='%s', resolved='%s'): %s",
                name.c_str(), fileName.c_str(), path.c_str(), SDL_GetError());
        return;
    }
    music.Patterns.push_back(std::make_unique<MusicPattern>(MusicPattern{
        .PatternName = name,
        .NextPatternName = ValueOf(section, "NextPatternName", name),
        .ResolvedPath = path,
        .Audio = std::move(audio),
    }));
}

void RepairRoles(MusicRuntime& music) {
    for (const Role& role : Roles) {
        std::string& name = music.*role.Name;
        RepairPatternReference(music, name, role.Key,
                               &name == &music.MenuPatternName ? music.Patterns.front()->PatternName
                                                               : music.MenuPatternName);
    }
}

void RepairSuccessors(MusicRuntime& music) {
    for (const auto& pattern : music.Patterns) {
        if (FindMusicPattern(music.Patterns, pattern->NextPatternName) == nullptr) {
            SDL_Log("Music pattern '%s' has missing NextPatternName '%s'; using self loop",
                    pattern->PatternName.c_str(), pattern->NextPatternName.c_str());
            pattern->NextPatternName = pattern->PatternName;
        }
    }
}

} // namespace

void LoadMusic(MusicRuntime& music) {
    velINIStream configured;
    if (LoadIniFromInstall(ConfigPath, configured) && LoadMusicPatterns(configured, music)) {
        return;
    }
    SDL_Log("Music pattern config '%s' could not be loaded or contains no valid tracks; using "
            "built-in defaults",
            ConfigPath);
    velINIStream builtIn;
    BuildDefaultMusicDocument(builtIn);
    if (LoadMusicPatterns(builtIn, music)) {
        SDL_Log("Initialized music runtime with built-in default patterns");
    } else {
        SDL_Log("Failed to initialize built-in default music patterns");
    }
}

bool LoadMusicPatterns(const velINIStream& document, MusicRuntime& music) {
    ForgetPatterns(music);
    for (const Role& role : Roles) {
        music.*role.Name = document.GetValue(MusicSection, role.Key, music.*role.Name);
    }
    for (const Fade& fade : Fades) {
        ReadFade(document, fade, music);
    }
    for (const IniSection& section : document.Sections) {
        LoadPattern(section, music);
    }
    if (music.Patterns.empty()) {
        return false;
    }
    RepairRoles(music);
    RepairSuccessors(music);
    return true;
}

void BuildDefaultMusicDocument(velINIStream& document) {
    for (const DefaultEntry& entry : DefaultEntries) {
        document.SetValue(entry.Section, entry.Key, entry.Value, false);
    }
}

const MusicPattern* FindMusicPattern(const MusicPatternList& list, std::string_view name) {
    const auto found = std::ranges::find_if(list, [name](const auto& pattern) {
        return pattern != nullptr && pattern->PatternName == name;
    });
    return found == list.end() ? nullptr : found->get();
}

void RepairPatternReference(const MusicRuntime& music, std::string& nameField,
                            const char* roleLabel, const std::string& fallback) {
    if (FindMusicPattern(music.Patterns, nameField) != nullptr) {
        return;
    }
    SDL_Log("Music pattern '%s' points to missing pattern '%s'; using '%s' instead", roleLabel,
            nameField.c_str(), fallback.c_str());
    nameField = fallback;
}

} // namespace Wirefall

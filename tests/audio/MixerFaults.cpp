#include "audio/MixerFaults.h"

#include <SDL3/SDL_error.h>
#include <SDL3/SDL_filesystem.h>
#include <SDL3/SDL_properties.h>
#include <SDL3/SDL_timer.h>
#include <SDL3_mixer/SDL_mixer.h>

#include <array>
#include <optional>

namespace Wirefall::Testing {

namespace {

struct Plan {
    int Calls = 0;
    int FirstFailing = 0;
    int LastFailing = 0;
};
std::array<Plan, static_cast<std::size_t>(Call::Count)> Plans;

std::optional<const char*> BasePath;

Plan& PlanOf(Call call) { return Plans.at(static_cast<std::size_t>(call)); }

// Counts the call. Whether it has to fail.
bool Fails(Call call) {
    Plan& plan = PlanOf(call);
    ++plan.Calls;
    if (plan.Calls < plan.FirstFailing || plan.Calls > plan.LastFailing) {
        return false;
    }
    SDL_SetError("%s", InjectedError);
    return true;
}

} // namespace

FailingCall::FailingCall(Call call, int first, int count) : Which(call) {
    Plan& plan = PlanOf(call);
    plan.FirstFailing = plan.Calls + first;
    plan.LastFailing = plan.FirstFailing + count - 1;
}

FailingCall::~FailingCall() {
    PlanOf(Which).FirstFailing = 0;
    PlanOf(Which).LastFailing = 0;
}

int CallsOf(Call call) { return PlanOf(call).Calls; }

ScopedBasePath::ScopedBasePath(const char* path) { BasePath = path; }

ScopedBasePath::~ScopedBasePath() { BasePath.reset(); }

} // namespace Wirefall::Testing

using Wirefall::Testing::Call;
using Wirefall::Testing::Fails;

// The names are the linker's: with --wrap=f a call of f arrives at __wrap_f, and __real_f is f.
// NOLINTBEGIN(readability-identifier-naming)
extern "C" {

bool __real_MIX_Init();
bool __wrap_MIX_Init() { return !Fails(Call::MixInit) && __real_MIX_Init(); }

void __real_MIX_Quit();
void __wrap_MIX_Quit() {
    Fails(Call::MixQuit);
    __real_MIX_Quit();
}

MIX_Mixer* __real_MIX_CreateMixerDevice(SDL_AudioDeviceID device, const SDL_AudioSpec* format);
MIX_Mixer* __wrap_MIX_CreateMixerDevice(SDL_AudioDeviceID device, const SDL_AudioSpec* format) {
    return Fails(Call::CreateMixerDevice) ? nullptr : __real_MIX_CreateMixerDevice(device, format);
}

MIX_Track* __real_MIX_CreateTrack(MIX_Mixer* mixer);
MIX_Track* __wrap_MIX_CreateTrack(MIX_Mixer* mixer) {
    return Fails(Call::CreateTrack) ? nullptr : __real_MIX_CreateTrack(mixer);
}

bool __real_MIX_TagTrack(MIX_Track* track, const char* tag);
bool __wrap_MIX_TagTrack(MIX_Track* track, const char* tag) {
    return !Fails(Call::TagTrack) && __real_MIX_TagTrack(track, tag);
}

bool __real_MIX_GetMixerFormat(MIX_Mixer* mixer, SDL_AudioSpec* format);
bool __wrap_MIX_GetMixerFormat(MIX_Mixer* mixer, SDL_AudioSpec* format) {
    return !Fails(Call::GetMixerFormat) && __real_MIX_GetMixerFormat(mixer, format);
}

MIX_Audio* __real_MIX_LoadRawAudio(MIX_Mixer* mixer, const void* data, size_t size,
                                   const SDL_AudioSpec* format);
MIX_Audio* __wrap_MIX_LoadRawAudio(MIX_Mixer* mixer, const void* data, size_t size,
                                   const SDL_AudioSpec* format) {
    return Fails(Call::LoadRawAudio) ? nullptr : __real_MIX_LoadRawAudio(mixer, data, size, format);
}

MIX_Audio* __real_MIX_CreateSineWaveAudio(MIX_Mixer* mixer, int hz, float amplitude, Sint64 ms);
MIX_Audio* __wrap_MIX_CreateSineWaveAudio(MIX_Mixer* mixer, int hz, float amplitude, Sint64 ms) {
    return Fails(Call::CreateSineWaveAudio)
               ? nullptr
               : __real_MIX_CreateSineWaveAudio(mixer, hz, amplitude, ms);
}

bool __real_MIX_SetTrackAudio(MIX_Track* track, MIX_Audio* audio);
bool __wrap_MIX_SetTrackAudio(MIX_Track* track, MIX_Audio* audio) {
    return !Fails(Call::SetTrackAudio) && __real_MIX_SetTrackAudio(track, audio);
}

bool __real_MIX_SetTrackGain(MIX_Track* track, float gain);
bool __wrap_MIX_SetTrackGain(MIX_Track* track, float gain) {
    return !Fails(Call::SetTrackGain) && __real_MIX_SetTrackGain(track, gain);
}

bool __real_MIX_PlayTrack(MIX_Track* track, SDL_PropertiesID options);
bool __wrap_MIX_PlayTrack(MIX_Track* track, SDL_PropertiesID options) {
    return !Fails(Call::PlayTrack) && __real_MIX_PlayTrack(track, options);
}

bool __real_MIX_StopTrack(MIX_Track* track, Sint64 fadeFrames);
bool __wrap_MIX_StopTrack(MIX_Track* track, Sint64 fadeFrames) {
    return !Fails(Call::StopTrack) && __real_MIX_StopTrack(track, fadeFrames);
}

bool __real_MIX_TrackPlaying(MIX_Track* track);
bool __wrap_MIX_TrackPlaying(MIX_Track* track) {
    return Fails(Call::TrackPlaying) || __real_MIX_TrackPlaying(track);
}

Sint64 __real_MIX_GetTrackPlaybackPosition(MIX_Track* track);
Sint64 __wrap_MIX_GetTrackPlaybackPosition(MIX_Track* track) {
    return Fails(Call::GetTrackPlaybackPosition) ? -1 : __real_MIX_GetTrackPlaybackPosition(track);
}

SDL_PropertiesID __real_SDL_CreateProperties();
SDL_PropertiesID __wrap_SDL_CreateProperties() {
    return Fails(Call::CreateProperties) ? 0 : __real_SDL_CreateProperties();
}

void __real_SDL_Delay(Uint32 ms);
void __wrap_SDL_Delay(Uint32 ms) {
    Fails(Call::Delay);
    __real_SDL_Delay(ms);
}

const char* __real_SDL_GetBasePath();
const char* __wrap_SDL_GetBasePath() {
    return Wirefall::Testing::BasePath ? *Wirefall::Testing::BasePath : __real_SDL_GetBasePath();
}
}
// NOLINTEND(readability-identifier-naming)

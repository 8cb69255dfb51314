#pragma once

// Makes calls of the game to SDL and SDL3_mixer fail on purpose, and counts them. The linker's
// --wrap puts this between the game and the libraries; what is not told to fail goes through to the
// real function, and what the libraries call among themselves is never touched.

#include <string>

namespace Wirefall::Testing {

enum class Call {
    MixInit,
    MixQuit,
    CreateMixerDevice,
    CreateTrack,
    TagTrack,
    GetMixerFormat,
    LoadRawAudio,
    CreateSineWaveAudio,
    SetTrackAudio,
    SetTrackGain,
    PlayTrack,
    StopTrack,
    TrackPlaying,
    GetTrackPlaybackPosition,
    CreateProperties,
    Delay,
    Count,
};

/// What SDL_GetError says after a call that was made to fail.
inline constexpr const char* InjectedError = "as the test wants";

/// For as long as this lives, the calls from number `first` on, counted from 1 and from now, fail,
/// `count` of them. One at a time for each function. A failing TrackPlaying is one that is stuck at
/// true, and a failing position is -1.
class FailingCall {
public:
    explicit FailingCall(Call call, int first = 1, int count = 1 << 20);
    ~FailingCall();
    FailingCall(const FailingCall&) = delete;
    FailingCall& operator=(const FailingCall&) = delete;

private:
    Call Which;
};

/// How often the game has called the function since the program started.
int CallsOf(Call call);

/// For as long as this lives, this is what the game takes for the folder of the executable; null
/// for none.
class ScopedBasePath {
public:
    explicit ScopedBasePath(const char* path);
    ~ScopedBasePath();
    ScopedBasePath(const ScopedBasePath&) = delete;
    ScopedBasePath& operator=(const ScopedBasePath&) = delete;
};

} // namespace Wirefall::Testing

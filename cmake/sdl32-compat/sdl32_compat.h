/* Wirefall: what SDL3_mixer uses of SDL 3.4, provided on top of SDL 3.2.
 *
 * scripts/build-dependencies.sh includes this header, by the compiler's -include, ahead of
 * every source file of SDL3_mixer when it is built against SDL 3.2. Built against SDL 3.4 or
 * newer the header is empty. It is used for nothing else, and no part of the game includes it.
 */
#ifndef WIREFALL_SDL32_COMPAT_H
#define WIREFALL_SDL32_COMPAT_H

#include <SDL3/SDL.h>

#if !SDL_VERSION_ATLEAST(3, 4, 0)

#ifndef SDL_ALIGNED
#if defined(_MSC_VER) && !defined(__clang__)
#define SDL_ALIGNED(bytes) __declspec(align(bytes))
#else
#define SDL_ALIGNED(bytes) __attribute__((aligned(bytes)))
#endif
#endif

/* SDL 3.2 stores this property and acts on nothing: closing the audio subsystem destroys every
 * stream, also those that ask to be kept. Whoever uses SDL3_mixer on SDL 3.2 therefore destroys
 * mixers, tracks and audio before the last SDL_Quit or SDL_QuitSubSystem(SDL_INIT_AUDIO). */
#ifndef SDL_PROP_AUDIOSTREAM_AUTO_CLEANUP_BOOLEAN
#define SDL_PROP_AUDIOSTREAM_AUTO_CLEANUP_BOOLEAN "SDL.audiostream.auto_cleanup"
#endif

typedef void(SDLCALL* SDL_AudioStreamDataCompleteCallback)(void* userdata, const void* buf,
                                                           int buflen);

/* Nothing is promised about when the stream lets go of the caller's buffer, only that it tells.
 * A copying put lets go of it at once. A put that failed never held the buffer, so it does not
 * tell. */
static inline bool SDL_PutAudioStreamDataNoCopy(SDL_AudioStream* stream, const void* buf, int len,
                                                SDL_AudioStreamDataCompleteCallback callback,
                                                void* userdata) {
    if (!SDL_PutAudioStreamData(stream, buf, len)) {
        return false;
    }
    if (callback) {
        callback(userdata, buf, len);
    }
    return true;
}

/* Write one channel's samples into every `channels`-th place of `interleaved`, beginning at the
 * first one. No samples means silence. */
static inline void WirefallInterleaveChannel(Uint8* interleaved, const Uint8* samples,
                                             size_t sample_size, int channels, int num_samples,
                                             int silence) {
    const size_t stride = sample_size * (size_t)channels;
    for (int i = 0; i < num_samples; ++i, interleaved += stride) {
        if (samples) {
            SDL_memcpy(interleaved, samples + (size_t)i * sample_size, sample_size);
        } else {
            SDL_memset(interleaved, silence, sample_size);
        }
    }
}

/* The part of SDL_PutAudioStreamPlanarData that needs the stream's format to stay as it is. */
static inline bool WirefallPutPlanarDataLocked(SDL_AudioStream* stream,
                                               const void* const* channel_buffers, int num_channels,
                                               int num_samples) {
    SDL_AudioSpec spec;
    if (!SDL_GetAudioStreamFormat(stream, &spec, NULL)) {
        return false;
    }
    if (spec.format == SDL_AUDIO_UNKNOWN || spec.channels <= 0) {
        return SDL_SetError("Audio stream has no source format");
    }
    if (num_channels < 0) {
        num_channels = spec.channels;
    }

    const size_t sample_size = SDL_AUDIO_BYTESIZE(spec.format);
    const size_t frame_size = sample_size * (size_t)spec.channels;
    if ((size_t)num_samples > (size_t)SDL_MAX_SINT32 / frame_size) {
        return SDL_SetError("Too many samples for one audio stream put");
    }

    const int len = (int)(frame_size * (size_t)num_samples);
    Uint8* interleaved = (Uint8*)SDL_malloc((size_t)len);
    if (!interleaved) {
        return false;
    }
    const int silence = SDL_GetSilenceValueForFormat(spec.format);
    for (int channel = 0; channel < spec.channels; ++channel) {
        const void* samples = channel < num_channels ? channel_buffers[channel] : NULL;
        WirefallInterleaveChannel(interleaved + (size_t)channel * sample_size,
                                  (const Uint8*)samples, sample_size, spec.channels, num_samples,
                                  silence);
    }
    const bool put = SDL_PutAudioStreamData(stream, interleaved, len);
    SDL_free(interleaved);
    return put;
}

/* One buffer per channel, as many channels as the stream's source format has. A missing buffer
 * is silence, a buffer too many is ignored, and a channel count of -1 means that the caller
 * knows there is one for each. */
static inline bool SDL_PutAudioStreamPlanarData(SDL_AudioStream* stream,
                                                const void* const* channel_buffers,
                                                int num_channels, int num_samples) {
    if (!stream) {
        return SDL_InvalidParamError("stream");
    }
    if (!channel_buffers) {
        return SDL_InvalidParamError("channel_buffers");
    }
    if (num_samples < 0) {
        return SDL_InvalidParamError("num_samples");
    }
    if (num_samples == 0) {
        return true;
    }
    SDL_LockAudioStream(stream);
    const bool put =
        WirefallPutPlanarDataLocked(stream, channel_buffers, num_channels, num_samples);
    SDL_UnlockAudioStream(stream);
    return put;
}

#endif /* SDL older than 3.4 */

#endif

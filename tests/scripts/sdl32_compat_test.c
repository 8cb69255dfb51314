/* Tests of cmake/sdl32-compat/sdl32_compat.h, which is included ahead of this file. Where SDL is new
 * enough to need no such help, the same is asked of SDL itself. */
#include <stdio.h>
#include <string.h>

static int failures = 0;

#define EXPECT(condition)                                                                          \
    do {                                                                                           \
        if (!(condition)) {                                                                        \
            printf("%s:%d: not so: %s\n", __FILE__, __LINE__, #condition);                         \
            ++failures;                                                                            \
        }                                                                                          \
    } while (0)

static SDL_AudioStream *NewStream(SDL_AudioFormat format, int channels)
{
    const SDL_AudioSpec spec = {format, channels, 48000};
    SDL_AudioStream *stream = SDL_CreateAudioStream(&spec, &spec);
    if (!stream) {
        printf("no stream: %s\n", SDL_GetError());
        ++failures;
    }
    return stream;
}

/* Whether the stream now gives exactly these bytes. */
static bool Gives(SDL_AudioStream *stream, const void *expected, int len)
{
    Uint8 got[256];
    SDL_FlushAudioStream(stream);
    return SDL_GetAudioStreamData(stream, got, sizeof(got)) == len &&
           memcmp(got, expected, (size_t)len) == 0;
}

static void InterleavesChannels(void)
{
    const Sint16 left[] = {1, 2, 3}, right[] = {-1, -2, -3};
    const void *const channels[] = {left, right};
    const Sint16 expected[] = {1, -1, 2, -2, 3, -3};
    SDL_AudioStream *stream = NewStream(SDL_AUDIO_S16, 2);
    EXPECT(SDL_PutAudioStreamPlanarData(stream, channels, 2, 3));
    EXPECT(Gives(stream, expected, sizeof(expected)));
    SDL_DestroyAudioStream(stream);
}

static void TakesOneBufferForEachChannelWhenNotToldHowMany(void)
{
    const float a[] = {0.5f}, b[] = {0.25f}, c[] = {-0.5f};
    const void *const channels[] = {a, b, c};
    const float expected[] = {0.5f, 0.25f, -0.5f};
    SDL_AudioStream *stream = NewStream(SDL_AUDIO_F32, 3);
    EXPECT(SDL_PutAudioStreamPlanarData(stream, channels, -1, 1));
    EXPECT(Gives(stream, expected, sizeof(expected)));
    SDL_DestroyAudioStream(stream);
}

static void FillsMissingBuffersWithSilence(void)
{
    const Uint8 right[] = {7, 8};
    const void *const channels[] = {NULL, right};
    const Uint8 expected[] = {128, 7, 128, 128, 8, 128};
    SDL_AudioStream *stream = NewStream(SDL_AUDIO_U8, 3);
    EXPECT(SDL_PutAudioStreamPlanarData(stream, channels, 2, 2));
    EXPECT(Gives(stream, expected, sizeof(expected)));
    SDL_DestroyAudioStream(stream);
}

static void IgnoresBuffersTooMany(void)
{
    const Sint32 a[] = {5, 6}, b[] = {7, 8};
    const void *const channels[] = {a, b};
    SDL_AudioStream *stream = NewStream(SDL_AUDIO_S32, 1);
    EXPECT(SDL_PutAudioStreamPlanarData(stream, channels, 2, 2));
    EXPECT(Gives(stream, a, sizeof(a)));
    SDL_DestroyAudioStream(stream);
}

static void RefusesWhatIsNoData(void)
{
    const Sint16 samples[] = {1};
    const void *const channels[] = {samples};
    SDL_AudioStream *stream = NewStream(SDL_AUDIO_S16, 1);
    EXPECT(!SDL_PutAudioStreamPlanarData(NULL, channels, 1, 1));
    EXPECT(!SDL_PutAudioStreamPlanarData(stream, NULL, 1, 1));
    EXPECT(!SDL_PutAudioStreamPlanarData(stream, channels, 1, -1));
    EXPECT(!SDL_PutAudioStreamPlanarData(stream, channels, 1, SDL_MAX_SINT32));
    EXPECT(SDL_GetAudioStreamQueued(stream) == 0);
    SDL_DestroyAudioStream(stream);
}

static void RefusesAStreamWithoutAFormat(void)
{
    const Sint16 samples[] = {1};
    const void *const channels[] = {samples};
    SDL_AudioStream *stream = SDL_CreateAudioStream(NULL, NULL);
    EXPECT(stream && !SDL_PutAudioStreamPlanarData(stream, channels, 1, 1));
    SDL_DestroyAudioStream(stream);
}

struct Completion {
    int calls;
    const void *buf;
    int len;
};

static void SDLCALL Complete(void *userdata, const void *buf, int len)
{
    struct Completion *completion = userdata;
    ++completion->calls;
    completion->buf = buf;
    completion->len = len;
}

static void TellsOnceThatItIsDoneWithTheBuffer(void)
{
    static const Sint16 samples[] = {1, 2, 3, 4};
    struct Completion completion = {0, NULL, 0};
    SDL_AudioStream *stream = NewStream(SDL_AUDIO_S16, 2);
    EXPECT(SDL_PutAudioStreamDataNoCopy(stream, samples, sizeof(samples), Complete, &completion));
    EXPECT(Gives(stream, samples, sizeof(samples)));
    SDL_DestroyAudioStream(stream);
    EXPECT(completion.calls == 1);
    EXPECT(completion.buf == samples);
    EXPECT(completion.len == (int)sizeof(samples));
}

static void TellsNobodyWhereNobodyAsked(void)
{
    static const Sint16 samples[] = {1, 2};
    SDL_AudioStream *stream = NewStream(SDL_AUDIO_S16, 2);
    EXPECT(SDL_PutAudioStreamDataNoCopy(stream, samples, sizeof(samples), NULL, NULL));
    EXPECT(Gives(stream, samples, sizeof(samples)));
    SDL_DestroyAudioStream(stream);
}

static void TellsNothingWhenItTookNothing(void)
{
    static const Sint16 samples[] = {1, 2};
    struct Completion completion = {0, NULL, 0};
    EXPECT(!SDL_PutAudioStreamDataNoCopy(NULL, samples, sizeof(samples), Complete, &completion));
    EXPECT(completion.calls == 0);
}

static void Aligns(void)
{
    static char SDL_ALIGNED(64) bytes[3];
    EXPECT((size_t)bytes % 64 == 0);
}

int main(void)
{
    Aligns();
    InterleavesChannels();
    TakesOneBufferForEachChannelWhenNotToldHowMany();
    FillsMissingBuffersWithSilence();
    IgnoresBuffersTooMany();
    RefusesWhatIsNoData();
    RefusesAStreamWithoutAFormat();
    TellsOnceThatItIsDoneWithTheBuffer();
    TellsNobodyWhereNobodyAsked();
    TellsNothingWhenItTookNothing();
    return failures != 0;
}

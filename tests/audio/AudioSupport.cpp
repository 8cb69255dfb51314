#include "audio/AudioSupport.h"

#include "audio/AudioEngine.h"
#include "support/BoardDrawing.h"

#include <SDL3/SDL_filesystem.h>

#include <FLAC/stream_encoder.h>
#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <complex>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <numbers>
#include <stdexcept>
#include <thread>

namespace Wirefall::Testing {

namespace {

constexpr SDL_AudioSpec MemoryFormat = {SDL_AUDIO_F32, 2, 44100};

void Append(Bytes& bytes, std::uint32_t value, int size) {
    for (int i = 0; i < size; ++i) {
        bytes.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
    }
}

void Append(Bytes& bytes, std::string_view text) {
    for (const char c : text) {
        bytes.push_back(static_cast<std::uint8_t>(c));
    }
}

// How much of the frequency is in the samples, under a Hann window.
double Strength(std::span<const float> samples, int rate, double hz) {
    const std::complex<double> step =
        std::polar(1.0, -2.0 * std::numbers::pi * hz / static_cast<double>(rate));
    const std::complex<double> windowStep =
        std::polar(1.0, 2.0 * std::numbers::pi / static_cast<double>(samples.size()));
    std::complex<double> turn = 1.0;
    std::complex<double> windowTurn = 1.0;
    std::complex<double> sum = 0.0;
    for (const float sample : samples) {
        sum += static_cast<double>(sample) * (0.5 - 0.5 * windowTurn.real()) * turn;
        turn *= step;
        windowTurn *= windowStep;
    }
    return std::abs(sum);
}

double Strongest(std::span<const float> samples, int rate, double from, double to, double step) {
    double best = from;
    double most = -1.0;
    const int steps = static_cast<int>((to - from) / step) + 1;
    for (int i = 0; i < steps; ++i) {
        const double hz = from + step * i;
        const double strength = Strength(samples, rate, hz);
        if (strength > most) {
            most = strength;
            best = hz;
        }
    }
    return best;
}

} // namespace

DataFolder::DataFolder() {
    std::string pattern = std::string(SDL_GetBasePath()) + "data-XXXXXX";
    if (mkdtemp(pattern.data()) == nullptr) {
        throw std::runtime_error("No folder can be made beside the executable");
    }
    Folder = pattern;
}

DataFolder::~DataFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(Folder, ignored);
}

std::string DataFolder::Relative(std::string_view name) const {
    return Folder.filename().string() + "/" + std::string(name);
}

std::vector<float> Tone(const WavFormat& format, int frames, double hz, float amplitude) {
    std::vector<float> samples;
    for (int i = 0; i < frames; ++i) {
        const double phase = 2.0 * std::numbers::pi * hz * i / format.Rate;
        samples.insert(samples.end(), static_cast<std::size_t>(format.Channels),
                       amplitude * static_cast<float>(std::sin(phase)));
    }
    return samples;
}

Bytes WavFile(const WavFormat& format, std::span<const float> samples) {
    const std::uint32_t sampleBytes = 2;
    const auto rate = static_cast<std::uint32_t>(format.Rate);
    const std::uint32_t frameBytes = static_cast<std::uint32_t>(format.Channels) * sampleBytes;
    const auto dataBytes = static_cast<std::uint32_t>(samples.size()) * sampleBytes;
    Bytes file;
    Append(file, "RIFF");
    Append(file, 36 + dataBytes, 4);
    Append(file, "WAVEfmt ");
    Append(file, 16, 4);
    Append(file, 1, 2); // PCM
    Append(file, static_cast<std::uint32_t>(format.Channels), 2);
    Append(file, rate, 4);
    Append(file, rate * frameBytes, 4);
    Append(file, frameBytes, 2);
    Append(file, 8 * sampleBytes, 2);
    Append(file, "data");
    Append(file, dataBytes, 4);
    for (const float sample : samples) {
        Append(file, static_cast<std::uint32_t>(std::lround(sample * 32767.0F)), 2);
    }
    return file;
}

void WriteFlacFile(const std::filesystem::path& path, const WavFormat& format,
                   std::span<const float> samples, unsigned blockFrames) {
    std::vector<FLAC__int32> values;
    values.reserve(samples.size());
    for (const float sample : samples) {
        values.push_back(static_cast<FLAC__int32>(std::lround(sample * 32767.0F)));
    }
    const std::unique_ptr<FLAC__StreamEncoder, decltype(&FLAC__stream_encoder_delete)> encoder(
        FLAC__stream_encoder_new(), FLAC__stream_encoder_delete);
    const auto channels = static_cast<unsigned>(format.Channels);
    FLAC__stream_encoder_set_channels(encoder.get(), channels);
    FLAC__stream_encoder_set_sample_rate(encoder.get(), static_cast<unsigned>(format.Rate));
    FLAC__stream_encoder_set_blocksize(encoder.get(), blockFrames);
    if (FLAC__stream_encoder_init_file(encoder.get(), path.c_str(), nullptr, nullptr) !=
            FLAC__STREAM_ENCODER_INIT_STATUS_OK ||
        FLAC__stream_encoder_process_interleaved(
            encoder.get(), values.data(), static_cast<unsigned>(values.size()) / channels) == 0 ||
        FLAC__stream_encoder_finish(encoder.get()) == 0) {
        throw std::runtime_error("No FLAC file can be written");
    }
}

velINI::velINIStream DocumentOf(std::string_view text) {
    const TemporaryFolder folder;
    WriteFileText(folder.File("document.ini"), text);
    velINI::velINIStream document;
    document.ReadFile(folder.File("document.ini"));
    return document;
}

MemoryEngine::MemoryEngine() {
    MIX_Init();
    Music.Mixer.reset(MIX_CreateMixer(&MemoryFormat));
    Music.MusicTrack = MIX_CreateTrack(Music.Mixer.get());
    if (Music.MusicTrack == nullptr) {
        throw std::runtime_error("There is no mixer");
    }
    Music.MusicGainPercent = 50;
    Music.MusicGainReference = &Music.MusicGainPercent;
    MIX_SetTrackGain(Music.MusicTrack, 0.5F);
    Music.SfxGainPercent = 75;
    Music.Ready = true;
}

MemoryEngine::~MemoryEngine() { ShutdownAudio(Music, false); }

std::vector<float> MemoryEngine::Play(int frames) const {
    std::vector<float> samples(static_cast<std::size_t>(frames) * 2);
    MIX_Generate(Music.Mixer.get(), samples.data(),
                 static_cast<int>(samples.size() * sizeof(float)));
    return samples;
}

std::vector<std::string> NamesOf(const MusicPatternList& patterns) {
    std::vector<std::string> names;
    for (const auto& pattern : patterns) {
        names.push_back(pattern->PatternName);
    }
    return names;
}

std::vector<float> LeftOf(std::span<const float> stereo) {
    std::vector<float> left;
    for (std::size_t i = 0; i < stereo.size(); i += 2) {
        left.push_back(stereo[i]);
    }
    return left;
}

float PeakOf(std::span<const float> samples) {
    float peak = 0.0F;
    for (const float sample : samples) {
        peak = std::max(peak, std::fabs(sample));
    }
    return peak;
}

double DominantFrequency(std::span<const float> samples, int rate) {
    const double coarse = Strongest(samples, rate, 50.0, 2000.0, 5.0);
    return Strongest(samples, rate, coarse - 6.0, coarse + 6.0, 0.1);
}

bool WaitUntil(const std::function<bool()>& condition) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
}

void InstallInfectedRun(int infected) {
    RunState run = DrawnRun({});
    for (std::size_t i = 0; i < run.Tiles.size(); ++i) {
        run.Tiles[i] = MakeTile(TileType::Cross, 0);
        run.Tiles[i].VirusInfected = i < static_cast<std::size_t>(infected);
    }
    InstallLiveRun(run);
}

} // namespace Wirefall::Testing

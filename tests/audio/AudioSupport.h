#pragma once

// What the tests of the audio folder share: audio files made on the spot, an engine that plays into
// memory at the test's own pace, and an ear.

#include "audio/MusicRuntime.h"
#include "support/TestFiles.h"
#include "velini/VelINIStream.h"

#include <filesystem>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace Wirefall::Testing {

/// A new folder beside the executable, where data files are looked for. Deleted with everything in
/// it at the end of the scope.
class DataFolder {
public:
    DataFolder();
    DataFolder(const DataFolder&) = delete;
    DataFolder& operator=(const DataFolder&) = delete;
    ~DataFolder();

    const std::filesystem::path& Path() const { return Folder; }
    /// A file in it as a data file would name it.
    std::string Relative(std::string_view name) const;

private:
    std::filesystem::path Folder;
};

struct WavFormat {
    int Rate = 44100;
    int Channels = 2;
};

/// A sine over all channels, interleaved.
std::vector<float> Tone(const WavFormat& format, int frames, double hz, float amplitude);

/// The file of 16-bit samples.
Bytes WavFile(const WavFormat& format, std::span<const float> samples);

/// Writes a FLAC file of 16-bit samples, compressed in blocks of so many frames (16 or more).
void WriteFlacFile(const std::filesystem::path& path, const WavFormat& format,
                   std::span<const float> samples, unsigned blockFrames);

/// The document of an INI file with this text.
velINI::velINIStream DocumentOf(std::string_view text);

/// A ready engine without a device, in 32-bit stereo at 44100 Hz, with a music track at a gain of
/// 50 percent and nothing else yet. What it plays is fetched with Play, and no time passes for it
/// in between.
class MemoryEngine {
public:
    MemoryEngine();
    MemoryEngine(const MemoryEngine&) = delete;
    MemoryEngine& operator=(const MemoryEngine&) = delete;
    ~MemoryEngine();

    std::vector<float> Play(int frames) const;

    MusicRuntime Music;
};

/// The names of the patterns, in their order.
std::vector<std::string> NamesOf(const MusicPatternList& patterns);

/// Every second sample: the left channel.
std::vector<float> LeftOf(std::span<const float> stereo);

float PeakOf(std::span<const float> samples);

/// The frequency at which the spectrum of the samples is highest, to a tenth of a hertz, between 50
/// and 2000 Hz.
double DominantFrequency(std::span<const float> samples, int rate);

/// Lets the mixer's own thread work until the condition holds. False only when it never does.
bool WaitUntil(const std::function<bool()>& condition);

/// Installs a run with so many of 100 live tiles infected.
void InstallInfectedRun(int infected);

} // namespace Wirefall::Testing

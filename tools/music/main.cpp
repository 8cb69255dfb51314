// Renders scores: wirefall_music SCORE OUTPUT. The name of the output ends in .ogg or .wav. Tells
// what has come out, for whoever is at work on a score: how long and how loud the piece is, and how
// loud each instrument in it.

#include "music/Loudness.h"
#include "music/Renderer.h"
#include "music/ScoreParser.h"
#include "music/SoundFile.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <iostream>
#include <span>
#include <sstream>
#include <stdexcept>
#include <string>

namespace Wirefall::Music {
namespace {

// Louder, and a player that resamples may clip.
constexpr double HighestPeak = -1;

std::string ReadFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        throw std::runtime_error("cannot read " + path);
    }
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

void Report(const Score& score, const Rendering& rendering) {
    const double seconds = static_cast<double>(rendering.Mix.Frames()) / SampleRate;
    std::printf("%s: %d bars, %.2f s, %.1f LUFS, peak %.1f dB\n", score.Title.c_str(), score.Bars,
                seconds, IntegratedLoudness(rendering.Mix), TruePeak(rendering.Mix));
    for (const SectionStart& section : score.Sections) {
        std::printf("  bar %3d  %s\n", section.Bar + 1, section.Name.c_str());
    }
    for (std::size_t i = 0; i < score.Instruments.size(); ++i) {
        std::printf("  %6.1f LUFS  %s\n", rendering.Parts[i], score.Instruments[i].Name.c_str());
    }
}

void RenderFile(const std::string& scorePath, const std::string& outputPath) {
    const Score score = ParseScore(ReadFile(scorePath), scorePath);
    const Rendering rendering = Render(score);
    Report(score, rendering);
    if (TruePeak(rendering.Mix) > HighestPeak) {
        throw std::runtime_error(scorePath + ": the peaks are too high for this loudness");
    }
    if (outputPath.ends_with(".ogg")) {
        WriteOgg(outputPath, rendering.Mix, score.Title);
    } else if (outputPath.ends_with(".wav")) {
        WriteWav(outputPath, rendering.Mix);
    } else {
        throw std::runtime_error(outputPath + ": the name has to end in .ogg or .wav");
    }
}

} // namespace
} // namespace Wirefall::Music

int main(int argc, char** argv) {
    const std::span<char*> arguments(argv, static_cast<std::size_t>(argc));
    if (arguments.size() != 3) {
        std::cerr << "Usage: wirefall_music SCORE OUTPUT.ogg|OUTPUT.wav\n";
        return EXIT_FAILURE;
    }
    try {
        Wirefall::Music::RenderFile(arguments[1], arguments[2]);
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}

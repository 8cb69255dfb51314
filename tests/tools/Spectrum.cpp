#include "tools/Spectrum.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>
#include <numeric>
#include <utility>

namespace Wirefall::Testing {
namespace {

constexpr double Turn = 2 * std::numbers::pi;

double Hann(std::size_t i, std::size_t count) {
    return 0.5 - 0.5 * std::cos(Turn * static_cast<double>(i) / static_cast<double>(count));
}

// The discrete Fourier transform of windows of one length, a power of two (Cooley and Tukey,
// 1965).
class FourierTransform {
public:
    explicit FourierTransform(std::size_t count) : Roots(count / 2), Bins(count) {
        for (std::size_t i = 0; i < Roots.size(); ++i) {
            const double turns = static_cast<double>(i) / static_cast<double>(count);
            Roots[i] = std::polar(1.0, -Turn * turns);
        }
    }

    // What is put in here is overwritten by Run with its transform.
    std::vector<std::complex<double>>& Values() { return Bins; }

    void Run() {
        Shuffle();
        for (std::size_t half = 1; half < Bins.size(); half *= 2) {
            const std::size_t stride = Roots.size() / half;
            for (std::size_t start = 0; start < Bins.size(); start += 2 * half) {
                for (std::size_t i = start; i < start + half; ++i) {
                    const std::complex<double> turned =
                        Roots[(i - start) * stride] * Bins[i + half];
                    Bins[i + half] = Bins[i] - turned;
                    Bins[i] += turned;
                }
            }
        }
    }

private:
    // Puts each value where the reversed bits of its place point.
    void Shuffle() {
        std::size_t reversed = 0;
        for (std::size_t i = 1; i < Bins.size(); ++i) {
            std::size_t bit = Bins.size() / 2;
            for (; (reversed & bit) != 0; bit /= 2) {
                reversed ^= bit;
            }
            reversed |= bit;
            if (i < reversed) {
                std::swap(Bins[i], Bins[reversed]);
            }
        }
    }

    std::vector<std::complex<double>> Roots;
    std::vector<std::complex<double>> Bins;
};

// The levels of the thirds of an octave, in dB, with a mean of 0.
std::vector<double> Bands(const Spectrum& spectrum) {
    constexpr double Lowest = 50;
    constexpr int Count = 24;
    std::vector<double> levels;
    for (int band = 0; band < Count; ++band) {
        const double from = Lowest * std::exp2(band / 3.0) / Spectrum::BinHertz;
        const double to = Lowest * std::exp2((band + 1) / 3.0) / Spectrum::BinHertz;
        double power = 1e-12;
        for (auto bin = static_cast<std::size_t>(std::lround(from));
             bin < static_cast<std::size_t>(std::lround(to)); ++bin) {
            power += spectrum.Powers[bin];
        }
        levels.push_back(10 * std::log10(power));
    }
    const double mean = std::reduce(levels.begin(), levels.end()) / Count;
    for (double& level : levels) {
        level -= mean;
    }
    return levels;
}

} // namespace

double AmplitudeAt(std::span<const float> samples, double hertz) {
    std::complex<double> sum = 0;
    double weight = 0;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double window = Hann(i, samples.size());
        const double turns = hertz * static_cast<double>(i) / Music::SampleRate;
        sum += window * static_cast<double>(samples[i]) * std::polar(1.0, -Turn * turns);
        weight += window;
    }
    return 2 * std::abs(sum) / weight;
}

Spectrum SpectrumOf(const Music::Sound& sound) {
    constexpr std::size_t Frames = Spectrum::WindowFrames;
    Spectrum spectrum;
    spectrum.Powers.resize(Frames / 2);
    std::vector<double> window(Frames);
    for (std::size_t i = 0; i < Frames; ++i) {
        window[i] = Hann(i, Frames);
    }
    FourierTransform transform(Frames);
    for (const std::vector<float>* channel : {&sound.Left, &sound.Right}) {
        for (std::size_t start = 0; start + Frames <= channel->size(); start += Frames / 2) {
            for (std::size_t i = 0; i < Frames; ++i) {
                transform.Values()[i] = window[i] * static_cast<double>((*channel)[start + i]);
            }
            transform.Run();
            for (std::size_t bin = 0; bin < Frames / 2; ++bin) {
                spectrum.Powers[bin] += std::norm(transform.Values()[bin]);
            }
        }
    }
    return spectrum;
}

double RollOff(const Spectrum& spectrum, double part) {
    const double whole = std::reduce(spectrum.Powers.begin(), spectrum.Powers.end());
    double below = 0;
    std::size_t bin = 0;
    while (bin < spectrum.Powers.size() && below < part * whole) {
        below += spectrum.Powers[bin];
        ++bin;
    }
    return static_cast<double>(bin) * Spectrum::BinHertz;
}

double Distance(const Spectrum& a, const Spectrum& b) {
    const std::vector<double> first = Bands(a);
    const std::vector<double> second = Bands(b);
    double squares = 0;
    for (std::size_t i = 0; i < first.size(); ++i) {
        squares += (first[i] - second[i]) * (first[i] - second[i]);
    }
    return std::sqrt(squares / static_cast<double>(first.size()));
}

double Roughness(const Spectrum& spectrum, double hertz) {
    constexpr std::size_t FirstBin = 4; // What lies below is no tone.
    double rough = 0;
    double whole = 0;
    for (std::size_t bin = FirstBin; bin < spectrum.Powers.size(); ++bin) {
        const double partial = static_cast<double>(bin) * Spectrum::BinHertz;
        const double scale = 0.24 / (0.0207 * std::min(partial, hertz) + 18.96);
        const double apart = scale * std::abs(partial - hertz);
        rough += spectrum.Powers[bin] * (std::exp(-3.5 * apart) - std::exp(-5.75 * apart));
        whole += spectrum.Powers[bin];
    }
    return rough / whole;
}

double SideAgainstMid(const Music::Sound& sound) {
    double side = 0;
    double mid = 0;
    for (std::size_t i = 0; i < sound.Frames(); ++i) {
        const auto left = static_cast<double>(sound.Left[i]);
        const auto right = static_cast<double>(sound.Right[i]);
        side += (left - right) * (left - right);
        mid += (left + right) * (left + right);
    }
    return 10 * std::log10(side / mid);
}

} // namespace Wirefall::Testing

#include "music/Sound.h"

#include <cmath>

namespace Wirefall::Music {

void Amplify(Sound& sound, double factor) {
    for (std::vector<float>* channel : {&sound.Left, &sound.Right}) {
        for (float& sample : *channel) {
            sample = static_cast<float>(static_cast<double>(sample) * factor);
        }
    }
}

double FactorFromDecibels(double decibels) { return std::pow(10.0, decibels / 20.0); }

} // namespace Wirefall::Music

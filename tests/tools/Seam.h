#pragma once

// How smoothly a loop goes on from its end to its beginning.

#include "music/Sound.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

namespace Wirefall::Testing {

struct Seam {
    float Step = 0;    ///< From the last sample to the first.
    float Largest = 0; ///< The largest step between neighbours within 50 ms of it.
};

/// Of the channel in which the seam is the rougher one of the two.
inline Seam SeamOf(const Music::Sound& sound) {
    Seam worst;
    float roughest = -1;
    for (const std::vector<float>* channel : {&sound.Left, &sound.Right}) {
        const std::size_t frames = channel->size();
        const std::size_t reach = std::min<std::size_t>(Music::SampleRate / 20, frames / 2 - 1);
        Seam seam{.Step = std::abs(channel->front() - channel->back())};
        for (std::size_t i = 0; i < reach; ++i) {
            const float after = std::abs((*channel)[i + 1] - (*channel)[i]);
            const float before = std::abs((*channel)[frames - 1 - i] - (*channel)[frames - 2 - i]);
            seam.Largest = std::max({seam.Largest, after, before});
        }
        if (seam.Step - seam.Largest > roughest) {
            roughest = seam.Step - seam.Largest;
            worst = seam;
        }
    }
    return worst;
}

} // namespace Wirefall::Testing

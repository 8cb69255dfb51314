#include "tools/DecodedOgg.h"

#include <vorbis/codec.h>
// The header defines callbacks that not everybody uses.
#define OV_EXCLUDE_STATIC_CALLBACKS
#include <vorbis/vorbisfile.h>

namespace Wirefall::Testing {

Music::Sound DecodeOgg(const std::string& path) {
    constexpr int FramesPerRead = 4096;
    Music::Sound sound;
    OggVorbis_File file;
    if (ov_fopen(path.c_str(), &file) != 0) {
        return sound;
    }
    const vorbis_info* info = ov_info(&file, -1);
    if (info->channels == 2 && info->rate == Music::SampleRate) {
        float** channels = nullptr;
        int section = 0;
        long frames = 0;
        while ((frames = ov_read_float(&file, &channels, FramesPerRead, &section)) > 0) {
            sound.Left.insert(sound.Left.end(), channels[0], channels[0] + frames);
            sound.Right.insert(sound.Right.end(), channels[1], channels[1] + frames);
        }
    }
    ov_clear(&file);
    return sound;
}

} // namespace Wirefall::Testing

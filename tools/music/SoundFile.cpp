#include "music/SoundFile.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <ios>
#include <stdexcept>
#include <vorbis/codec.h>
#include <vorbis/vorbisenc.h>

namespace Wirefall::Music {
namespace {

constexpr int Channels = 2;
// At lower ones the noise of the encoding, which cannot be continuous there, makes the seam of a
// loop faintly audible.
constexpr float Quality = 0.6F;
// Any number does, as long as it is the same each time.
constexpr int StreamSerial = 1;
constexpr std::size_t FramesPerWrite = 4096;

void Finish(std::ofstream& file, const std::string& path) {
    file.close();
    if (!file) {
        throw std::runtime_error("cannot write " + path);
    }
}

// The encoder's four records, and the stream that its packets go into.
class OggEncoder {
public:
    OggEncoder(const std::string& path, const std::string& title) : Output(path, std::ios::binary) {
        vorbis_info_init(&Info);
        vorbis_comment_init(&Comment);
        if (vorbis_encode_init_vbr(&Info, Channels, SampleRate, Quality) != 0) {
            throw std::runtime_error("libvorbis cannot encode at this rate and quality");
        }
        vorbis_comment_add_tag(&Comment, "TITLE", title.c_str());
        vorbis_comment_add_tag(&Comment, "ALBUM", "Wirefall");
        vorbis_analysis_init(&State, &Info);
        vorbis_block_init(&State, &OpenBlock);
        ogg_stream_init(&Stream, StreamSerial);
    }
    OggEncoder(const OggEncoder&) = delete;
    OggEncoder& operator=(const OggEncoder&) = delete;
    ~OggEncoder() {
        ogg_stream_clear(&Stream);
        vorbis_block_clear(&OpenBlock);
        vorbis_dsp_clear(&State);
        vorbis_comment_clear(&Comment);
        vorbis_info_clear(&Info);
    }

    void WriteHeaders() {
        ogg_packet identification;
        ogg_packet comments;
        ogg_packet codebooks;
        vorbis_analysis_headerout(&State, &Comment, &identification, &comments, &codebooks);
        for (ogg_packet* packet : {&identification, &comments, &codebooks}) {
            ogg_stream_packetin(&Stream, packet);
        }
        // Sound starts on a page of its own.
        ogg_page page;
        while (ogg_stream_flush(&Stream, &page) != 0) {
            WritePage(page);
        }
    }

    // Gives frames to the encoder. The file ends where `length` frames are in it.
    void WriteFrames(const float* left, const float* right, std::size_t count, std::size_t length) {
        float** buffer = vorbis_analysis_buffer(&State, static_cast<int>(count));
        std::copy_n(left, count, buffer[0]);
        std::copy_n(right, count, buffer[1]);
        vorbis_analysis_wrote(&State, static_cast<int>(count));
        ogg_packet packet;
        while (!Finished && NextPacket(packet)) {
            if (packet.granulepos >= static_cast<ogg_int64_t>(length)) {
                packet.granulepos = static_cast<ogg_int64_t>(length);
                packet.e_o_s = 1;
                Finished = true;
            }
            ogg_stream_packetin(&Stream, &packet);
            ogg_page page;
            while (ogg_stream_pageout(&Stream, &page) != 0) {
                WritePage(page);
            }
        }
    }

    bool Ended() const { return Finished; }

    std::ofstream& File() { return Output; }

private:
    bool NextPacket(ogg_packet& packet) {
        while (vorbis_bitrate_flushpacket(&State, &packet) == 0) {
            if (vorbis_analysis_blockout(&State, &OpenBlock) != 1) {
                return false;
            }
            vorbis_analysis(&OpenBlock, nullptr);
            vorbis_bitrate_addblock(&OpenBlock);
        }
        return true;
    }

    void WriteBytes(const unsigned char* bytes, long count) {
        for (long i = 0; i < count; ++i) {
            Output.put(static_cast<char>(bytes[i]));
        }
    }

    void WritePage(const ogg_page& page) {
        WriteBytes(page.header, page.header_len);
        WriteBytes(page.body, page.body_len);
    }

    std::ofstream Output;
    vorbis_info Info{};
    vorbis_comment Comment{};
    vorbis_dsp_state State{};
    vorbis_block OpenBlock{};
    ogg_stream_state Stream{};
    bool Finished = false;
};

void PutLittleEndian(std::ofstream& file, std::uint32_t value, int bytes) {
    for (int i = 0; i < bytes; ++i) {
        file.put(static_cast<char>(value >> (8 * i) & 0xFFU));
    }
}

} // namespace

void WriteOgg(const std::string& path, const Sound& sound, const std::string& title) {
    if (sound.Frames() == 0) {
        throw std::runtime_error("there is no sound to write to " + path);
    }
    OggEncoder encoder(path, title);
    encoder.WriteHeaders();
    // The encoder works in overlapping blocks. The one over the end gets the beginning to see,
    // where the loop goes on, and not the silence that would have it fade there.
    for (std::size_t start = 0; !encoder.Ended();) {
        const std::size_t count = std::min(FramesPerWrite, sound.Frames() - start);
        encoder.WriteFrames(&sound.Left[start], &sound.Right[start], count, sound.Frames());
        start = (start + count) % sound.Frames();
    }
    Finish(encoder.File(), path);
}

void WriteWav(const std::string& path, const Sound& sound) {
    constexpr std::uint32_t FloatFormat = 3;
    constexpr std::uint32_t FrameBytes = Channels * sizeof(float);
    constexpr std::uint32_t HeaderBytes = 36; // behind the first eight
    const auto dataBytes = static_cast<std::uint32_t>(sound.Frames() * FrameBytes);

    std::ofstream file(path, std::ios::binary);
    file << "RIFF";
    PutLittleEndian(file, HeaderBytes + dataBytes, 4);
    file << "WAVEfmt ";
    PutLittleEndian(file, 16, 4);
    PutLittleEndian(file, FloatFormat, 2);
    PutLittleEndian(file, Channels, 2);
    PutLittleEndian(file, SampleRate, 4);
    PutLittleEndian(file, SampleRate * FrameBytes, 4);
    PutLittleEndian(file, FrameBytes, 2);
    PutLittleEndian(file, 8 * sizeof(float), 2);
    file << "data";
    PutLittleEndian(file, dataBytes, 4);
    for (std::size_t i = 0; i < sound.Frames(); ++i) {
        for (const float sample : {sound.Left[i], sound.Right[i]}) {
            PutLittleEndian(file, std::bit_cast<std::uint32_t>(sample), sizeof(float));
        }
    }
    Finish(file, path);
}

} // namespace Wirefall::Music

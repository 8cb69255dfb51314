// The save file against two well-known formats, and what saving costs the frame.
//
// All three formats get the same document of a level-12 run, with the same keys, and do the same
// work around it. Writing takes the run down into a document, encodes it and writes a local file.
// Reading takes the file into memory, decodes it into a document and installs that as the live run.

#include "base/Clock.h"
#include "display/LogicalCanvas.h"
#include "game/GameApp.h"
#include "persist/Options.h"
#include "persist/RunConversion.h"
#include "persist/SaveDocument.h"
#include "persist/SaveState.h"
#include "screens/BoardScreen.h"
#include "sim/PacketTick.h"
#include "sim/Simulation.h"
#include "support/SampleRuns.h"
#include "support/SoftwareCanvas.h"
#include "support/UserFolder.h"

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <msgpack.hpp>
#include <nlohmann/json.hpp>
#include <stdexcept>

namespace Wirefall {
namespace {

using Testing::Bytes;
using Json = nlohmann::json;

// The members of each record by name, for the peers.

template <typename Visitor>
void VisitMembers(Visitor& visit, auto& tile) requires requires {
    tile.Connections;
}
{
    visit("Type", tile.Type);
    visit("Connections", tile.Connections);
    visit("VirusInfected", tile.VirusInfected);
    visit("OccupiedBySource", tile.OccupiedBySource);
    visit("OccupiedBySink", tile.OccupiedBySink);
    visit("Consumed", tile.Consumed);
    visit("CooldownTicks", tile.CooldownTicks);
}

template <typename Visitor>
void VisitMembers(Visitor& visit, auto& endpointOrPacket) requires requires {
    endpointOrPacket.Dir;
}
{
    visit("X", endpointOrPacket.X);
    visit("Y", endpointOrPacket.Y);
    visit("Dir", endpointOrPacket.Dir);
    if constexpr (requires { endpointOrPacket.DelayTicks; }) {
        visit("Corrupted", endpointOrPacket.Corrupted);
        visit("DelayTicks", endpointOrPacket.DelayTicks);
    }
}

template <typename Visitor>
void VisitMembers(Visitor& visit, auto& run) requires requires {
    run.Revision;
}
{
    visit("Revision", run.Revision);
    visit("AccumulatorMs", run.AccumulatorMs);
    visit("CursorX", run.CursorX);
    visit("CursorY", run.CursorY);
    visit("PreviewRotation", run.PreviewRotation);
    visit("Tick", run.Tick);
    visit("SpawnIntervalTicks", run.SpawnIntervalTicks);
    visit("VirusSpreadIntervalTicks", run.VirusSpreadIntervalTicks);
    visit("NextSpawnTick", run.NextSpawnTick);
    visit("PacketGraceTicks", run.PacketGraceTicks);
    visit("VirusGraceTicks", run.VirusGraceTicks);
    visit("PacketGraceRemaining", run.PacketGraceRemaining);
    visit("VirusGraceRemaining", run.VirusGraceRemaining);
    visit("VirusActiveTicks", run.VirusActiveTicks);
    visit("Level", run.Level);
    visit("TotalScore", run.TotalScore);
    visit("LevelTargetPackets", run.LevelTargetPackets);
    visit("FailureThreshold", run.FailureThreshold);
    visit("LostPackets", run.LostPackets);
    visit("CorruptedPackets", run.CorruptedPackets);
    visit("DeliveredPackets", run.DeliveredPackets);
    visit("GameOver", run.GameOver);
    visit("Seed", run.Seed);
    visit("GridWidth", run.GridWidth);
    visit("GridHeight", run.GridHeight);
    visit("RandomState", run.RandomState);
    visit("TileQueue", run.TileQueue);
    visit("Tiles", run.Tiles);
    visit("Sources", run.Sources);
    visit("Sinks", run.Sinks);
    visit("Packets", run.Packets);
}

// MessagePack, packed value by value and unpacked into the library's own objects.

struct CountMembers {
    std::uint32_t Count = 0;
    template <typename Value>
    void operator()(const char* /*key*/, const Value& /*value*/) {
        ++Count;
    }
};

struct MsgPackWriter {
    msgpack::packer<msgpack::sbuffer>& Packer;

    template <typename Value>
    void operator()(std::string_view key, const Value& value) {
        Packer.pack(key);
        Write(value);
    }
    template <typename Value>
    void Write(const Value& value) {
        if constexpr (std::is_arithmetic_v<Value> || std::is_same_v<Value, std::string>) {
            Packer.pack(value);
        } else if constexpr (requires { value.begin(); }) {
            Packer.pack_array(static_cast<std::uint32_t>(value.size()));
            for (const auto& element : value) {
                Write(element);
            }
        } else {
            CountMembers count;
            VisitMembers(count, value);
            Packer.pack_map(count.Count);
            VisitMembers(*this, value);
        }
    }
};

template <typename Value>
void FromMsgPack(const msgpack::object& object, Value& value);

struct MsgPackReader {
    const msgpack::object_map& Map;

    // The members stand in the order in which they are asked for.
    std::uint32_t Next = 0;
    template <typename Value>
    void operator()(std::string_view key, Value& value) {
        const msgpack::object_kv& pair = Map.ptr[Next++];
        if (pair.key.as<std::string_view>() != key) {
            std::abort();
        }
        FromMsgPack(pair.val, value);
    }
};

template <typename Value>
void FromMsgPack(const msgpack::object& object, Value& value) {
    if constexpr (std::is_arithmetic_v<Value> || std::is_same_v<Value, std::string>) {
        object.convert(value);
    } else if constexpr (requires { value.begin(); }) {
        const msgpack::object_array& array = object.via.array;
        if constexpr (requires { value.resize(0); }) {
            value.resize(array.size);
        }
        for (std::uint32_t i = 0; i < array.size; ++i) {
            FromMsgPack(array.ptr[i], value[i]);
        }
    } else {
        MsgPackReader reader{object.via.map};
        VisitMembers(reader, value);
    }
}

Bytes EncodeMsgPack(const SaveDocument& document) {
    msgpack::sbuffer buffer;
    msgpack::packer<msgpack::sbuffer> packer(buffer);
    packer.pack_map(3);
    packer.pack("FormatVersion");
    packer.pack(1);
    packer.pack("HasRunState");
    packer.pack(true);
    packer.pack("RunState");
    MsgPackWriter{packer}.Write(document);
    return {buffer.data(), buffer.data() + buffer.size()};
}

SaveDocument DecodeMsgPack(const Bytes& bytes) {
    const msgpack::object_handle handle =
        msgpack::unpack(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    SaveDocument document;
    FromMsgPack(handle.get().via.map.ptr[2].val, document);
    return document;
}

// CBOR, through the JSON value of its library.

template <typename Value>
Json ToJson(const Value& value) {
    if constexpr (std::is_arithmetic_v<Value> || std::is_same_v<Value, std::string>) {
        return value;
    } else if constexpr (requires { value.begin(); }) {
        Json array = Json::array();
        for (const auto& element : value) {
            array.push_back(ToJson(element));
        }
        return array;
    } else {
        Json object = Json::object();
        const auto add = [&object](const char* key, const auto& member) {
            object[key] = ToJson(member);
        };
        VisitMembers(add, value);
        return object;
    }
}

template <typename Value>
void FromJson(const Json& json, Value& value) {
    if constexpr (std::is_arithmetic_v<Value> || std::is_same_v<Value, std::string>) {
        json.get_to(value);
    } else if constexpr (requires { value.begin(); }) {
        if constexpr (requires { value.resize(0); }) {
            value.resize(json.size());
        }
        for (std::size_t i = 0; i < json.size(); ++i) {
            FromJson(json[i], value[i]);
        }
    } else {
        const auto take = [&json](const char* key, auto& member) {
            FromJson(json.at(key), member);
        };
        VisitMembers(take, value);
    }
}

Bytes EncodeCbor(const SaveDocument& document) {
    Json root = Json::object();
    root["FormatVersion"] = 1;
    root["HasRunState"] = true;
    root["RunState"] = ToJson(document);
    return Json::to_cbor(root);
}

SaveDocument DecodeCbor(const Bytes& bytes) {
    SaveDocument document;
    FromJson(Json::from_cbor(bytes).at("RunState"), document);
    return document;
}

SaveDocument DecodeTagged(const std::string& path) {
    TaggedReader reader;
    reader.LoadFile(path);
    return std::move(ReadSavedGame(reader).Run);
}

// A level-12 run on a board that has been played on, and a folder to write to.
class Level12 : public benchmark::Fixture {
public:
    void SetUp(benchmark::State& /*state*/) override { Testing::StartSampleRun(12, 12, 300); }

protected:
    static void WriteBytes(const std::string& path, const Bytes& bytes) {
        const FileHandle file(std::fopen(path.c_str(), "wb"));
        if (std::fwrite(bytes.data(), 1, bytes.size(), file.get()) != bytes.size()) {
            throw std::runtime_error("The sample cannot be written.");
        }
    }

    static Bytes ReadBytes(const std::string& path) {
        TaggedReader reader;
        reader.LoadFile(path);
        return std::move(reader.Buffer);
    }

    // Reads, decodes and installs the file in a loop, after a check that nothing gets lost.
    template <typename Decode>
    void Install(benchmark::State& state, Decode decode) {
        if (decode() != MakeSaveDocument()) {
            state.SkipWithError("The document does not come back");
        }
        for (auto _ : state) {
            if (!InstallSaveDocument(App, decode())) {
                state.SkipWithError("The document is refused");
            }
        }
        state.counters["bytes"] = static_cast<double>(std::filesystem::file_size(File));
    }

    Testing::TemporaryFolder Folder;
    std::string File = Folder.File("save");
    GameApp App;
};

BENCHMARK_F(Level12, WriteTagged)(benchmark::State& state) {
    for (auto _ : state) {
        const SaveDocument document = MakeSaveDocument();
        TaggedWriter writer;
        writer.OpenForWriting(File);
        WriteSaveDocument(writer, &document);
        writer.Close();
    }
}

BENCHMARK_F(Level12, WriteMsgPack)(benchmark::State& state) {
    for (auto _ : state) {
        WriteBytes(File, EncodeMsgPack(MakeSaveDocument()));
    }
}

BENCHMARK_F(Level12, WriteCbor)(benchmark::State& state) {
    for (auto _ : state) {
        WriteBytes(File, EncodeCbor(MakeSaveDocument()));
    }
}

BENCHMARK_F(Level12, ReadTagged)(benchmark::State& state) {
    const SaveDocument document = MakeSaveDocument();
    TaggedWriter writer;
    writer.OpenForWriting(File);
    WriteSaveDocument(writer, &document);
    writer.Close();
    Install(state, [this] { return DecodeTagged(File); });
}

BENCHMARK_F(Level12, ReadMsgPack)(benchmark::State& state) {
    WriteBytes(File, EncodeMsgPack(MakeSaveDocument()));
    Install(state, [this] { return DecodeMsgPack(ReadBytes(File)); });
}

BENCHMARK_F(Level12, ReadCbor)(benchmark::State& state) {
    WriteBytes(File, EncodeCbor(MakeSaveDocument()));
    Install(state, [this] { return DecodeCbor(ReadBytes(File)); });
}

// The heaviest run that a file can bring, from the file to the first frame of play on the screen.
BENCHMARK_F(Level12, FirstFrameOfTheHeaviestSave)(benchmark::State& state) {
    const SaveDocument document = Testing::HeaviestDocument();
    TaggedWriter writer;
    writer.OpenForWriting(File);
    WriteSaveDocument(writer, &document);
    writer.Close();
    const Testing::SoftwareCanvas canvas;
    for (auto _ : state) {
        if (!InstallSaveDocument(App, DecodeTagged(File))) {
            state.SkipWithError("The document is refused");
        }
        SetFastForward(true);
        AdvanceSimulation(MaxFrameMs);
        DrawBoardScreen(canvas.Renderer(), LogicalWidth, LogicalHeight);
        SDL_FlushRenderer(canvas.Renderer());
    }
    state.counters["packets"] = static_cast<double>(LiveRun().Packets.size());
}

// As much of one kind of line as an options file may have.
void LoadLongestOptions(benchmark::State& state, const char* line) {
    const Testing::UserFolder user;
    std::string text = "[Options]\n";
    while (text.size() < std::size_t{256} * 1024) {
        text += line;
    }
    user.Create();
    Testing::WriteFileText(user.File("Config.ini"), text);
    GameApp app;
    for (auto _ : state) {
        benchmark::DoNotOptimize(LoadOptions(app));
    }
}
BENCHMARK_CAPTURE(LoadLongestOptions, BlankLines, "\n")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(LoadLongestOptions, Elements, "a[]=1\n")->Unit(benchmark::kMillisecond);

// The whole of a save as the frame loop sees it: staged, handed to the storage, cleaned up.
// A frame that saves, as most do and as those do that have it on the disk when they are done.
void SaveInAFrame(benchmark::State& state, GameApp& app, bool forced) {
    const Testing::UserFolder user;
    app.HasSavedRun = true;
    for (auto _ : state) {
        app.LastForcedTicks = ClockMs();
        app.ForceNextSave = forced;
        RequestSave(app, 0.001F);
        SaveTick(app, 0.016F);
        if (app.SaveDirty) {
            state.SkipWithError("The save has failed");
        }
    }
}

BENCHMARK_F(Level12, SaveTickThatWrites)(benchmark::State& state) {
    SaveInAFrame(state, App, false);
}

// Waiting for the disk takes no processor time.
BENCHMARK_DEFINE_F(Level12, SaveTickThatForcesToDisk)(benchmark::State& state) {
    SaveInAFrame(state, App, true);
}
BENCHMARK_REGISTER_F(Level12, SaveTickThatForcesToDisk)->UseRealTime();

BENCHMARK_F(Level12, SaveTickWithNothingToDo)(benchmark::State& state) {
    for (auto _ : state) {
        SaveTick(App, 0.016F);
        benchmark::DoNotOptimize(App);
    }
}

BENCHMARK_F(Level12, SaveTickThatWaits)(benchmark::State& state) {
    RequestSave(App, 1e30F);
    for (auto _ : state) {
        SaveTick(App, 0.016F);
        benchmark::DoNotOptimize(App);
    }
}

} // namespace
} // namespace Wirefall

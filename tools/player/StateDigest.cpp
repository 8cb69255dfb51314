#include "player/StateDigest.h"

#include <type_traits>
#include <vector>

namespace Wirefall {

namespace {

class Fnv1a {
public:
    template <typename Number>
    void Add(Number number) {
        if constexpr (std::is_same_v<Number, bool>) {
            AddBytes(number ? 1 : 0, 1);
        } else if constexpr (std::is_enum_v<Number>) {
            Add(static_cast<std::underlying_type_t<Number>>(number));
        } else {
            AddBytes(static_cast<std::make_unsigned_t<Number>>(number), sizeof(Number));
        }
    }
    std::uint64_t Value() const { return Hash; }

private:
    void AddBytes(std::uint64_t value, std::size_t count) {
        for (std::size_t byte = 0; byte < count; ++byte, value >>= 8) {
            Hash = (Hash ^ (value & 0xff)) * 0x100000001b3;
        }
    }

    std::uint64_t Hash = 0xcbf29ce484222325;
};

void AddElement(Fnv1a& hash, const Tile& tile) {
    hash.Add(tile.Type);
    hash.Add(tile.Connections);
    hash.Add(tile.VirusInfected);
    hash.Add(tile.OccupiedBySource);
    hash.Add(tile.OccupiedBySink);
    hash.Add(tile.Consumed);
    hash.Add(tile.CooldownTicks);
}

void AddElement(Fnv1a& hash, const Packet& packet) {
    hash.Add(packet.X);
    hash.Add(packet.Y);
    hash.Add(packet.Dir);
    hash.Add(packet.Corrupted);
    hash.Add(packet.DelayTicks);
}

void AddElement(Fnv1a& hash, const Endpoint& endpoint) {
    hash.Add(endpoint.X);
    hash.Add(endpoint.Y);
    hash.Add(endpoint.Dir);
}

template <typename Element>
std::uint64_t HashOf(const std::vector<Element>& list) {
    Fnv1a hash;
    hash.Add(static_cast<std::uint32_t>(list.size()));
    for (const Element& element : list) {
        AddElement(hash, element);
    }
    return hash.Value();
}

std::uint64_t HashOf(const std::array<TileType, 3>& queue) {
    Fnv1a hash;
    for (const TileType type : queue) {
        hash.Add(type);
    }
    return hash.Value();
}

std::uint64_t HashOf(const MersenneTwister& engine) {
    Fnv1a hash;
    for (const std::uint32_t word : engine.Words) {
        hash.Add(word);
    }
    hash.Add(engine.Position);
    return hash.Value();
}

template <typename Member>
std::uint64_t NumberOf(const Member& member) {
    if constexpr (std::is_same_v<Member, bool>) {
        return member ? 1 : 0;
    } else if constexpr (std::is_arithmetic_v<Member>) {
        using Wide = std::conditional_t<std::is_signed_v<Member>, std::int64_t, std::uint64_t>;
        return static_cast<std::uint64_t>(static_cast<Wide>(member));
    } else {
        return HashOf(member);
    }
}

struct FieldRow {
    std::string_view Name;
    Course How;
    bool IsNumber;
    std::uint64_t (*Read)(const Simulation& simulation);
    // Whether a list or record is the same in both; never for a number.
    bool (*IsSame)(const RunState& a, const RunState& b);
};

template <auto Member>
constexpr FieldRow OfRun(std::string_view name, Course how = Course::Steady) {
    using Type = std::remove_cvref_t<decltype(std::declval<RunState>().*Member)>;
    return {name, how, std::is_arithmetic_v<Type>,
            [](const Simulation& simulation) { return NumberOf(simulation.Run.*Member); },
            [](const RunState& a, const RunState& b) {
                return !std::is_arithmetic_v<Type> && a.*Member == b.*Member;
            }};
}

template <auto Member>
constexpr FieldRow OfSimulation(std::string_view name, Course how = Course::Steady) {
    return {name, how, true,
            [](const Simulation& simulation) { return NumberOf(simulation.*Member); },
            [](const RunState&, const RunState&) { return false; }};
}

// In the order of declaration, but for the counters that follow from the rest, which come last: the
// first field that differs should be near the cause.
constexpr std::array<FieldRow, StateFieldCount> Fields = {{
    OfRun<&RunState::GridWidth>("GridWidth"),
    OfRun<&RunState::GridHeight>("GridHeight"),
    OfRun<&RunState::Tiles>("Tiles"),
    OfRun<&RunState::Packets>("Packets"),
    OfRun<&RunState::Sources>("Sources"),
    OfRun<&RunState::Sinks>("Sinks"),
    OfRun<&RunState::TileQueue>("TileQueue"),
    OfRun<&RunState::CursorX>("CursorX"),
    OfRun<&RunState::CursorY>("CursorY"),
    OfRun<&RunState::PreviewRotation>("PreviewRotation"),
    OfRun<&RunState::Level>("Level"),
    OfRun<&RunState::TotalScore>("TotalScore"),
    OfRun<&RunState::LevelTargetPackets>("LevelTargetPackets"),
    OfRun<&RunState::FailureThreshold>("FailureThreshold"),
    OfRun<&RunState::Tick>("Tick", Course::Linear),
    OfRun<&RunState::SpawnIntervalTicks>("SpawnIntervalTicks"),
    OfRun<&RunState::VirusSpreadIntervalTicks>("VirusSpreadIntervalTicks"),
    OfRun<&RunState::NextSpawnTick>("NextSpawnTick"),
    OfRun<&RunState::PacketGraceTicks>("PacketGraceTicks"),
    OfRun<&RunState::VirusGraceTicks>("VirusGraceTicks"),
    OfRun<&RunState::PacketGraceRemaining>("PacketGraceRemaining", Course::Linear),
    OfRun<&RunState::VirusGraceRemaining>("VirusGraceRemaining", Course::Linear),
    OfRun<&RunState::VirusActiveTicks>("VirusActiveTicks", Course::Linear),
    OfRun<&RunState::LostPackets>("LostPackets"),
    OfRun<&RunState::CorruptedPackets>("CorruptedPackets"),
    OfRun<&RunState::DeliveredPackets>("DeliveredPackets"),
    OfRun<&RunState::GameOver>("GameOver"),
    OfRun<&RunState::FastForward>("FastForward"),
    OfRun<&RunState::Seed>("Seed"),
    OfRun<&RunState::RandomEngine>("RandomEngine"),
    OfSimulation<&Simulation::AccumulatorMs>("AccumulatorMs"),
    OfSimulation<&Simulation::Revision>("Revision", Course::Linear),
    OfSimulation<&Simulation::RunInitialised>("RunInitialised"),
}};

} // namespace

std::string_view StateFieldName(std::size_t field) { return Fields.at(field).Name; }

Course StateFieldCourse(std::size_t field) { return Fields.at(field).How; }

bool StateFieldIsNumber(std::size_t field) { return Fields.at(field).IsNumber; }

StateDigest DigestOf(const Simulation& simulation) {
    StateDigest digest{};
    for (std::size_t field = 0; field < StateFieldCount; ++field) {
        digest[field] = Fields[field].Read(simulation);
    }
    return digest;
}

StateDigest Digester::Next(const Simulation& simulation) {
    for (std::size_t field = 0; field < StateFieldCount; ++field) {
        if (!HasLast || !Fields[field].IsSame(simulation.Run, LastRun)) {
            LastDigest[field] = Fields[field].Read(simulation);
        }
    }
    LastRun = simulation.Run;
    HasLast = true;
    return LastDigest;
}

std::uint64_t ChecksumOf(const StateDigest& digest) {
    Fnv1a hash;
    for (const std::uint64_t number : digest) {
        hash.Add(number);
    }
    return hash.Value();
}

} // namespace Wirefall

#include "player/Trace.h"

#include <algorithm>

namespace Wirefall {

namespace {

constexpr std::string_view Magic = "WFTRACE1";
constexpr std::uint8_t LastOfStep = 0x80;
constexpr std::uint8_t NoMarks = 0xff;
constexpr std::uint8_t EndOfTrace = 0xfe;

static_assert(StateFieldCount < 0x7e, "Places of fields and the two special bytes stay apart");

std::uint16_t Fold(std::uint64_t number) {
    std::uint64_t hash = 0xcbf29ce484222325;
    for (int byte = 0; byte < 8; ++byte, number >>= 8) {
        hash = (hash ^ (number & 0xff)) * 0x100000001b3;
    }
    return static_cast<std::uint16_t>(hash ^ (hash >> 16) ^ (hash >> 32) ^ (hash >> 48));
}

void AppendNumber(std::string& bytes, std::uint64_t number, int size) {
    for (int byte = 0; byte < size; ++byte, number >>= 8) {
        bytes += static_cast<char>(static_cast<std::uint8_t>(number));
    }
}

void AppendMarks(std::string& bytes, const std::vector<TraceMark>& marks) {
    for (const TraceMark& mark : marks) {
        const bool last = &mark == &marks.back();
        AppendNumber(bytes, mark.Field | (last ? LastOfStep : 0U), 1);
        AppendNumber(bytes, mark.Folded, 2);
    }
    if (marks.empty()) {
        AppendNumber(bytes, NoMarks, 1);
    }
}

class TraceReader {
public:
    explicit TraceReader(std::string_view trace) : Bytes(trace) {
        if (!Bytes.starts_with(Magic)) {
            throw PlayError("this is no trace");
        }
        Bytes.remove_prefix(Magic.size());
    }

    bool AtEnd() const { return Bytes.empty() || Byte(0) == EndOfTrace; }

    std::vector<TraceMark> TakeStep() {
        std::vector<TraceMark> marks;
        if (Byte(0) == NoMarks) {
            Bytes.remove_prefix(1);
            return marks;
        }
        bool last = false;
        while (!last) {
            last = (Byte(0) & LastOfStep) != 0;
            const auto field = static_cast<std::uint8_t>(Byte(0) & ~LastOfStep);
            if (field >= StateFieldCount) {
                throw PlayError("the trace is damaged");
            }
            marks.push_back({field, static_cast<std::uint16_t>(TakeNumber(1, 2))});
        }
        return marks;
    }

    std::uint64_t TakeChecksum() { return TakeNumber(1, 8); }

private:
    std::uint8_t Byte(std::size_t index) const {
        if (index >= Bytes.size()) {
            throw PlayError("the trace is cut short");
        }
        return static_cast<std::uint8_t>(Bytes[index]);
    }

    std::uint64_t TakeNumber(std::size_t start, std::size_t size) {
        std::uint64_t number = 0;
        for (std::size_t byte = 0; byte < size; ++byte) {
            number |= std::uint64_t{Byte(start + byte)} << (8 * byte);
        }
        Bytes.remove_prefix(start + size);
        return number;
    }

    std::string_view Bytes;
};

bool Holds(const std::vector<TraceMark>& marks, const TraceMark& mark) {
    return std::ranges::find(marks, mark) != marks.end();
}

// The fields of which one has a mark that the other has not.
std::vector<std::size_t> DifferingFields(const std::vector<TraceMark>& a,
                                         const std::vector<TraceMark>& b) {
    std::vector<std::size_t> fields;
    const auto collect = [&fields](const std::vector<TraceMark>& from,
                                   const std::vector<TraceMark>& other) {
        for (const TraceMark& mark : from) {
            if (!Holds(other, mark)) {
                fields.push_back(mark.Field);
            }
        }
    };
    collect(a, b);
    collect(b, a);
    std::ranges::sort(fields);
    fields.erase(std::unique(fields.begin(), fields.end()), fields.end());
    return fields;
}

std::uint64_t NumberOfField(const StateDigest& digest, std::string_view name) {
    std::size_t field = 0;
    while (StateFieldName(field) != name) {
        ++field;
    }
    return digest[field];
}

} // namespace

std::vector<TraceMark> Forecaster::Next(const StateDigest& digest) {
    std::vector<TraceMark> marks;
    for (std::size_t field = 0; field < StateFieldCount; ++field) {
        const std::uint64_t change = digest[field] - Last[field];
        const std::uint64_t foretold =
            StateFieldCourse(field) == Course::Linear ? Change[field] : 0;
        if (change != foretold) {
            marks.push_back({static_cast<std::uint8_t>(field), Fold(digest[field])});
        }
        Change[field] = change;
    }
    Last = digest;
    return marks;
}

std::string MakeTrace(const std::vector<PlayCommand>& play) {
    std::string trace(Magic);
    Forecaster forecaster;
    Digester digester;
    PlayReader reader(play);
    while (reader.RunStep()) {
        AppendMarks(trace, forecaster.Next(digester.Next(LiveSimulation())));
    }
    AppendNumber(trace, EndOfTrace, 1);
    AppendNumber(trace, ChecksumOf(DigestOf(LiveSimulation())), 8);
    return trace;
}

std::optional<TraceDifference> CompareWithTrace(const std::vector<PlayCommand>& play,
                                                std::string_view trace) {
    TraceReader expected(trace);
    TraceDifference difference;
    Forecaster forecaster;
    Digester digester;
    PlayReader reader(play);
    while (reader.RunStep()) {
        ++difference.Step;
        difference.State = digester.Next(LiveSimulation());
        if (expected.AtEnd()) {
            return difference;
        }
        difference.Fields = DifferingFields(forecaster.Next(difference.State), expected.TakeStep());
        if (!difference.Fields.empty()) {
            return difference;
        }
    }
    ++difference.Step;
    difference.State = DigestOf(LiveSimulation());
    if (!expected.AtEnd() || expected.TakeChecksum() != ChecksumOf(difference.State)) {
        return difference;
    }
    return std::nullopt;
}

std::string Describe(const TraceDifference& difference) {
    const StateDigest& state = difference.State;
    std::string text = "step " + std::to_string(difference.Step) + " (level " +
                       std::to_string(NumberOfField(state, "Level")) + ", tick " +
                       std::to_string(NumberOfField(state, "Tick")) + "): ";
    if (difference.Fields.empty()) {
        return text + "the play and the trace end differently";
    }
    const std::size_t first = difference.Fields.front();
    text += std::string(StateFieldName(first)) + " differs";
    if (StateFieldIsNumber(first)) {
        text += ", here it is " + std::to_string(static_cast<std::int64_t>(state[first]));
    }
    for (std::size_t i = 1; i < difference.Fields.size(); ++i) {
        text += (i == 1 ? "; so do " : ", ") + std::string(StateFieldName(difference.Fields[i]));
    }
    return text;
}

} // namespace Wirefall

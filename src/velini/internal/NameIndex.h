#pragma once

// Finds records by name in a list that grows only at its end, in a time that does not depend on the
// length of the list. The reader keeps one for each list that it fills, for as long as it reads; no
// index outlives the reading, so none can go stale when a caller edits the records.
//
// A hash table with open addressing: each slot has the hash of a name and the position of its first
// record. A short list has no table and is walked.

#include <bit>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

namespace velINI::Internal {

template <class Record>
class NameIndex {
public:
    /// Position of the first record of that name. When there is none it is the size of the list,
    /// and the caller must append a record of that name before it asks again.
    std::size_t Locate(const std::vector<Record>& records, std::string_view name) {
        if (slots_.empty()) {
            if (records.size() < LongestWalk) {
                return Walk(records, name);
            }
            Build(records);
        }
        return Probe(records, name, records.size());
    }

    /// How many pairs of names were compared so far: the measure of the work done.
    std::size_t Comparisons() const { return comparisons_; }

private:
    static constexpr std::size_t LongestWalk = 8;
    static constexpr std::uint32_t Free = static_cast<std::uint32_t>(-1);

    struct Slot {
        std::uint32_t Hash = 0;
        std::uint32_t Position = Free;
    };

    std::size_t Walk(const std::vector<Record>& records, std::string_view name) {
        std::size_t position = 0;
        while (position < records.size() && !SameName(records[position], name)) {
            ++position;
        }
        return position;
    }

    void Build(const std::vector<Record>& records) {
        slots_.resize(std::bit_ceil(2 * records.capacity()));
        for (std::size_t position = 0; position < records.size(); ++position) {
            Probe(records, records[position].Name, position);
        }
    }

    /// The position that the name has in the table, which becomes `position` when it has none.
    std::size_t Probe(const std::vector<Record>& records, std::string_view name,
                      std::size_t position) {
        const auto hash = static_cast<std::uint32_t>(std::hash<std::string_view>()(name));
        std::size_t at = hash & (slots_.size() - 1);
        while (slots_[at].Position != Free) {
            if (slots_[at].Hash == hash && SameName(records[slots_[at].Position], name)) {
                return slots_[at].Position;
            }
            at = (at + 1) & (slots_.size() - 1);
        }
        slots_[at] = {hash, static_cast<std::uint32_t>(position)};
        ++used_;
        if (2 * used_ > slots_.size()) {
            Grow();
        }
        return position;
    }

    void Grow() {
        std::vector<Slot> grown(2 * slots_.size());
        for (const Slot& slot : slots_) {
            if (slot.Position != Free) {
                std::size_t at = slot.Hash & (grown.size() - 1);
                while (grown[at].Position != Free) {
                    at = (at + 1) & (grown.size() - 1);
                }
                grown[at] = slot;
            }
        }
        slots_.swap(grown);
    }

    bool SameName(const Record& record, std::string_view name) {
        ++comparisons_;
        return record.Name == name;
    }

    std::vector<Slot> slots_; // empty, or a power of two of them
    std::size_t used_ = 0;
    std::size_t comparisons_ = 0;
};

} // namespace velINI::Internal

#pragma once

// Finds records by name in a list that grows only at its end, in a time that does not depend on the
// length of the list. The reader keeps one for each list that it fills, for as long as it reads; no
// index outlives the reading, so none can go stale when a caller edits the records.
//
// A hash table with open addressing and linear probing. Each slot has a tag, seven bits of the
// hash, and the position of a record. The tags lie by themselves: most names of a file are new, and
// to see that, a look at the tags is nearly always enough, which are few bytes and stay in the
// cache where the records and their positions would not.

#include <bit>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <stdexcept>
#include <string_view>
#include <vector>

namespace velINI::Internal {

template <class Record>
class NameIndex {
public:
    /// Position of the first record of that name. When there is none it is the size of the list,
    /// and the caller must append a record of that name before it asks again.
    ///
    /// Adds to `comparisons` how many pairs of names were compared: the measure by which tests see
    /// that this does not grow with the list.
    std::size_t Locate(const std::vector<Record>& records, std::string_view name,
                       std::size_t& comparisons) {
        if (tags_.empty()) {
            if (records.size() < LongestWalk) {
                return Walk(records, name, comparisons);
            }
            Build(records, records.capacity(), comparisons);
        } else if (2 * used_ >= tags_.size()) {
            Build(records, 2 * records.size(), comparisons);
        }
        return Probe(records, name, records.size(), comparisons);
    }

    /// Makes the index ready for another list.
    void Clear() {
        tags_.clear();
        used_ = 0;
    }

private:
    /// Shorter lists have no table.
    static constexpr std::size_t LongestWalk = 8;

    static constexpr std::uint8_t FreeTag = 0;

    /// Half the size of the records' own count, for the sake of the cache.
    using Position = std::uint32_t;

    static std::size_t Walk(const std::vector<Record>& records, std::string_view name,
                            std::size_t& comparisons) {
        for (std::size_t position = 0; position < records.size(); ++position) {
            ++comparisons;
            if (records[position].Name == name) {
                return position;
            }
        }
        return records.size();
    }

    void Build(const std::vector<Record>& records, std::size_t room, std::size_t& comparisons) {
        if (room > std::numeric_limits<Position>::max()) {
            throw std::length_error("A list has too many records!");
        }
        const std::size_t slots = std::bit_ceil(2 * room + 1);
        Clear();
        tags_.resize(slots, FreeTag);
        positions_.resize(slots);
        for (std::size_t position = 0; position < records.size(); ++position) {
            Probe(records, records[position].Name, position, comparisons);
        }
    }

    /// The position that the name has in the table, which becomes `position` when it has none.
    std::size_t Probe(const std::vector<Record>& records, std::string_view name,
                      std::size_t position, std::size_t& comparisons) {
        const std::size_t hash = std::hash<std::string_view>()(name);
        const auto tag = static_cast<std::uint8_t>(
            0x80U | hash >> (std::numeric_limits<std::size_t>::digits - 7));
        const std::size_t lastSlot = tags_.size() - 1;
        std::size_t slot = hash & lastSlot;
        while (tags_[slot] != FreeTag) {
            if (tags_[slot] == tag) {
                ++comparisons;
                if (records[positions_[slot]].Name == name) {
                    return positions_[slot];
                }
            }
            slot = (slot + 1) & lastSlot;
        }
        tags_[slot] = tag;
        positions_[slot] = static_cast<Position>(position);
        ++used_;
        return position;
    }

    std::vector<std::uint8_t> tags_;  // a power of two of them, no more than half of them used
    std::vector<Position> positions_; // at least as many; those of free tags mean nothing
    std::size_t used_ = 0;
};

} // namespace velINI::Internal

#pragma once

// Finds records by name in a list, in a time that does not depend on the length of the list. Each
// list has an index of its own that stands beside it and builds itself when a long list is asked
// for a name. It stays right whatever callers do to the records: names tell when they change, what
// is appended is noticed by the length of the list, and a list put in the place of another by where
// it lies. An index that is out of date is built anew.
//
// A hash table with open addressing and linear probing. Each slot has a tag, seven bits of the
// hash, and the position of a record. The tags lie by themselves: most names of a file are new, and
// to see that, a look at the tags is nearly always enough, which are few bytes and stay in the
// cache where the records and their positions would not.

#include "velini/IniName.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <string_view>
#include <vector>

namespace velINI::Internal {

/// SipHash-1-3 (Aumasson and Bernstein, 2012) under a key that each process draws at random. Who
/// does not know the key cannot make up names that have equal hashes.
std::uint64_t NameHash(std::string_view name);

/// What the automatic numbering of an array has learned of the elements so far.
struct ElementNumbers {
    std::size_t Seen = 0;
    long Largest = 0;
};

class NameIndex {
public:
    NameIndex() noexcept = default;
    /// A copy of a list gets an index of its own when it is asked for a name.
    NameIndex(const NameIndex&) noexcept {}
    NameIndex(NameIndex&&) noexcept = default;
    NameIndex& operator=(const NameIndex& other) noexcept;
    NameIndex& operator=(NameIndex&&) noexcept = default;
    ~NameIndex() = default;

    /// Position of the first record of that name, the size of the list when there is none. Adds to
    /// `comparisons` how many pairs of names were compared: the measure by which tests see that
    /// this does not grow with the list.
    template <class Record>
    std::size_t Locate(std::vector<Record>& records, std::string_view name,
                       std::size_t& comparisons) {
        if (records.size() < LongestWalk || !Update(records, comparisons)) {
            return Walk(records, name, 0, comparisons);
        }
        Table->MissedHash = NameHash(name);
        const std::size_t slot = Table->SlotOf(records, name, Table->MissedHash, comparisons);
        return Table->Tags[slot] == FreeTag ? records.size() : Table->Positions[slot];
    }

    /// The same without building an index or bringing it up to date: what it does not know is
    /// looked for from record to record.
    template <class Record>
    std::size_t Find(const std::vector<Record>& records, std::string_view name) const {
        std::size_t comparisons = 0;
        if (!IsValid(records)) {
            return Walk(records, name, 0, comparisons);
        }
        const std::size_t slot = Table->SlotOf(records, name, NameHash(name), comparisons);
        return Table->Tags[slot] == FreeTag ? Walk(records, name, Table->Known, comparisons)
                                            : Table->Positions[slot];
    }

    /// To be called when the name that was located last, in vain, has become that of a new last
    /// record: Refresh, without hashing it again.
    template <class Record>
    void Appended(std::vector<Record>& records) {
        if (IsValid(records) && Table->Known + 1 == records.size() && Table->HasRoom()) {
            std::size_t comparisons = 0;
            Add(records, Table->MissedHash, comparisons);
        } else {
            Refresh(records);
        }
    }

    /// Brings the index up to date before anyone asks, for lookups that cannot do it themselves.
    template <class Record>
    void Refresh(std::vector<Record>& records) {
        std::size_t comparisons = 0;
        if (records.size() >= LongestWalk) {
            Update(records, comparisons);
        }
    }

    /// What numbering knows of the list; nothing of one that has no index, or no longer.
    template <class Record>
    ElementNumbers* Numbers(const std::vector<Record>& records) {
        return IsValid(records) ? &Table->Numbers : nullptr;
    }

    /// Documents are equal or not whatever their indexes know.
    friend bool operator==(const NameIndex&, const NameIndex&) { return true; }

private:
    /// Shorter lists have no table.
    static constexpr std::size_t LongestWalk = 12;

    static constexpr std::uint8_t FreeTag = 0;

    /// Half the size of the records' own count, for the sake of the cache.
    using Position = std::uint32_t;

    struct HashTable {
        HashTable();
        HashTable(const HashTable&) = delete;
        HashTable& operator=(const HashTable&) = delete;
        ~HashTable();

        bool HasRoom() const { return 2 * Known < Tags.size(); }

        /// The slot of the first record of that name, or the free one where it would be.
        template <class Record>
        std::size_t SlotOf(const std::vector<Record>& records, std::string_view name,
                           std::uint64_t hash, std::size_t& comparisons) const {
            const std::size_t lastSlot = Tags.size() - 1;
            const std::uint8_t tag = TagOf(hash);
            std::size_t slot = hash & lastSlot;
            while (Tags[slot] != FreeTag) {
                if (Tags[slot] == tag) {
                    ++comparisons;
                    if (records[Positions[slot]].Name == name) {
                        break;
                    }
                }
                slot = (slot + 1) & lastSlot;
            }
            return slot;
        }

        NameWatch* Watch;
        const void* Records = nullptr; // where the list lay
        std::size_t Known = 0;         // how many records of it, from the first on, are indexed
        std::uint64_t MissedHash = 0;  // of the name that was located last
        ElementNumbers Numbers;
        std::vector<std::uint8_t> Tags;  // a power of two of them, no more than half of them used
        std::vector<Position> Positions; // as many; those of free tags mean nothing
    };

    static std::uint8_t TagOf(std::uint64_t hash) {
        return static_cast<std::uint8_t>(0x80U | hash >> 57);
    }

    template <class Record>
    static std::size_t Walk(const std::vector<Record>& records, std::string_view name,
                            std::size_t position, std::size_t& comparisons) {
        while (position < records.size()) {
            ++comparisons;
            if (records[position].Name == name) {
                break;
            }
            ++position;
        }
        return position;
    }

    /// Whether all is as it was, but for records that were appended.
    template <class Record>
    bool IsValid(const std::vector<Record>& records) const {
        return Table != nullptr && Table->Known != 0 && Table->Records == records.data() &&
               Table->Known <= records.size() &&
               !Table->Watch->Changed.load(std::memory_order_relaxed);
    }

    /// Makes the index know all records; false for a list that is too long to have one.
    template <class Record>
    bool Update(std::vector<Record>& records, std::size_t& comparisons) {
        if (records.capacity() > std::numeric_limits<Position>::max()) {
            return false;
        }
        if (!IsValid(records)) {
            Restart(records.data(), records.capacity());
        }
        while (Table->Known < records.size()) {
            if (!Table->HasRoom()) {
                Restart(records.data(), 2 * records.size());
            }
            Add(records, NameHash(records[Table->Known].Name), comparisons);
        }
        return true;
    }

    /// An empty table with room for so many records.
    void Restart(const void* records, std::size_t room);

    template <class Record>
    void Add(std::vector<Record>& records, std::uint64_t hash, std::size_t& comparisons) {
        IniName& name = records[Table->Known].Name;
        const std::size_t slot = Table->SlotOf(records, name, hash, comparisons);
        if (Table->Tags[slot] == FreeTag) {
            Table->Tags[slot] = TagOf(hash);
            Table->Positions[slot] = static_cast<Position>(Table->Known);
        }
        name.WatchFor(Table->Watch);
        ++Table->Known;
    }

    std::unique_ptr<HashTable> Table;
};

} // namespace velINI::Internal

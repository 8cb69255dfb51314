#include "velini/internal/NameIndex.h"

#include <bit>
#include <mutex>

namespace velINI::Internal {
namespace {

// The watches that no index uses. They are never freed, as names may tell of changes at any time.
struct FreeWatches {
    std::mutex Mutex;
    NameWatch* First = nullptr;
};

FreeWatches& Watches() {
    static FreeWatches& watches = *new FreeWatches; // outlives all static documents
    return watches;
}

NameWatch* TakeWatch() {
    FreeWatches& watches = Watches();
    const std::lock_guard lock(watches.Mutex);
    if (watches.First == nullptr) {
        return new NameWatch;
    }
    NameWatch* watch = watches.First;
    watches.First = watch->NextFree;
    watch->Changed.store(false, std::memory_order_relaxed);
    return watch;
}

void GiveBack(NameWatch* watch) {
    FreeWatches& watches = Watches();
    const std::lock_guard lock(watches.Mutex);
    watch->NextFree = watches.First;
    watches.First = watch;
}

} // namespace

NameIndex& NameIndex::operator=(const NameIndex& other) noexcept {
    if (this != &other) {
        Table.reset();
    }
    return *this;
}

NameIndex::HashTable::HashTable() : Watch(TakeWatch()) {}

NameIndex::HashTable::~HashTable() { GiveBack(Watch); }

void NameIndex::Restart(const void* records, std::size_t room) {
    if (Table == nullptr) {
        Table = std::make_unique<HashTable>();
    }
    const std::size_t slots = std::bit_ceil(2 * room + 1);
    Table->Known = 0;
    Table->Numbers = {};
    Table->Tags.assign(slots, FreeTag);
    Table->Positions.resize(slots);
    Table->Records = records;
    Table->Watch->Changed.store(false, std::memory_order_relaxed);
}

} // namespace velINI::Internal

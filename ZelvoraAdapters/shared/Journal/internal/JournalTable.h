#pragma once

#include "ZelvoraAdapters/shared/Journal/internal/JournalChange.h"
#include "ZelvoraPlatform/Foundation/Value.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

namespace zelvora::shared {

/// The values in memory that result from the records of a file, and how many bytes of the file they still need.
class JournalTable final {
public:
    struct Entry {
        platform::Value value;
        /// The live bytes of this value in the file. An estimate after an array dropped elements.
        std::uint64_t bytes = 0;
        /// Unique for each time that a value was set as a whole; extending an array does not change it.
        std::uint64_t version = 0;
    };

    struct SnapshotEntry {
        std::string key;
        Entry entry;
    };
    using Snapshot = std::vector<SnapshotEntry>;

    /// Valid until the key is removed.
    [[nodiscard]] Entry* find(std::string const& key);
    [[nodiscard]] platform::Value const* value(std::string const& key) const;

    /// Stores a value after its change was written. `found` is the result of `find` for the key.
    void commit(std::string const& key, Entry* found, platform::Value value, ChangeSize size);
    /// Accounts for a change of an entry that had so many elements, if it was an array, and leaves its value to the
    /// caller.
    void account(Entry& entry, ChangeSize size, std::size_t elements);
    void remove(std::string const& key);

    [[nodiscard]] std::uint64_t liveBytes() const { return m_liveBytes; }
    /// A copy of the entries. Values share their storage, so the cost depends only on the number of keys.
    [[nodiscard]] Snapshot snapshot() const;
    /// Replaces estimates by exact sizes, in the snapshot's order, once the snapshot was written to the file.
    void correctSizes(Snapshot const& snapshot, std::vector<std::uint64_t> const& exactBytes);

private:
    using Entries = std::unordered_map<std::string, Entry>;

    Entries m_entries;
    std::uint64_t m_liveBytes = 0;
    std::uint64_t m_lastVersion = 0;
};

}

#pragma once

#include "ZelvoraAdapters/shared/Journal/JournalChange.h"
#include "ZelvoraPlatform/Foundation/Value.h"

#include <cstdint>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace zelvora::shared {

/// What the records of a file add up to, and how much of the file that takes.
class JournalState final {
public:
    struct Entry {
        platform::Value value;
        /// How many bytes of the file are of use for this value. An estimate once an array lost elements.
        std::uint64_t bytes = 0;
        /// Which of the state's sets made this entry.
        std::uint64_t birth = 0;
    };

    struct SnapshotEntry {
        std::string key;
        Entry entry;
    };
    using Snapshot = std::vector<SnapshotEntry>;

    /// Valid until the key is removed.
    [[nodiscard]] Entry* find(std::string const& key);
    [[nodiscard]] platform::Value const* value(std::string const& key) const;

    /// All of the changes, or none where one does not fit, such as one that extends what is no array.
    [[nodiscard]] bool apply(std::vector<JournalChange> changes);
    /// Puts a value that was just written, with the change that was written for it. `found` is what `find` says of the
    /// key.
    void commit(std::string const& key, Entry* found, platform::Value value, ChangeSize size);
    void remove(std::string const& key);

    [[nodiscard]] std::uint64_t liveBytes() const { return m_liveBytes; }
    /// As it is now; values are shared, so this costs by the number of keys only.
    [[nodiscard]] Snapshot snapshot() const;
    /// Takes over the exact sizes of a snapshot that now stands in the file.
    void correctSizes(Snapshot const& snapshot, std::vector<std::uint64_t> const& exactBytes);

private:
    using Entries = std::unordered_map<std::string, Entry>;

    [[nodiscard]] bool fits(JournalChange const& change) const;
    void applyFitting(JournalChange& change);

    Entries m_entries;
    std::uint64_t m_liveBytes = 0;
    std::uint64_t m_births = 0;
};

}

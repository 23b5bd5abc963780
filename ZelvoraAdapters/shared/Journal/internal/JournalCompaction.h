#pragma once

#include "ZelvoraAdapters/shared/Files/internal/FileOperations.h"
#include "ZelvoraAdapters/shared/Journal/internal/JournalFile.h"
#include "ZelvoraAdapters/shared/Journal/internal/JournalTable.h"

#include <atomic>
#include <cstdint>
#include <expected>
#include <memory>
#include <string>
#include <vector>

namespace zelvora::shared {

/// Writes the live values of a journal to a new file and renames it over the old one. Only the last step needs the
/// lock; until then others keep writing to the old file, and their records are copied behind the snapshot.
///
/// Whenever it ends, also by the death of the process, the journal's path names either the old file or the complete new
/// one.
class JournalCompaction final {
public:
    [[nodiscard]] static std::string pathFor(std::string const& journal) { return journal + ".compacting"; }

    /// Requires the lock. The snapshot is the values of `source` up to its end.
    JournalCompaction(
        FileOperations& operations, std::shared_ptr<JournalFile const> source, JournalTable::Snapshot snapshot);
    /// Removes the new file unless it was renamed.
    ~JournalCompaction();
    /// Removes the new file of a compaction whose process died.
    static void removeAbandoned(FileOperations& operations, std::string const& journal);
    JournalCompaction(JournalCompaction const&) = delete;
    JournalCompaction& operator=(JournalCompaction const&) = delete;

    /// The slow part: writes and syncs the new file. Needs no lock. Any thread. Fails with EAGAIN if another compaction
    /// is running.
    [[nodiscard]] std::expected<void, FileFailure> write(std::atomic<bool> const& isCancelled);

    /// Requires the lock, and that `source` has been read up to its end. Copies the remaining records, syncs and
    /// renames the file, which is locked from then on. The rename is durable once the directory is synced.
    [[nodiscard]] std::expected<std::shared_ptr<JournalFile>, FileFailure> finish();

    [[nodiscard]] std::shared_ptr<JournalFile const> const& source() const { return m_source; }
    [[nodiscard]] JournalTable::Snapshot const& snapshot() const { return m_snapshot; }
    [[nodiscard]] std::vector<std::uint64_t> const& exactBytes() const { return m_exactBytes; }

private:
    [[nodiscard]] std::expected<void, FileFailure> writeSnapshot(std::atomic<bool> const& isCancelled);
    /// Stops earlier at a record that somebody is still writing.
    [[nodiscard]] std::expected<void, FileFailure> copyUpTo(std::uint64_t end);
    [[nodiscard]] std::expected<void, FileFailure> sync();

    FileOperations& m_operations;
    std::shared_ptr<JournalFile const> m_source;
    JournalTable::Snapshot m_snapshot;
    std::vector<std::uint64_t> m_exactBytes;
    std::shared_ptr<JournalFile> m_target;
    std::string m_targetPath;
    std::uint64_t m_copiedEnd;
    std::uint32_t m_copiedChecksum;
    bool m_isRenamed = false;
};

}

#pragma once

#include "ZelvoraAdapters/shared/Files/FileOperations.h"
#include "ZelvoraAdapters/shared/Journal/JournalFile.h"
#include "ZelvoraAdapters/shared/Journal/JournalState.h"

#include <atomic>
#include <cstdint>
#include <expected>
#include <memory>
#include <string>
#include <vector>

namespace zelvora::shared {

/// Writes what a journal still needs to a new file and puts that in its place. Everything before the last step runs
/// without a turn, while others go on writing to the old file: what they write is copied after the snapshot.
///
/// Whatever ends it, death included, leaves the old file or the new one whole under the journal's name.
class JournalCompaction final {
public:
    [[nodiscard]] static std::string pathFor(std::string const& journal) { return journal + ".compacting"; }

    /// In a turn: the snapshot is what `source` says up to its end.
    JournalCompaction(
        FileOperations& operations, std::shared_ptr<JournalFile const> source, JournalState::Snapshot snapshot);
    /// Removes the new file where it was not put in place.
    ~JournalCompaction();
    JournalCompaction(JournalCompaction const&) = delete;
    JournalCompaction& operator=(JournalCompaction const&) = delete;

    /// The long part, without a turn.
    [[nodiscard]] std::expected<void, FileFailure> write(std::atomic<bool> const& isCancelled);

    /// In a turn, `source` being read up to its end: copies the rest, makes it durable and moves the file into place.
    /// The new name is durable once the directory is synced.
    [[nodiscard]] std::expected<std::shared_ptr<JournalFile>, FileFailure> finish();

    [[nodiscard]] std::shared_ptr<JournalFile const> const& source() const { return m_source; }
    [[nodiscard]] JournalState::Snapshot const& snapshot() const { return m_snapshot; }
    [[nodiscard]] std::vector<std::uint64_t> const& exactBytes() const { return m_exactBytes; }

private:
    [[nodiscard]] std::expected<void, FileFailure> writeSnapshot(std::atomic<bool> const& isCancelled);
    /// Or up to a record that is only just being written.
    [[nodiscard]] std::expected<void, FileFailure> copyUpTo(std::uint64_t end);
    [[nodiscard]] std::expected<void, FileFailure> sync();

    FileOperations& m_operations;
    std::shared_ptr<JournalFile const> m_source;
    JournalState::Snapshot m_snapshot;
    std::vector<std::uint64_t> m_exactBytes;
    std::shared_ptr<JournalFile> m_target;
    std::string m_targetPath;
    std::uint64_t m_copiedEnd;
    std::uint32_t m_copiedChecksum;
    bool m_isInPlace = false;
};

}

#pragma once

#include "ZelvoraAdapters/shared/Files/internal/FileOperations.h"
#include "ZelvoraAdapters/shared/Journal/internal/JournalFile.h"
#include "ZelvoraAdapters/shared/Journal/internal/JournalTable.h"

#include <atomic>
#include <cstdint>
#include <expected>
#include <string>
#include <vector>

namespace zelvora::shared {

/// Writes a snapshot as the first record of a new file, in pieces, so that its encoding is never in memory as a whole.
class JournalSnapshotWriter final {
public:
    JournalSnapshotWriter(FileOperations& operations, JournalFile& target, std::atomic<bool> const& isCancelled);

    /// Returns the size of each entry in the file, in the snapshot's order. Fails with ECANCELED if cancelled.
    [[nodiscard]] std::expected<std::vector<std::uint64_t>, FileFailure> write(JournalTable::Snapshot const& snapshot);

private:
    [[nodiscard]] std::expected<void, FileFailure> writeEntry(std::string const& key, platform::Value const& value);
    [[nodiscard]] std::expected<void, FileFailure> flushAbove(std::size_t limit);

    FileOperations& m_operations;
    JournalFile& m_target;
    std::atomic<bool> const& m_isCancelled;
    std::string m_pending;
    std::uint64_t m_payloadLength = 0;
    std::uint32_t m_payloadChecksum = 0;
};

}

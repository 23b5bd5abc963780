#pragma once

#include "ZelvoraAdapters/shared/Files/FileOperations.h"
#include "ZelvoraAdapters/shared/Journal/JournalFile.h"
#include "ZelvoraAdapters/shared/Journal/JournalState.h"

#include <atomic>
#include <cstdint>
#include <expected>
#include <string>
#include <vector>

namespace zelvora::shared {

/// Writes a state as the first record of a new file, piece by piece, so that it takes little memory beside the state
/// itself however large that is.
class JournalSnapshot final {
public:
    JournalSnapshot(FileOperations& operations, JournalFile& target, std::atomic<bool> const& isCancelled);

    /// How many bytes each entry takes, in their order.
    [[nodiscard]] std::expected<std::vector<std::uint64_t>, FileFailure> write(JournalState::Snapshot const& snapshot);

private:
    [[nodiscard]] std::expected<void, FileFailure> writeEntry(std::string const& key, platform::Value const& value);
    [[nodiscard]] std::expected<void, FileFailure> flushOver(std::size_t limit);

    FileOperations& m_operations;
    JournalFile& m_target;
    std::atomic<bool> const& m_isCancelled;
    std::string m_pending;
    std::uint64_t m_payloadLength = 0;
    std::uint32_t m_payloadChecksum = 0;
};

}

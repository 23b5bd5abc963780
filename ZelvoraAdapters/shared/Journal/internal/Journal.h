#pragma once

#include "ZelvoraAdapters/shared/Files/internal/FileOperations.h"
#include "ZelvoraAdapters/shared/Journal/JournalOptions.h"
#include "ZelvoraAdapters/shared/Journal/internal/JournalCompaction.h"
#include "ZelvoraAdapters/shared/Journal/internal/LoggedFailure.h"
#include "ZelvoraAdapters/shared/Journal/internal/SharedJournalFile.h"
#include "ZelvoraPlatform/Foundation/Value.h"

#include <chrono>
#include <cstdint>
#include <expected>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace zelvora::shared {

/// The values of a preferences journal: those in the file, overridden by pending changes that could not be written yet.
/// Decides when the file is synced and compacted. One thread at a time, except where noted: slow work is split into a
/// beginning, the work itself and an end, so that the caller can release its mutex for the work.
///
/// Any call may leave the file locked, which spares later calls several system calls. While `hasTurn` is true, other
/// users of the file wait: the caller ends the turn soon.
class Journal final {
public:
    Journal(std::string path, JournalOptions const& options);

    /// Reads the file. Call it once, before anything else.
    void open();
    [[nodiscard]] bool isOpen() const { return m_isOpen; }

    /// Whether the file is locked.
    [[nodiscard]] bool hasTurn() const { return m_sharedFile.isLocked(); }
    void endTurn() { m_sharedFile.unlock(); }

    [[nodiscard]] std::optional<platform::Value> object(std::string const& key);
    /// Writes one record if this changes anything.
    void setObject(std::optional<platform::Value> value, std::string const& key);

    /// When the file must be synced at the latest; absent if it need not be.
    [[nodiscard]] std::optional<std::chrono::steady_clock::time_point> syncDue() const { return m_syncDue; }
    struct SyncWork {
        /// nullptr if only the directory must be synced.
        std::shared_ptr<JournalFile const> file;
        bool includesDirectory = false;
        /// Long arrays that were replaced since the last sync, to be destroyed without a mutex.
        std::vector<platform::Value> replaced;
    };
    struct SyncFailure {
        enum class Part : std::uint8_t { File, Directory };
        Part part = Part::File;
        FileFailure failure;
    };
    [[nodiscard]] std::optional<SyncWork> beginSync();
    /// Any thread.
    [[nodiscard]] std::expected<void, SyncFailure> sync(SyncWork const& work) const;
    void endSync(SyncWork const& work, std::expected<void, SyncFailure> const& result);

    [[nodiscard]] bool needsCompaction() const { return m_needsCompaction; }
    /// nullptr if it is no longer needed. Otherwise call `write` on the result, on any thread, and then
    /// `endCompaction`.
    [[nodiscard]] std::unique_ptr<JournalCompaction> beginCompaction();
    void endCompaction(std::unique_ptr<JournalCompaction> compaction, std::expected<void, FileFailure> const& written);

    /// The lines to log since the last call.
    [[nodiscard]] std::vector<std::string> takeLogLines();

private:
    [[nodiscard]] std::expected<void, FileFailure> lock();
    void keepReplaced(platform::Value const& value, ChangeSize const& change);
    void keepPending(std::optional<platform::Value> value, std::string const& key, FileFailure const& failure);
    void writePending();
    void didWrite();
    void didFailToWrite(FileFailure const& failure);
    [[nodiscard]] bool isMostlyGarbage() const;
    void postponeCompaction();
    [[nodiscard]] std::expected<void, FileFailure> replaceFile(JournalCompaction& compaction);

    FileOperations& m_operations;
    std::string m_path;
    JournalOptions m_options;
    SharedJournalFile m_sharedFile;
    /// Changes that could not be written yet; absent means removed.
    std::unordered_map<std::string, std::optional<platform::Value>> m_pending;
    std::vector<platform::Value> m_replaced;
    /// Reused, to allocate less.
    std::string m_record;
    std::optional<std::chrono::steady_clock::time_point> m_syncDue;
    bool m_isOpen = false;
    bool m_hasUnsyncedWrites = false;
    std::uint64_t m_compactionThreshold;
    bool m_needsCompaction = false;
    bool m_isCompacting = false;
    /// The file on the disk lacks some of what was written to it, so only a new file is complete.
    bool m_mustRewrite = false;
    LoggedFailure m_writeFailure;
    LoggedFailure m_syncFailure;
    LoggedFailure m_compactionFailure;
    std::vector<std::string> m_logLines;
};

}

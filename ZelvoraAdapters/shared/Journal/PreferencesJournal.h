#pragma once

#include "ZelvoraAdapters/shared/Files/FileOperations.h"
#include "ZelvoraAdapters/shared/Journal/FailureEpisode.h"
#include "ZelvoraAdapters/shared/Journal/JournalCompaction.h"
#include "ZelvoraAdapters/shared/Journal/JournalConnection.h"
#include "ZelvoraAdapters/shared/Journal/JournalTuning.h"
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

/// The values of a journal: what the file says, and over it what could not be written yet. One thread at a time; what
/// takes long is handed out in two halves, so that the caller can give way between them.
class PreferencesJournal final {
public:
    PreferencesJournal(std::string path, JournalTuning const& tuning);

    [[nodiscard]] std::optional<platform::Value> object(std::string const& key);
    /// One write, if it changes anything.
    void setObject(std::optional<platform::Value> value, std::string const& key);
    /// Tries again what failed before, as one record: a state that never was must not come of it.
    void writeUnwritten();

    /// When the file wants syncing at the latest.
    [[nodiscard]] std::optional<std::chrono::steady_clock::time_point> syncDue() const { return m_syncDue; }
    struct SyncWork {
        /// nullptr where only the name is new.
        std::shared_ptr<JournalFile const> file;
        bool includesName = false;
    };
    struct SyncFailure {
        enum class Part : std::uint8_t { Content, Name };
        Part part = Part::Content;
        FileFailure failure;
    };
    [[nodiscard]] std::optional<SyncWork> beginSync();
    /// Any thread, between the halves.
    [[nodiscard]] std::expected<void, SyncFailure> sync(SyncWork const& work) const;
    void finishSync(SyncWork const& work, std::expected<void, SyncFailure> const& result);

    [[nodiscard]] bool wantsCompaction() const { return m_wantsCompaction; }
    /// nullptr where there is no need any more or another process is at it.
    [[nodiscard]] std::unique_ptr<JournalCompaction> beginCompaction();
    void finishCompaction(
        std::unique_ptr<JournalCompaction> compaction, std::expected<void, FileFailure> const& written);

    /// Lines for the log since this was last asked.
    [[nodiscard]] std::vector<std::string> takeRemarks();

private:
    void keepUnwritten(std::optional<platform::Value> value, std::string const& key, FileFailure const& failure);
    void didWrite();
    void didFailToWrite(FileFailure const& failure);
    [[nodiscard]] bool isMostlyGarbage() const;
    void postponeCompaction();
    void lookForTheFile();
    [[nodiscard]] std::expected<void, FileFailure> putInPlace(JournalCompaction& compaction);

    FileOperations& m_operations;
    std::string m_path;
    JournalTuning m_tuning;
    JournalConnection m_connection;
    /// Newer than what the file says; absent is removed.
    std::unordered_map<std::string, std::optional<platform::Value>> m_unwritten;
    std::string m_record;
    std::optional<std::chrono::steady_clock::time_point> m_syncDue;
    bool m_hasUnsyncedWrites = false;
    std::uint64_t m_compactionThreshold;
    bool m_wantsCompaction = false;
    bool m_isCompacting = false;
    /// The file on the disk is not what was written to it: only a new one will do.
    bool m_mustRewrite = false;
    FailureEpisode m_writing;
    FailureEpisode m_syncing;
    FailureEpisode m_compacting;
    std::vector<std::string> m_remarks;
};

}

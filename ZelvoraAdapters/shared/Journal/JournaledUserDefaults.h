#pragma once

#include "ZelvoraAdapters/shared/Journal/JournalOptions.h"
#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/Foundation/UserDefaults.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace zelvora::shared {

class Journal;

/// Preferences in an append-only file of checksummed records. The values are kept in memory; the file is read again
/// only after somebody else wrote it. Any thread. Several processes, and several instances in one process, may share a
/// file.
///
/// The file is locked for a turn of about a millisecond, in which a change is one write(2) and reading makes no system
/// call. Beginning and ending a turn costs about ten system calls; reading outside of one costs one. Whoever waits for
/// the lock gets it when the turn is over.
///
/// A change survives the death of the process once the call returns, and a power cut once the file is synced: within a
/// second, by `synchronize`, and on destruction. Setting a number, a boolean, a date or text that is already stored
/// writes nothing. Data and containers are compared by identity, so an equal one that was made anew is written again.
/// When most of the file is obsolete, a background thread compacts it.
///
/// Errors are logged, a repeated one once until it clears. A change that cannot be written stays in memory and is
/// written with the next one. Nothing is thrown away, and the line in the log names the file in which it is kept:
///
/// - At the first damaged record, such as one with a flipped bit, the file is cut, because the records behind it cannot
///   be trusted without it. The values are then those of before that record. What is cut is kept in "PATH.cut"; only
///   zeroes are not kept. If it cannot be kept, nothing is cut and changes stay in memory.
/// - A file that is not a journal, or whose beginning is damaged, is renamed to "PATH.damaged" and a new one started.
/// - If the file is removed with or without its directory, truncated, overwritten or replaced while it is in use, the
///   values in memory are written to a new file, and what was found is renamed to "PATH.found". This is noticed when a
///   turn begins, so before any later change, and with each sync. A file that another process uses already is continued
///   instead, and gets the values that it lacks.
/// - Only a regular file is opened, and no link is followed. Anything else, and a file of a newer format, is left
///   unchanged, and changes stay in memory.
///
/// If one of these names is taken, a number follows it. The files are accessible to their owner only. During a
/// compaction there is also "PATH.compacting". README.md in this folder outlines the implementation.
class ZELVORA_API JournaledUserDefaults final : public platform::UserDefaults {
public:
    /// Called with one line for the log, on any thread, with no lock held.
    using LogError = std::function<void(std::string const& line)>;

    /// Opens or creates the file and its directory, in the background if the options say so. Failing to do so is logged
    /// and retried with each change.
    JournaledUserDefaults(std::string path, LogError logError, JournalOptions const& options = {});
    ~JournaledUserDefaults() override;
    JournaledUserDefaults(JournaledUserDefaults const&) = delete;
    JournaledUserDefaults& operator=(JournaledUserDefaults const&) = delete;

    /// Syncs everything set so far to the disk before it returns. For when the app goes inactive.
    void synchronize();

    // platform::UserDefaults
    [[nodiscard]] std::optional<platform::Value> object(std::string const& key) override;
    void setObject(std::optional<platform::Value> value, std::string const& key) override;
    void setDouble(double number, std::string const& key) override;
    void removeObject(std::string const& key) override;

private:
    enum class Turn : std::uint8_t { None, Running, Over };

    /// Calls the work with the journal and does what it makes necessary.
    template<typename Work>
    void withJournal(Work work);
    /// Opens the journal unless it is open.
    void open();
    void wakeThreads(bool wasSyncDue, bool wasCompactionNeeded);
    void tendTurn();
    void runTurnThread();
    void log(std::vector<std::string> const& lines) const;
    void runSyncThread();
    void runCompactionThread();
    void compact();

    LogError m_logError;
    /// Held for a whole synchronization, so that a concurrent caller returns only when it is done. Locked before
    /// `m_mutex`.
    std::mutex m_syncMutex;
    /// Guards the journal.
    std::mutex m_mutex;
    std::unique_ptr<Journal> m_journal;
    /// The journal's turn. Its end is not under `m_mutex`, for which a thread would wait long while another one makes
    /// change after change.
    std::atomic<Turn> m_turn = Turn::None;
    std::chrono::microseconds m_turnLength;
    /// Guards nothing but the waiting for `m_turnBegan`. Locked after `m_mutex`.
    std::mutex m_turnMutex;
    std::condition_variable m_turnBegan;
    std::condition_variable m_syncWanted;
    std::condition_variable m_compactionWanted;
    std::atomic<bool> m_isEnding = false;
    std::thread m_turnThread;
    std::thread m_syncThread;
    std::thread m_compactionThread;
};

}

#pragma once

#include "ZelvoraAdapters/shared/Journal/JournalOptions.h"
#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/Foundation/UserDefaults.h"

#include <atomic>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace zelvora::shared {

class Journal;

/// Preferences in an append-only file of checksummed records. The values are kept in memory; reading goes to the disk
/// only after somebody else wrote. Any thread. Several processes, and several instances in one process, may share a
/// file.
///
/// A change is one write(2). It survives the death of the process once the call returns, and a power cut once the file
/// is synced: within a second, by `synchronize`, and on destruction. Setting a value that is already stored writes
/// nothing. When most of the file is obsolete, a background thread compacts it.
///
/// Errors are logged, a repeated one once until it clears. A change that cannot be written stays in memory and is
/// written with the next one. A damaged end of the file is removed. A file that is not a journal is renamed to
/// "PATH.damaged" and a new one started. A file of a newer format is left unchanged, and changes stay in memory.
///
/// Next to PATH there is "PATH.lock", which must not be removed while in use, and during a compaction
/// "PATH.compacting". README.md in this folder outlines the implementation.
class ZELVORA_API JournaledUserDefaults final : public platform::UserDefaults {
public:
    /// Called with one line for the log, on any thread, with no lock held.
    using LogError = std::function<void(std::string const& line)>;

    /// Opens or creates the file and its directory. Failing to do so is logged and retried with each change.
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
    void wakeThreads(bool wasSyncDue, bool wasCompactionNeeded);
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
    std::condition_variable m_syncWanted;
    std::condition_variable m_compactionWanted;
    std::atomic<bool> m_isEnding = false;
    std::thread m_syncThread;
    std::thread m_compactionThread;
};

}

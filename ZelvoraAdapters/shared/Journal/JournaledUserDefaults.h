#pragma once

#include "ZelvoraAdapters/shared/Journal/JournalTuning.h"
#include "ZelvoraAdapters/shared/Journal/PreferencesJournal.h"
#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/Foundation/UserDefaults.h"

#include <atomic>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace zelvora::shared {

/// Preferences in an append-only file of checksummed records, with the values in memory. Any thread; several processes,
/// and several of these in one process, may share a file.
///
/// A change is one write, which the death of the process does not undo, and no write where nothing changes. The file is
/// synced within a second, on `synchronize` and on destruction; a power cut takes what came after. When most of the
/// file is out of date it is written anew on a thread of its own.
///
/// What cannot be written stays in memory and is written with the next change; the log has one line about it until a
/// write succeeds. A file that ends in damage is cut there. One that is no journal is kept beside the new one, one of a
/// newer format is left alone and everything stays in memory; each says so in one line.
///
/// Beside the file there is one of the same name with ".lock", which must not be removed while in use, and for moments
/// one with ".compacting".
class ZELVORA_API JournaledUserDefaults final : public platform::UserDefaults {
public:
    /// Called with a line for the log, on any thread, with no lock held.
    using LogError = std::function<void(std::string const& line)>;

    JournaledUserDefaults(std::string path, LogError logError, JournalTuning const& tuning = {});
    ~JournaledUserDefaults() override;
    JournaledUserDefaults(JournaledUserDefaults const&) = delete;
    JournaledUserDefaults& operator=(JournaledUserDefaults const&) = delete;

    /// Makes everything set so far survive a power cut, as far as the disk can; for when the app goes inactive.
    void synchronize();

    // platform::UserDefaults
    [[nodiscard]] std::optional<platform::Value> object(std::string const& key) override;
    void setObject(std::optional<platform::Value> value, std::string const& key) override;
    void setDouble(double number, std::string const& key) override;
    void removeObject(std::string const& key) override;

private:
    void wakeThreads(bool syncWasDue, bool compactionWasWanted);
    void log(std::vector<std::string> const& remarks) const;
    void syncInTime();
    void compactWhenWanted();
    void compact();

    LogError m_logError;
    /// Held for a whole synchronization, so that the next caller finds it done. Taken before `m_mutex`.
    std::mutex m_syncMutex;
    std::mutex m_mutex;
    PreferencesJournal m_journal;
    std::condition_variable m_syncWanted;
    std::condition_variable m_compactionWanted;
    std::atomic<bool> m_isEnding = false;
    std::thread m_syncThread;
    std::thread m_compactionThread;
};

}

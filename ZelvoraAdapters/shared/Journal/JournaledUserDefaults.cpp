#include "ZelvoraAdapters/shared/Journal/JournaledUserDefaults.h"

#include <signal.h> // NOLINT(*-deprecated-headers): pthread_sigmask is not in <csignal>

#include <chrono>
#include <utility>

namespace zelvora::shared {

using platform::Value;

namespace {

// The host's signals are for the host's threads.
template<typename Work>
std::thread startWithoutSignals(Work work)
{
    ::sigset_t all {};
    ::sigset_t before {};
    ::sigfillset(&all);
    ::pthread_sigmask(SIG_SETMASK, &all, &before);
    std::thread thread { std::move(work) };
    ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
    return thread;
}

}

JournaledUserDefaults::JournaledUserDefaults(std::string path, LogError logError, JournalTuning const& tuning)
    : m_logError(std::move(logError))
    , m_journal(std::move(path), tuning)
{
    log(m_journal.takeRemarks());
    m_syncThread = startWithoutSignals([this] { syncInTime(); });
    m_compactionThread = startWithoutSignals([this] { compactWhenWanted(); });
}

JournaledUserDefaults::~JournaledUserDefaults()
{
    {
        std::lock_guard const lock { m_mutex };
        m_isEnding = true;
    }
    m_syncWanted.notify_all();
    m_compactionWanted.notify_all();
    m_compactionThread.join();
    m_syncThread.join();
    synchronize();
}

std::optional<Value> JournaledUserDefaults::object(std::string const& key)
{
    std::vector<std::string> remarks;
    std::optional<Value> value;
    {
        std::lock_guard const lock { m_mutex };
        value = m_journal.object(key);
        remarks = m_journal.takeRemarks();
    }
    log(remarks);
    return value;
}

void JournaledUserDefaults::setObject(std::optional<Value> value, std::string const& key)
{
    std::vector<std::string> remarks;
    {
        std::lock_guard const lock { m_mutex };
        auto const syncWasDue = m_journal.syncDue().has_value();
        auto const compactionWasWanted = m_journal.wantsCompaction();
        m_journal.setObject(std::move(value), key);
        wakeThreads(syncWasDue, compactionWasWanted);
        remarks = m_journal.takeRemarks();
    }
    log(remarks);
}

void JournaledUserDefaults::setDouble(double number, std::string const& key)
{
    setObject(Value { number }, key);
}

void JournaledUserDefaults::removeObject(std::string const& key)
{
    setObject(std::nullopt, key);
}

// Only when there is news: a thread that waits already costs a change no system call.
void JournaledUserDefaults::wakeThreads(bool syncWasDue, bool compactionWasWanted)
{
    if (!syncWasDue && m_journal.syncDue())
        m_syncWanted.notify_one();
    if (!compactionWasWanted && m_journal.wantsCompaction())
        m_compactionWanted.notify_one();
}

void JournaledUserDefaults::log(std::vector<std::string> const& remarks) const
{
    for (auto const& remark : remarks)
        m_logError("Preferences: " + remark);
}

void JournaledUserDefaults::synchronize()
{
    std::vector<std::string> remarks;
    {
        std::lock_guard const whole { m_syncMutex };
        std::unique_lock lock { m_mutex };
        if (auto const work = m_journal.beginSync()) {
            lock.unlock();
            auto const result = m_journal.sync(*work);
            lock.lock();
            m_journal.finishSync(*work, result);
        }
        if (m_journal.wantsCompaction())
            m_compactionWanted.notify_one();
        remarks = m_journal.takeRemarks();
    }
    log(remarks);
}

void JournaledUserDefaults::syncInTime()
{
    std::unique_lock lock { m_mutex };
    while (!m_isEnding) {
        auto const due = m_journal.syncDue();
        if (!due) {
            m_syncWanted.wait(lock);
        } else if (std::chrono::steady_clock::now() < *due) {
            m_syncWanted.wait_until(lock, *due);
        } else {
            lock.unlock();
            synchronize();
            lock.lock();
        }
    }
}

void JournaledUserDefaults::compactWhenWanted()
{
    std::unique_lock lock { m_mutex };
    while (!m_isEnding) {
        if (!m_journal.wantsCompaction()) {
            m_compactionWanted.wait(lock);
            continue;
        }
        lock.unlock();
        compact();
        lock.lock();
    }
}

void JournaledUserDefaults::compact()
{
    std::vector<std::string> remarks;
    {
        std::unique_lock lock { m_mutex };
        auto compaction = m_journal.beginCompaction();
        if (compaction) {
            lock.unlock();
            auto const written = compaction->write(m_isEnding);
            lock.lock();
            m_journal.finishCompaction(std::move(compaction), written);
            if (m_journal.syncDue())
                m_syncWanted.notify_one();
        }
        remarks = m_journal.takeRemarks();
    }
    log(remarks);
}

}

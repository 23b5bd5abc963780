#include "ZelvoraAdapters/shared/Journal/JournaledUserDefaults.h"

#include "ZelvoraAdapters/shared/Journal/internal/Journal.h"

#include <signal.h> // NOLINT(*-deprecated-headers): pthread_sigmask is not in <csignal>

#include <chrono>
#include <utility>

namespace zelvora::shared {

using platform::Value;

namespace {

// The host's signal handlers run on the host's threads, not on these.
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

JournaledUserDefaults::JournaledUserDefaults(std::string path, LogError logError, JournalOptions const& options)
    : m_logError(std::move(logError))
    , m_journal(std::make_unique<Journal>(std::move(path), options))
    , m_turnLength(options.turnLength)
{
    if (options.opening == JournalOpening::BeforeReturning)
        open();
    m_turnThread = startWithoutSignals([this] { runTurnThread(); });
    m_syncThread = startWithoutSignals([this] { runSyncThread(); });
    m_compactionThread = startWithoutSignals([this] { runCompactionThread(); });
}

JournaledUserDefaults::~JournaledUserDefaults()
{
    {
        std::scoped_lock const locks { m_mutex, m_turnMutex };
        m_isEnding = true;
    }
    m_syncWanted.notify_all();
    m_compactionWanted.notify_all();
    m_turnBegan.notify_all();
    m_compactionThread.join();
    m_syncThread.join();
    m_turnThread.join();
    synchronize();
    m_journal->endTurn();
}

template<typename Work>
void JournaledUserDefaults::withJournal(Work work)
{
    std::vector<std::string> lines;
    {
        std::lock_guard const lock { m_mutex };
        if (!m_journal->isOpen()) {
            m_journal->open();
            wakeThreads(false, false);
        }
        work(*m_journal);
        tendTurn();
        lines = m_journal->takeLogLines();
    }
    log(lines);
}

void JournaledUserDefaults::open()
{
    withJournal([](Journal&) { });
}

std::optional<Value> JournaledUserDefaults::object(std::string const& key)
{
    std::optional<Value> value;
    withJournal([&](Journal& journal) { value = journal.object(key); });
    return value;
}

void JournaledUserDefaults::setObject(std::optional<Value> value, std::string const& key)
{
    withJournal([&](Journal& journal) {
        auto const wasSyncDue = journal.syncDue().has_value();
        auto const wasCompactionNeeded = journal.needsCompaction();
        journal.setObject(std::move(value), key);
        wakeThreads(wasSyncDue, wasCompactionNeeded);
    });
}

void JournaledUserDefaults::setDouble(double number, std::string const& key)
{
    setObject(Value { number }, key);
}

void JournaledUserDefaults::removeObject(std::string const& key)
{
    setObject(std::nullopt, key);
}

// Notifies only when a thread has something new to do, so that most changes need no system call for it.
void JournaledUserDefaults::wakeThreads(bool wasSyncDue, bool wasCompactionNeeded)
{
    if (!wasSyncDue && m_journal->syncDue())
        m_syncWanted.notify_one();
    if (!wasCompactionNeeded && m_journal->needsCompaction())
        m_compactionWanted.notify_one();
}

// Requires m_mutex. Others wait for the file's lock, so a turn that is over is ended by the call that is running then,
// or by the turn thread if none is.
void JournaledUserDefaults::tendTurn()
{
    auto const turn = m_turn.load();
    if (turn == Turn::Over) {
        m_journal->endTurn();
        m_turn = Turn::None;
    } else if (turn == Turn::None && m_journal->hasTurn()) {
        m_turn = Turn::Running;
        // The thread may be about to wait.
        {
            std::lock_guard const lock { m_turnMutex };
        }
        m_turnBegan.notify_one();
    }
}

void JournaledUserDefaults::runTurnThread()
{
    std::unique_lock lock { m_turnMutex };
    while (!m_isEnding) {
        if (m_turn == Turn::None) {
            m_turnBegan.wait(lock);
            continue;
        }
        m_turnBegan.wait_for(lock, m_turnLength, [this] { return m_isEnding.load(); });
        auto running = Turn::Running;
        m_turn.compare_exchange_strong(running, Turn::Over);
        lock.unlock();
        if (std::unique_lock const journalLock { m_mutex, std::try_to_lock })
            tendTurn();
        lock.lock();
    }
}

void JournaledUserDefaults::log(std::vector<std::string> const& lines) const
{
    for (auto const& line : lines)
        m_logError("Preferences: " + line);
}

void JournaledUserDefaults::synchronize()
{
    std::vector<std::string> lines;
    {
        std::lock_guard const syncLock { m_syncMutex };
        std::unique_lock lock { m_mutex };
        if (auto work = m_journal->beginSync()) {
            tendTurn();
            lock.unlock();
            auto const result = m_journal->sync(*work);
            work->replaced.clear();
            lock.lock();
            m_journal->endSync(*work, result);
        }
        if (m_journal->needsCompaction())
            m_compactionWanted.notify_one();
        tendTurn();
        lines = m_journal->takeLogLines();
    }
    log(lines);
}

void JournaledUserDefaults::runSyncThread()
{
    open();
    std::unique_lock lock { m_mutex };
    while (!m_isEnding) {
        auto const due = m_journal->syncDue();
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

void JournaledUserDefaults::runCompactionThread()
{
    std::unique_lock lock { m_mutex };
    while (!m_isEnding) {
        if (!m_journal->needsCompaction()) {
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
    std::vector<std::string> lines;
    {
        std::unique_lock lock { m_mutex };
        auto compaction = m_journal->beginCompaction();
        tendTurn();
        if (compaction) {
            lock.unlock();
            auto const written = compaction->write(m_isEnding);
            lock.lock();
            m_journal->endCompaction(std::move(compaction), written);
            if (m_journal->syncDue())
                m_syncWanted.notify_one();
            tendTurn();
        }
        lines = m_journal->takeLogLines();
    }
    log(lines);
}

}

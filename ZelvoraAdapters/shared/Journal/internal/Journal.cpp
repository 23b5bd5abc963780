#include "ZelvoraAdapters/shared/Journal/internal/Journal.h"

#include "ZelvoraAdapters/shared/Journal/internal/JournalChange.h"
#include "ZelvoraAdapters/shared/Journal/internal/JournalRecord.h"
#include "ZelvoraPlatform/Foundation/Array.h"

#include <cerrno>
#include <filesystem>
#include <iterator>
#include <utility>

namespace zelvora::shared {

using platform::Value;

namespace {

// If a change frees at least this many elements of an array, the next sync frees them, on the sync thread, because that
// takes longer than the change.
constexpr std::size_t manyElements = 64;

// A larger buffer is freed after its write.
constexpr std::size_t keptRecordCapacity = 1024UL * 1024;

std::optional<std::string> refusal(std::optional<Value> const& value, std::string const& key)
{
    if (value && value->isNull())
        return "cannot store a bare null marker under " + key;
    if (value && value->nesting() > Value::maximumNesting)
        return "cannot store a value nested deeper than " + std::to_string(Value::maximumNesting) + " levels under "
            + key;
    return std::nullopt;
}

}

Journal::Journal(std::string path, JournalOptions const& options)
    : m_operations(options.fileOperations ? *options.fileOperations : FileOperations::system())
    , m_path(std::move(path))
    , m_options(options)
    , m_sharedFile(m_operations, m_path, options.lockTimeout)
    , m_compactionThreshold(options.minimumCompactionSize)
{
}

void Journal::open()
{
    m_isOpen = true;
    if (auto locked = lock(); !locked)
        didFailToWrite(locked.error());
    m_needsCompaction = isMostlyGarbage();
}

std::expected<void, FileFailure> Journal::lock()
{
    auto locked = m_sharedFile.lock();
    for (auto& [key, entry] : m_sharedFile.takeLostValues()) {
        if (!m_sharedFile.table().value(key))
            m_pending.try_emplace(std::move(key), std::move(entry.value));
    }
    return locked;
}

std::optional<Value> Journal::object(std::string const& key)
{
    if (!m_sharedFile.isCurrent()) {
        if (auto locked = lock(); !locked)
            didFailToWrite(locked.error());
    }
    if (!m_pending.empty()) {
        if (auto const found = m_pending.find(key); found != m_pending.end())
            return found->second;
    }
    auto const* const value = m_sharedFile.table().value(key);
    return value ? std::optional(*value) : std::nullopt;
}

void Journal::setObject(std::optional<Value> value, std::string const& key)
{
    if (auto reason = refusal(value, key)) {
        m_logLines.push_back(*std::move(reason));
        return;
    }
    if (m_pending.empty()) {
        if (auto locked = lock(); !locked)
            return keepPending(std::move(value), key, locked.error());
    }
    // Locking may have brought some.
    if (!m_pending.empty()) {
        m_pending.insert_or_assign(key, std::move(value));
        writePending();
        return;
    }
    auto& table = m_sharedFile.table();
    auto* const entry = table.find(key);
    beginRecord(m_record);
    auto const change = appendChange(m_record, key, entry ? &entry->value : nullptr, value ? &*value : nullptr);
    if (!change)
        return;
    if (auto written = m_sharedFile.file()->append(m_record); !written)
        return keepPending(std::move(value), key, written.error());
    if (entry)
        keepReplaced(entry->value, *change);
    if (value)
        table.commit(key, entry, *std::move(value), *change);
    else
        table.remove(key);
    didWrite();
}

void Journal::keepReplaced(Value const& value, ChangeSize const& change)
{
    auto const* const array = value.array();
    if (!array)
        return;
    auto const freed = change.kind == ChangeKind::Extend ? change.dropped : array->size();
    if (freed >= manyElements)
        m_replaced.push_back(value);
}

void Journal::writePending()
{
    if (m_pending.empty())
        return;
    // One record for all of them, so that a crash cannot leave only some.
    if (auto locked = lock(); !locked)
        return didFailToWrite(locked.error());
    auto& table = m_sharedFile.table();
    beginRecord(m_record);
    std::unordered_map<std::string, ChangeSize> changes;
    for (auto const& [key, value] : m_pending) {
        if (auto const change = appendChange(m_record, key, table.value(key), value ? &*value : nullptr))
            changes.emplace(key, *change);
    }
    if (!changes.empty()) {
        if (auto written = m_sharedFile.file()->append(m_record); !written)
            return didFailToWrite(written.error());
    }
    for (auto const& [key, change] : changes) {
        auto& value = m_pending[key];
        if (value)
            table.commit(key, table.find(key), *std::move(value), change);
        else
            table.remove(key);
    }
    m_pending.clear();
    didWrite();
}

void Journal::keepPending(std::optional<Value> value, std::string const& key, FileFailure const& failure)
{
    // If the file could not be read, it may contain the key that is being removed.
    auto const removesNothing = !value && m_sharedFile.hasReadFile() && !m_sharedFile.table().value(key);
    if (!removesNothing)
        m_pending.insert_or_assign(key, std::move(value));
    didFailToWrite(failure);
}

void Journal::didWrite()
{
    m_writeFailure.clear();
    m_hasUnsyncedWrites = true;
    if (!m_syncDue)
        m_syncDue = std::chrono::steady_clock::now() + m_options.syncDelay;
    m_needsCompaction = m_needsCompaction || (!m_isCompacting && isMostlyGarbage());
    if (m_record.capacity() > keptRecordCapacity)
        m_record = {};
}

void Journal::didFailToWrite(FileFailure const& failure)
{
    if (m_writeFailure.isNew(failure.reason))
        m_logLines.push_back(failure.reason + "; changes stay in memory until a write succeeds");
}

std::optional<Journal::SyncWork> Journal::beginSync()
{
    if (!m_syncDue && m_pending.empty())
        return std::nullopt;
    // Locking again notices a file that was removed or replaced during the turn.
    endTurn();
    if (auto locked = lock(); !locked)
        didFailToWrite(locked.error());
    else
        writePending();
    if (!m_syncDue)
        return std::nullopt;
    m_syncDue.reset();
    auto file = std::exchange(m_hasUnsyncedWrites, false) ? m_sharedFile.file() : nullptr;
    return SyncWork {
        .file = std::move(file),
        .includesDirectory = m_sharedFile.takeDirectoryChange(),
        .replaced = std::exchange(m_replaced, {}),
    };
}

std::expected<void, Journal::SyncFailure> Journal::sync(SyncWork const& work) const
{
    if (work.file && m_operations.sync(work.file->number()) < 0)
        return std::unexpected(SyncFailure { SyncFailure::Part::File, fileFailure("cannot sync", m_path).error() });
    if (!work.includesDirectory)
        return {};
    auto synced = syncDirectory(m_operations, std::filesystem::path(m_path).parent_path().string());
    if (!synced)
        return std::unexpected(SyncFailure { SyncFailure::Part::Directory, synced.error() });
    return {};
}

void Journal::endSync(SyncWork const& work, std::expected<void, SyncFailure> const& result)
{
    if (result) {
        m_syncFailure.clear();
    } else {
        if (work.includesDirectory)
            m_sharedFile.noteDirectoryChange();
        // The system may have dropped the unsynced pages, and a second sync would not report that: rewrite the file.
        if (result.error().part == SyncFailure::Part::File && work.file == m_sharedFile.file())
            m_mustRewrite = true;
        auto const& reason = result.error().failure.reason;
        if (m_syncFailure.isNew(reason))
            m_logLines.push_back(reason + "; a power cut may lose recent changes");
    }
    // Retried with each sync until a rewrite succeeds.
    m_needsCompaction = m_needsCompaction || m_mustRewrite;
}

bool Journal::isMostlyGarbage() const
{
    auto const& file = m_sharedFile.file();
    return file && file->end() >= m_compactionThreshold && file->end() > 2 * m_sharedFile.table().liveBytes();
}

void Journal::postponeCompaction()
{
    if (auto const& file = m_sharedFile.file())
        m_compactionThreshold = file->end() + m_options.minimumCompactionSize;
}

std::unique_ptr<JournalCompaction> Journal::beginCompaction()
{
    m_needsCompaction = false;
    if (!lock() || !(m_mustRewrite || isMostlyGarbage()))
        return nullptr;
    m_isCompacting = true;
    return std::make_unique<JournalCompaction>(m_operations, m_sharedFile.file(), m_sharedFile.table().snapshot());
}

void Journal::endCompaction(
    std::unique_ptr<JournalCompaction> compaction, std::expected<void, FileFailure> const& written)
{
    auto const done = written ? replaceFile(*compaction) : written;
    compaction.reset();
    m_isCompacting = false;
    if (!done) {
        postponeCompaction();
        auto const isOrdinary = done.error().number == ECANCELED || done.error().number == EAGAIN;
        if (!isOrdinary && m_compactionFailure.isNew(done.error().reason))
            m_logLines.push_back(done.error().reason + "; the preferences file was not compacted");
        return;
    }
    m_compactionFailure.clear();
    // There may be space now.
    writePending();
}

std::expected<void, FileFailure> Journal::replaceFile(JournalCompaction& compaction)
{
    // Whoever waits for the old file gets it first: a slow process would find it replaced, perhaps again and again.
    endTurn();
    if (auto locked = lock(); !locked)
        return locked;
    if (m_sharedFile.file() != compaction.source())
        return std::unexpected(FileFailure { .reason = m_path + " was replaced during compaction", .number = 0 });
    auto file = compaction.finish();
    if (!file)
        return std::unexpected(file.error());
    m_sharedFile.replaceFile(*std::move(file));
    m_sharedFile.table().correctSizes(compaction.snapshot(), compaction.exactBytes());
    m_mustRewrite = false;
    m_needsCompaction = false;
    m_compactionThreshold = m_options.minimumCompactionSize;
    // The content is durable; the directory entry is not yet.
    m_hasUnsyncedWrites = false;
    m_syncDue = std::chrono::steady_clock::now();
    return {};
}

std::vector<std::string> Journal::takeLogLines()
{
    if (m_logLines.empty() && !m_sharedFile.hasLogLines())
        return {};
    auto lines = m_sharedFile.takeLogLines();
    lines.insert(lines.end(), std::make_move_iterator(m_logLines.begin()), std::make_move_iterator(m_logLines.end()));
    m_logLines.clear();
    return lines;
}

}

#include "ZelvoraAdapters/shared/Journal/PreferencesJournal.h"

#include "ZelvoraAdapters/shared/Journal/JournalChange.h"
#include "ZelvoraAdapters/shared/Journal/JournalRecord.h"

#include <algorithm>
#include <filesystem>
#include <utility>

namespace zelvora::shared {

using platform::Value;

namespace {

constexpr std::size_t keptRecordCapacity = 1024UL * 1024;

std::optional<std::string> refusal(std::optional<Value> const& value, std::string const& key)
{
    if (value && value->isNull())
        return "a bare null marker is not stored under " + key;
    if (value && value->nesting() > Value::maximumNesting)
        return "a value that nests too deep is not stored under " + key;
    return std::nullopt;
}

}

PreferencesJournal::PreferencesJournal(std::string path, JournalTuning const& tuning)
    : m_operations(*tuning.operations)
    , m_path(std::move(path))
    , m_tuning(tuning)
    , m_connection(m_operations, m_path, tuning.patience)
    , m_compactionThreshold(tuning.smallestCompaction)
{
    if (auto turn = m_connection.takeTurn(); !turn)
        didFailToWrite(turn.error());
    m_wantsCompaction = isMostlyGarbage();
}

std::optional<Value> PreferencesJournal::object(std::string const& key)
{
    if (!m_connection.isCurrent()) {
        if (auto turn = m_connection.takeTurn(); !turn)
            didFailToWrite(turn.error());
    }
    if (!m_unwritten.empty()) {
        if (auto const found = m_unwritten.find(key); found != m_unwritten.end())
            return found->second;
    }
    auto const* const value = m_connection.state().value(key);
    return value ? std::optional(*value) : std::nullopt;
}

void PreferencesJournal::setObject(std::optional<Value> value, std::string const& key)
{
    if (auto reason = refusal(value, key)) {
        m_remarks.push_back(*std::move(reason));
        return;
    }
    if (!m_unwritten.empty()) {
        m_unwritten.insert_or_assign(key, std::move(value));
        writeUnwritten();
        return;
    }
    auto const turn = m_connection.takeTurn();
    if (!turn)
        return keepUnwritten(std::move(value), key, turn.error());
    auto& state = m_connection.state();
    auto* const entry = state.find(key);
    beginRecord(m_record);
    auto const change = appendChange(m_record, key, entry ? &entry->value : nullptr, value ? &*value : nullptr);
    if (!change)
        return;
    if (auto written = m_connection.file()->append(m_record); !written)
        return keepUnwritten(std::move(value), key, written.error());
    if (value)
        state.commit(key, entry, *std::move(value), *change);
    else
        state.remove(key);
    didWrite();
}

void PreferencesJournal::writeUnwritten()
{
    if (m_unwritten.empty())
        return;
    auto const turn = m_connection.takeTurn();
    if (!turn)
        return didFailToWrite(turn.error());
    auto& state = m_connection.state();
    beginRecord(m_record);
    std::unordered_map<std::string, ChangeSize> changes;
    for (auto const& [key, value] : m_unwritten) {
        if (auto const change = appendChange(m_record, key, state.value(key), value ? &*value : nullptr))
            changes.emplace(key, *change);
    }
    if (!changes.empty()) {
        if (auto written = m_connection.file()->append(m_record); !written)
            return didFailToWrite(written.error());
    }
    for (auto const& [key, change] : changes) {
        auto& value = m_unwritten[key];
        if (value)
            state.commit(key, state.find(key), *std::move(value), change);
        else
            state.remove(key);
    }
    m_unwritten.clear();
    didWrite();
}

void PreferencesJournal::keepUnwritten(std::optional<Value> value, std::string const& key, FileFailure const& failure)
{
    // A file that could not be read may hold what is being removed.
    auto const removesNothing = !value && m_connection.knowsContents() && !m_connection.state().value(key);
    if (!removesNothing)
        m_unwritten.insert_or_assign(key, std::move(value));
    didFailToWrite(failure);
}

void PreferencesJournal::didWrite()
{
    m_connection.didChange();
    m_writing.end();
    m_hasUnsyncedWrites = true;
    if (!m_syncDue)
        m_syncDue = std::chrono::steady_clock::now() + m_tuning.syncDelay;
    m_wantsCompaction = m_wantsCompaction || (!m_isCompacting && isMostlyGarbage());
    if (m_record.capacity() > keptRecordCapacity)
        m_record = {};
}

void PreferencesJournal::didFailToWrite(FileFailure const& failure)
{
    if (m_writing.begins(failure.reason))
        m_remarks.push_back(failure.reason + "; changes stay in memory and are written with the next one that can be");
}

std::optional<PreferencesJournal::SyncWork> PreferencesJournal::beginSync()
{
    writeUnwritten();
    if (!m_syncDue)
        return std::nullopt;
    lookForTheFile();
    m_syncDue.reset();
    auto file = std::exchange(m_hasUnsyncedWrites, false) ? m_connection.file() : nullptr;
    return SyncWork { .file = std::move(file), .includesName = m_connection.takeNameChange() };
}

void PreferencesJournal::lookForTheFile()
{
    auto const turn = m_connection.takeTurn();
    if (!turn || m_connection.file()->isAtItsPath())
        return;
    m_remarks.push_back(m_path + " was removed while in use and is written anew");
    m_mustRewrite = true;
}

std::expected<void, PreferencesJournal::SyncFailure> PreferencesJournal::sync(SyncWork const& work) const
{
    if (work.file && m_operations.sync(work.file->number()) < 0)
        return std::unexpected(SyncFailure { SyncFailure::Part::Content, fileFailure("cannot sync", m_path).error() });
    if (!work.includesName)
        return {};
    auto synced = syncDirectory(m_operations, std::filesystem::path(m_path).parent_path().string());
    if (!synced)
        return std::unexpected(SyncFailure { SyncFailure::Part::Name, synced.error() });
    return {};
}

void PreferencesJournal::finishSync(SyncWork const& work, std::expected<void, SyncFailure> const& result)
{
    if (result) {
        m_syncing.end();
    } else {
        if (work.includesName)
            m_connection.noteNameChange();
        // What a failed sync dropped a second one does not bring back: only a new file will do.
        if (result.error().part == SyncFailure::Part::Content && work.file == m_connection.file())
            m_mustRewrite = true;
        auto const& reason = result.error().failure.reason;
        if (m_syncing.begins(reason))
            m_remarks.push_back(reason + "; a power cut may lose the last changes");
    }
    // As often as there is something to sync, until it is done.
    m_wantsCompaction = m_wantsCompaction || m_mustRewrite;
}

bool PreferencesJournal::isMostlyGarbage() const
{
    auto const& file = m_connection.file();
    return file && file->end() >= m_compactionThreshold && file->end() > 2 * m_connection.state().liveBytes();
}

void PreferencesJournal::postponeCompaction()
{
    if (auto const& file = m_connection.file())
        m_compactionThreshold = file->end() + m_tuning.smallestCompaction;
}

std::unique_ptr<JournalCompaction> PreferencesJournal::beginCompaction()
{
    m_wantsCompaction = false;
    auto const turn = m_connection.takeTurn();
    if (!turn || !(m_mustRewrite || isMostlyGarbage()))
        return nullptr;
    if (!m_connection.turns().claimCompaction()) {
        postponeCompaction();
        return nullptr;
    }
    m_isCompacting = true;
    return std::make_unique<JournalCompaction>(m_operations, m_connection.file(), m_connection.state().snapshot());
}

void PreferencesJournal::finishCompaction(
    std::unique_ptr<JournalCompaction> compaction, std::expected<void, FileFailure> const& written)
{
    auto const done = written ? putInPlace(*compaction) : written;
    compaction.reset();
    m_connection.turns().giveUpCompaction();
    m_isCompacting = false;
    if (!done) {
        postponeCompaction();
        if (done.error().number != ECANCELED && m_compacting.begins(done.error().reason))
            m_remarks.push_back(done.error().reason + "; the preferences file stays larger than it need be");
        return;
    }
    m_compacting.end();
    // There may be room now.
    writeUnwritten();
}

std::expected<void, FileFailure> PreferencesJournal::putInPlace(JournalCompaction& compaction)
{
    auto const turn = m_connection.takeTurn();
    if (!turn)
        return std::unexpected(turn.error());
    if (m_connection.file() != compaction.source())
        return std::unexpected(FileFailure { .reason = m_path + " was replaced during its compaction", .number = 0 });
    auto file = compaction.finish();
    if (!file)
        return std::unexpected(file.error());
    m_connection.replaceFile(*std::move(file));
    m_connection.state().correctSizes(compaction.snapshot(), compaction.exactBytes());
    m_mustRewrite = false;
    m_wantsCompaction = false;
    m_compactionThreshold = m_tuning.smallestCompaction;
    // The content is durable; the name is not yet.
    m_hasUnsyncedWrites = false;
    m_syncDue = std::chrono::steady_clock::now();
    return {};
}

std::vector<std::string> PreferencesJournal::takeRemarks()
{
    if (m_remarks.empty() && !m_connection.hasRemarks())
        return {};
    auto remarks = m_connection.takeRemarks();
    remarks.insert(remarks.end(), std::make_move_iterator(m_remarks.begin()), std::make_move_iterator(m_remarks.end()));
    m_remarks.clear();
    return remarks;
}

}

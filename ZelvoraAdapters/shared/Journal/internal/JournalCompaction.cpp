#include "ZelvoraAdapters/shared/Journal/internal/JournalCompaction.h"

#include "ZelvoraAdapters/shared/Journal/internal/JournalRecord.h"
#include "ZelvoraAdapters/shared/Journal/internal/JournalRecordReader.h"
#include "ZelvoraAdapters/shared/Journal/internal/JournalSnapshotWriter.h"

#include <fcntl.h>

#include <cerrno>
#include <utility>

namespace zelvora::shared {

namespace {

// Copying is repeated until at most this much was added, because the last copy blocks all writers.
constexpr std::uint64_t smallRest = 16UL * 1024;
constexpr int maximumRounds = 8;

}

JournalCompaction::JournalCompaction(
    FileOperations& operations, std::shared_ptr<JournalFile const> source, JournalTable::Snapshot snapshot)
    : m_operations(operations)
    , m_source(std::move(source))
    , m_snapshot(std::move(snapshot))
    , m_targetPath(pathFor(m_source->path()))
    , m_copiedEnd(m_source->end())
    , m_copiedChecksum(m_source->checksum())
{
}

JournalCompaction::~JournalCompaction()
{
    if (m_target && !m_isRenamed && m_target->isAtPath())
        m_operations.remove(m_targetPath);
}

void JournalCompaction::removeAbandoned(FileOperations& operations, std::string const& journal)
{
    auto const path = pathFor(journal);
    auto const file = openFile(operations, path, O_RDWR);
    // A link would make every compaction fail. A FIFO has no error number.
    auto const isForeign = !file && (file.error().number == ELOOP || file.error().number == 0);
    auto const isAbandoned = file && JournalLock(file->number()).tryLockWriting();
    if (isForeign || (isAbandoned && isFileAtPath(operations, file->number(), path)))
        operations.remove(path);
}

std::expected<void, FileFailure> JournalCompaction::write(std::atomic<bool> const& isCancelled)
{
    if (auto written = writeSnapshot(isCancelled); !written)
        return written;
    for (int round = 0; round < maximumRounds; ++round) {
        auto const end = sizeOfFile(m_operations, m_source->number(), m_source->path());
        if (!end)
            return std::unexpected(end.error());
        auto const before = m_copiedEnd;
        if (auto copied = copyUpTo(*end); !copied)
            return copied;
        if (m_copiedEnd - before <= smallRest)
            break;
    }
    return sync();
}

std::expected<void, FileFailure> JournalCompaction::writeSnapshot(std::atomic<bool> const& isCancelled)
{
    using enum JournalHeader::FirstRecord;
    auto const header = JournalHeader::makeSuccessor(m_source->header(), m_snapshot.empty() ? Change : Snapshot);
    auto target = JournalFile::make(m_operations, m_targetPath, header);
    if (!target)
        return std::unexpected(target.error());
    m_target = *std::move(target);
    if (m_snapshot.empty())
        return {};
    auto sizes = JournalSnapshotWriter(m_operations, *m_target, isCancelled).write(m_snapshot);
    if (!sizes)
        return std::unexpected(sizes.error());
    m_exactBytes = *std::move(sizes);
    // The values are no longer needed and may hold the last reference to their storage.
    for (auto& entry : m_snapshot)
        entry.entry.value = {};
    return {};
}

std::expected<std::shared_ptr<JournalFile>, FileFailure> JournalCompaction::finish()
{
    auto const before = m_copiedEnd;
    if (auto copied = copyUpTo(m_source->end()); !copied)
        return std::unexpected(copied.error());
    if (m_copiedEnd != m_source->end() || m_copiedChecksum != m_source->checksum()) {
        errno = EIO;
        return fileFailure("cannot read back", m_source->path());
    }
    // A synchronize on the old file may already have promised that these records are durable.
    if (m_copiedEnd != before) {
        if (auto synced = sync(); !synced)
            return std::unexpected(synced.error());
    }
    // Nobody else can have locked it yet.
    if (auto locked = m_target->lock({}); !locked)
        return std::unexpected(locked.error());
    if (!m_target->isAtPath()) {
        errno = ENOENT;
        return fileFailure("cannot find", m_targetPath);
    }
    if (m_operations.rename(m_targetPath, m_source->path()) < 0)
        return fileFailure("cannot replace", m_source->path());
    m_target->didRename(m_source->path());
    m_target->unlockWriting();
    m_isRenamed = true;
    return std::exchange(m_target, nullptr);
}

std::expected<void, FileFailure> JournalCompaction::copyUpTo(std::uint64_t end)
{
    JournalRecordReader reader { m_operations, m_source->number(), m_source->path(), m_copiedEnd, m_copiedChecksum,
        end };
    std::string record;
    while (auto const payload = reader.next()) {
        beginRecord(record);
        record.append(*payload);
        if (auto appended = m_target->append(record); !appended)
            return appended;
        m_copiedEnd = reader.offset();
        m_copiedChecksum = reader.checksum();
    }
    if (reader.stop() == JournalRecordReader::Stop::ReadFailure)
        return std::unexpected(reader.failure());
    return {};
}

std::expected<void, FileFailure> JournalCompaction::sync()
{
    if (m_operations.sync(m_target->number()) < 0)
        return fileFailure("cannot sync", m_targetPath);
    return {};
}

}

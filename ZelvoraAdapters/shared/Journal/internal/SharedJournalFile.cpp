#include "ZelvoraAdapters/shared/Journal/internal/SharedJournalFile.h"

#include "ZelvoraAdapters/shared/Journal/internal/JournalCompaction.h"

#include <filesystem>

namespace zelvora::shared {

SharedJournalFile::SharedJournalFile(
    FileOperations& operations, std::string path, std::chrono::milliseconds lockTimeout)
    : m_operations(operations)
    , m_path(std::move(path))
    , m_lockTimeout(lockTimeout)
{
}

std::expected<JournalLock::Guard, FileFailure> SharedJournalFile::lock()
{
    if (m_permanentFailure)
        return std::unexpected(*m_permanentFailure);
    if (!m_lock) {
        if (auto opened = openLock(); !opened) {
            readWithoutLock();
            return std::unexpected(opened.error());
        }
    }
    auto guard = m_lock->lock();
    if (!guard || (m_file && m_lock->changeCount() == m_seenChangeCount))
        return guard;
    if (auto caughtUp = catchUp(); !caughtUp)
        return std::unexpected(caughtUp.error());
    return guard;
}

bool SharedJournalFile::isCurrent() const
{
    return !m_lock || !m_file || m_lock->changeCount() == m_seenChangeCount;
}

void SharedJournalFile::didChange()
{
    m_lock->countChange();
    m_seenChangeCount = m_lock->changeCount();
}

void SharedJournalFile::replaceFile(std::shared_ptr<JournalFile> file)
{
    m_file = std::move(file);
    m_hasDirectoryChanged = true;
    didChange();
}

std::expected<void, FileFailure> SharedJournalFile::openLock()
{
    auto const directory = std::filesystem::path(m_path).parent_path().string();
    if (auto made = makeDirectories(m_operations, directory); !made)
        return made;
    auto lock = JournalLock::open(m_operations, m_path + ".lock", m_lockTimeout);
    if (!lock)
        return std::unexpected(lock.error());
    m_lock = *std::move(lock);
    return {};
}

std::expected<void, FileFailure> SharedJournalFile::catchUp()
{
    // If another file has the path now, somebody compacted and this one is obsolete.
    auto caughtUp = m_file && m_file->isAtPath() ? m_file->readNewRecords(m_table, m_logLines) : openFile();
    if (!caughtUp)
        return caughtUp;
    m_seenChangeCount = m_lock->changeCount();
    return {};
}

std::expected<void, FileFailure> SharedJournalFile::openFile()
{
    auto opened = JournalFile::open(m_operations, m_path);
    if (!opened) {
        auto const& [failure, retry] = opened.error();
        if (retry == JournalFile::Retry::Never)
            m_permanentFailure = failure;
        readWithoutLock();
        return std::unexpected(failure);
    }
    m_file = std::move(opened->file);
    m_table = std::move(opened->table);
    m_hasReadFile = true;
    // Whoever created or renamed it may not have synced the directory.
    m_hasDirectoryChanged = true;
    m_logLines.insert(m_logLines.end(), opened->logLines.begin(), opened->logLines.end());
    removeAbandonedCompaction();
    return {};
}

void SharedJournalFile::readWithoutLock()
{
    if (m_hasReadFile)
        return;
    auto table = JournalFile::read(m_operations, m_path);
    if (!table)
        return;
    m_table = *std::move(table);
    m_hasReadFile = true;
}

void SharedJournalFile::removeAbandonedCompaction()
{
    if (!m_lock->tryLockCompaction())
        return;
    m_operations.remove(JournalCompaction::pathFor(m_path));
    m_lock->unlockCompaction();
}

}

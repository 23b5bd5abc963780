#include "ZelvoraAdapters/shared/Journal/internal/SharedJournalFile.h"

#include "ZelvoraAdapters/shared/Journal/internal/JournalCompaction.h"
#include "ZelvoraAdapters/shared/Journal/internal/KeptFiles.h"

#include <fcntl.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <filesystem>

namespace zelvora::shared {

namespace {

using Clock = std::chrono::steady_clock;

// If the lock could not be had in time, its holder is probably a stopped process. From then on this waits for at most a
// fiftieth of the time. Each wait is short, but longer than a running process keeps the lock.
constexpr std::chrono::milliseconds shortPatience { 4 };
constexpr std::chrono::milliseconds timeBetweenWaits { 200 };

// With these failures to open it, what has the path is certainly not our file: nothing, a link, a directory.
bool isAbsentOrForeign(FileFailure const& failure)
{
    static constexpr std::array numbers { 0, ENOENT, ENOTDIR, ELOOP, EISDIR };
    return std::ranges::find(numbers, failure.number) != numbers.end();
}

}

SharedJournalFile::SharedJournalFile(
    FileOperations& operations, std::string path, std::chrono::milliseconds lockTimeout)
    : m_operations(operations)
    , m_path(std::move(path))
    , m_lockTimeout(lockTimeout)
{
}

std::expected<void, FileFailure> SharedJournalFile::lock()
{
    if (m_isLocked)
        return {};
    if (m_permanentFailure)
        return std::unexpected(*m_permanentFailure);
    auto locked = m_file ? lockFile() : openFile();
    m_isLocked = locked.has_value();
    if (locked)
        m_lastTimeout.reset();
    else if (locked.error().number == EBUSY)
        m_lastTimeout = m_lastTimeout.value_or(Clock::now());
    return locked;
}

void SharedJournalFile::unlock()
{
    if (std::exchange(m_isLocked, false))
        m_file->unlock();
}

std::chrono::milliseconds SharedJournalFile::patience()
{
    if (!m_lastTimeout)
        return m_lockTimeout;
    auto const now = Clock::now();
    if (now - *m_lastTimeout < timeBetweenWaits)
        return {};
    m_lastTimeout = now;
    return shortPatience;
}

void SharedJournalFile::replaceFile(std::shared_ptr<JournalFile> file)
{
    // Others may still refer to the old file, which keeps it open.
    m_file->unlock();
    m_file = std::move(file);
    m_file->noteUse();
    m_hasDirectoryChanged = true;
}

std::expected<void, FileFailure> SharedJournalFile::lockFile()
{
    if (auto locked = m_file->lock(patience()); !locked)
        return locked;
    auto caughtUp = catchUp();
    if (!caughtUp)
        m_file->unlock();
    return caughtUp;
}

std::expected<void, FileFailure> SharedJournalFile::openFile()
{
    auto made = makeDirectory();
    if (!made) {
        readWithoutLock();
        return made;
    }
    auto opened = JournalFile::open(m_operations, m_path, patience());
    if (!opened) {
        auto const& [failure, retry] = opened.error();
        if (retry == JournalFile::Retry::Never)
            m_permanentFailure = failure;
        readWithoutLock();
        return std::unexpected(failure);
    }
    adopt(*std::move(opened));
    return {};
}

void SharedJournalFile::adopt(JournalFile::Opened opened)
{
    if (m_file)
        m_file->unlock();
    m_file = std::move(opened.file);
    m_file->noteUse();
    m_table = std::move(opened.table);
    m_hasReadFile = true;
    // Whoever created or renamed it may not have synced the directory.
    m_hasDirectoryChanged = true;
    m_logLines.insert(m_logLines.end(), opened.logLines.begin(), opened.logLines.end());
    JournalCompaction::removeAbandoned(m_operations, m_path);
}

std::expected<void, FileFailure> SharedJournalFile::catchUp()
{
    auto const condition = m_file->condition();
    if (condition == JournalFile::Condition::NotAtItsPath)
        return followPath();
    if (condition == JournalFile::Condition::Shrunk)
        return rewrite("was truncated while in use");
    // Also after a truncation that went unnoticed before the next write, which made the file as long as it was.
    if (m_file->isOverwritten())
        return rewrite("was overwritten while in use");
    if (condition == JournalFile::Condition::Grown)
        return m_file->readNewRecords(m_table, m_logLines);
    return {};
}

std::expected<void, FileFailure> SharedJournalFile::followPath()
{
    m_file->readLastRecords(m_table);
    auto found = JournalFile::find(m_operations, m_path, O_RDWR, patience());
    if (!found) {
        if (!isAbsentOrForeign(found.error()))
            return std::unexpected(found.error());
        auto const isAbsent = found.error().number == ENOENT || found.error().number == ENOTDIR;
        return rewrite(isAbsent ? "was removed while in use" : "was replaced while in use");
    }
    if (found->kind == HeaderKind::Newer) {
        m_permanentFailure = JournalFile::newerFormat(m_path);
        return std::unexpected(*m_permanentFailure);
    }
    auto const isContinued = found->kind == HeaderKind::Current
        && (found->file->header().isSuccessorOf(m_file->header()) || found->file->isUsedByOthers());
    return isContinued ? continueWith(*std::move(found)) : rewrite("was replaced while in use");
}

std::expected<void, FileFailure> SharedJournalFile::continueWith(JournalFile::Found found)
{
    JournalFile::Opened opened { .file = std::move(found.file), .table = {}, .logLines = {} };
    auto const isIntact = JournalFile::recover(opened);
    if (!isIntact)
        return std::unexpected(isIntact.error());
    if (!*isIntact)
        return rewrite("was replaced by a damaged file while in use");
    if (!opened.file->header().isSuccessorOf(m_file->header())) {
        m_lostValues = m_table.snapshot();
        m_logLines.push_back(m_path + " was replaced while in use by a file that another process uses");
    }
    adopt(std::move(opened));
    return {};
}

std::expected<void, FileFailure> SharedJournalFile::rewrite(std::string const& event)
{
    if (auto made = makeDirectory(); !made)
        return made;
    std::atomic<bool> const isCancelled = false;
    JournalCompaction copy { m_operations, m_file, m_table.snapshot() };
    if (auto written = copy.write(isCancelled); !written)
        return written;
    auto const found = moveFoundAside();
    if (!found)
        return std::unexpected(found.error());
    auto file = copy.finish();
    if (!file)
        return std::unexpected(file.error());
    replaceFile(*std::move(file));
    m_table.correctSizes(copy.snapshot(), copy.exactBytes());
    m_logLines.push_back(m_path + " " + event + (found->empty() ? "" : "; what was found is now " + *found)
        + "; all values were written again");
    return {};
}

std::expected<std::string, FileFailure> SharedJournalFile::moveFoundAside()
{
    struct ::stat status {};
    auto const isNothing = m_operations.statusOfPath(m_path, status) < 0;
    if (isNothing || (S_ISREG(status.st_mode) && status.st_size == 0))
        return {};
    return moveAside(m_operations, m_path, ".found");
}

std::expected<void, FileFailure> SharedJournalFile::makeDirectory()
{
    return makeDirectories(m_operations, std::filesystem::path(m_path).parent_path().string());
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

}

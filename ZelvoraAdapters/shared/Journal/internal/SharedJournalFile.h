#pragma once

#include "ZelvoraAdapters/shared/Files/internal/FileOperations.h"
#include "ZelvoraAdapters/shared/Journal/internal/JournalFile.h"
#include "ZelvoraAdapters/shared/Journal/internal/JournalLock.h"
#include "ZelvoraAdapters/shared/Journal/internal/JournalTable.h"

#include <chrono>
#include <cstdint>
#include <expected>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace zelvora::shared {

/// A journal file that others may write too, and its values as of the last lock. `lock` also opens whatever is not open
/// yet, so that an obstacle is retried with each change. One thread at a time.
class SharedJournalFile final {
public:
    SharedJournalFile(FileOperations& operations, std::string path, std::chrono::milliseconds lockTimeout);

    /// Locks the file for writing and reads what others wrote since the last lock.
    [[nodiscard]] std::expected<JournalLock::Guard, FileFailure> lock();

    /// Whether nobody else wrote since the last lock. True if no file is open.
    [[nodiscard]] bool isCurrent() const;
    /// Whether the table was ever read from the file. Otherwise it is empty for lack of one.
    [[nodiscard]] bool hasReadFile() const { return m_hasReadFile; }
    [[nodiscard]] JournalTable& table() { return m_table; }
    [[nodiscard]] JournalTable const& table() const { return m_table; }

    /// nullptr before the first successful lock. After that, `lock` may replace it, if somebody compacted.
    [[nodiscard]] std::shared_ptr<JournalFile> const& file() const { return m_file; }

    /// Requires the lock: tells others that the file changed.
    void didChange();
    /// Requires the lock: continues with a file that has the same values and now has the path.
    void replaceFile(std::shared_ptr<JournalFile> file);

    /// See `JournalLock`. Only after a successful lock.
    [[nodiscard]] bool tryLockCompaction() { return m_lock->tryLockCompaction(); }
    void unlockCompaction() { m_lock->unlockCompaction(); }

    /// Whether the file was created or renamed since the last call, so that its directory must be synced.
    [[nodiscard]] bool takeDirectoryChange() { return std::exchange(m_hasDirectoryChanged, false); }
    void noteDirectoryChange() { m_hasDirectoryChanged = true; }
    [[nodiscard]] std::vector<std::string> takeLogLines() { return std::exchange(m_logLines, {}); }
    [[nodiscard]] bool hasLogLines() const { return !m_logLines.empty(); }

private:
    [[nodiscard]] std::expected<void, FileFailure> openLock();
    [[nodiscard]] std::expected<void, FileFailure> catchUp();
    [[nodiscard]] std::expected<void, FileFailure> openFile();
    void readWithoutLock();
    void removeAbandonedCompaction();

    FileOperations& m_operations;
    std::string m_path;
    std::chrono::milliseconds m_lockTimeout;
    std::unique_ptr<JournalLock> m_lock;
    std::shared_ptr<JournalFile> m_file;
    JournalTable m_table;
    std::uint64_t m_seenChangeCount = 0;
    std::vector<std::string> m_logLines;
    std::optional<FileFailure> m_permanentFailure;
    bool m_hasReadFile = false;
    bool m_hasDirectoryChanged = false;
};

}

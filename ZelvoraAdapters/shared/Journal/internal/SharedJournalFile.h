#pragma once

#include "ZelvoraAdapters/shared/Files/internal/FileOperations.h"
#include "ZelvoraAdapters/shared/Journal/internal/JournalFile.h"
#include "ZelvoraAdapters/shared/Journal/internal/JournalTable.h"

#include <chrono>
#include <expected>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace zelvora::shared {

/// A journal file that others may write too, and its values as of the last lock. `lock` also opens whatever is not open
/// yet, so that an obstacle is retried with each change. One thread at a time.
///
/// A lock is kept until `unlock`, and locking again costs nothing until then: locking and unlocking take more system
/// calls than the write that they guard. While it is locked, nobody else can have written. Each time that it is locked,
/// it is compared with what is known of it. If the path no longer names the file, or the file was truncated, the values
/// in memory are written to a new file, and what was found at the path is kept beside it. But if another process uses
/// what was found, it is continued, and the values that it lacks are `lostValues`.
class SharedJournalFile final {
public:
    SharedJournalFile(FileOperations& operations, std::string path, std::chrono::milliseconds lockTimeout);

    /// Locks the file for writing and reads what others wrote since the last lock. Waits until the timeout; after that,
    /// further calls hardly wait until one succeeds.
    [[nodiscard]] std::expected<void, FileFailure> lock();
    void unlock();
    [[nodiscard]] bool isLocked() const { return m_isLocked; }

    /// Whether nobody else wrote since the last lock, at the cost of a system call unless it is locked. True if no file
    /// is open.
    [[nodiscard]] bool isCurrent() const { return m_isLocked || !m_file || m_file->seemsUnchanged(); }
    /// Whether the table was ever read from the file. Otherwise it is empty for lack of one.
    [[nodiscard]] bool hasReadFile() const { return m_hasReadFile; }
    [[nodiscard]] JournalTable& table() { return m_table; }
    [[nodiscard]] JournalTable const& table() const { return m_table; }
    /// The values that were lost with a file since the last call, other than those in the table.
    [[nodiscard]] JournalTable::Snapshot takeLostValues() { return std::exchange(m_lostValues, {}); }

    /// nullptr before the first successful lock. After that, `lock` may replace it.
    [[nodiscard]] std::shared_ptr<JournalFile> const& file() const { return m_file; }

    /// Requires the lock: continues with a file that has the same values, now has the path, and is locked.
    void replaceFile(std::shared_ptr<JournalFile> file);

    /// Whether the file was created or renamed since the last call, so that its directory must be synced.
    [[nodiscard]] bool takeDirectoryChange() { return std::exchange(m_hasDirectoryChanged, false); }
    void noteDirectoryChange() { m_hasDirectoryChanged = true; }
    [[nodiscard]] std::vector<std::string> takeLogLines() { return std::exchange(m_logLines, {}); }
    [[nodiscard]] bool hasLogLines() const { return !m_logLines.empty(); }

private:
    [[nodiscard]] std::chrono::milliseconds patience();
    [[nodiscard]] std::expected<void, FileFailure> lockFile();
    [[nodiscard]] std::expected<void, FileFailure> openFile();
    [[nodiscard]] std::expected<void, FileFailure> catchUp();
    [[nodiscard]] std::expected<void, FileFailure> followPath();
    [[nodiscard]] std::expected<void, FileFailure> continueWith(JournalFile::Found found);
    [[nodiscard]] std::expected<void, FileFailure> rewrite(std::string const& event);
    [[nodiscard]] std::expected<std::string, FileFailure> moveFoundAside();
    [[nodiscard]] std::expected<void, FileFailure> makeDirectory();
    void adopt(JournalFile::Opened opened);
    void readWithoutLock();

    FileOperations& m_operations;
    std::string m_path;
    std::chrono::milliseconds m_lockTimeout;
    std::shared_ptr<JournalFile> m_file;
    JournalTable m_table;
    JournalTable::Snapshot m_lostValues;
    bool m_isLocked = false;
    /// When the lock was last waited for in vain; absent after a success.
    std::optional<std::chrono::steady_clock::time_point> m_lastTimeout;
    std::vector<std::string> m_logLines;
    std::optional<FileFailure> m_permanentFailure;
    bool m_hasReadFile = false;
    bool m_hasDirectoryChanged = false;
};

}

#pragma once

#include "ZelvoraAdapters/shared/Files/internal/FileOperations.h"

#include <chrono>
#include <cstdint>
#include <expected>
#include <string>

namespace zelvora::shared {

/// The lock on a journal file between all who have it open, in this process and in others. It consists of the system's
/// advisory locks on bytes of the file itself: nothing beside the file can be damaged or planted, the lock is always on
/// the very file that it guards, and the system releases it when a process dies. One thread at a time.
class JournalLock final {
public:
    /// The file is open for reading and writing and outlives this.
    explicit JournalLock(int file) : m_file(file) { }

    /// Waits for the lock until the timeout, as its holder may be a stopped process. Whoever waits gets the lock before
    /// whoever has just released it.
    [[nodiscard]] std::expected<void, FileFailure> lock(std::chrono::milliseconds timeout, std::string const& path);
    void unlock();

    /// For a file that is still being written: only its writer has this lock. It is independent of the other one.
    [[nodiscard]] bool tryLockWriting();
    void unlockWriting();

    /// Tells others that this file is in use, until it is closed.
    void noteUse();
    [[nodiscard]] bool isUsedByOthers() const;

private:
    int m_file;
};

}

#pragma once

#include "ZelvoraAdapters/shared/Files/internal/FileDescriptor.h"
#include "ZelvoraAdapters/shared/Files/internal/FileOperations.h"

#include <chrono>
#include <cstdint>
#include <expected>
#include <memory>
#include <string>
#include <utility>

namespace zelvora::shared {

/// The lock between all journals that are open on one file, in this process and in others, and a counter of the file's
/// changes. Both are in memory that is shared through a small lock file, so that an uncontended lock makes no system
/// call; a lock on the file itself would make two, which cost as much as the write that they guard.
///
/// Whoever opens the lock file while nobody else has it open initializes the memory, so none of it needs to survive a
/// restart. If a process dies with the lock held, the next one gets it and the file counts as changed. The lock file
/// must not be removed while in use.
class JournalLock final {
public:
    /// Unlocks on destruction.
    class Guard final {
    public:
        explicit Guard(JournalLock& lock) : m_lock(&lock) { }
        Guard(Guard&& other) noexcept : m_lock(std::exchange(other.m_lock, nullptr)) { }
        Guard& operator=(Guard&&) = delete;
        Guard(Guard const&) = delete;
        Guard& operator=(Guard const&) = delete;
        ~Guard()
        {
            if (m_lock)
                m_lock->unlock();
        }

    private:
        JournalLock* m_lock;
    };

    [[nodiscard]] static std::expected<std::unique_ptr<JournalLock>, FileFailure> open(
        FileOperations& operations, std::string const& path, std::chrono::milliseconds timeout);
    ~JournalLock();
    JournalLock(JournalLock const&) = delete;
    JournalLock& operator=(JournalLock const&) = delete;

    /// Waits for the lock until the timeout, as its holder may be a stopped process. After a timeout, further calls do
    /// not wait until one succeeds. One thread at a time.
    [[nodiscard]] std::expected<Guard, FileFailure> lock();

    /// Increases with every change of the file by anybody. Needs no lock.
    [[nodiscard]] std::uint64_t changeCount() const;
    /// Requires the lock.
    void countChange();

    /// Only one journal compacts at a time; a process that dies releases this. Needs no lock.
    [[nodiscard]] bool tryLockCompaction();
    void unlockCompaction();

private:
    struct Shared;

    JournalLock(std::string path, std::chrono::milliseconds timeout, FileDescriptor file);
    void unlock();
    [[nodiscard]] std::expected<void, FileFailure> attach(FileOperations& operations);
    [[nodiscard]] std::expected<void, FileFailure> map();
    void initialize();
    [[nodiscard]] bool hasExpectedLayout() const;

    std::string m_path;
    std::chrono::milliseconds m_timeout;
    FileDescriptor m_file;
    Shared* m_shared = nullptr;
    bool m_isCompactionLocked = false;
    bool m_lastLockTimedOut = false;
};

}

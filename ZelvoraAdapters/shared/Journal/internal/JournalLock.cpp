#include "ZelvoraAdapters/shared/Journal/internal/JournalLock.h"

#include <fcntl.h>
#include <pthread.h>
#include <sys/mman.h>

#include <atomic>
#include <cerrno>
#include <ctime>
#include <new>
#include <thread>

namespace zelvora::shared {

namespace {

// The bytes of the lock file that are locked. These locks belong to the open file description, so that they exclude two
// journals in one process as well, and the system releases them when a process dies.
enum class LockedByte : std::uint8_t {
    Opening,
    InUse,
    Compaction,
};

constexpr std::size_t mappedSize = 4096;
constexpr std::uint64_t layoutMagic = 0x5A504A4C00000001;

int lockByte(int file, LockedByte byte, short type)
{
    struct ::flock lock {};
    lock.l_type = type;
    lock.l_whence = SEEK_SET;
    lock.l_start = static_cast<::off_t>(byte);
    lock.l_len = 1;
    return ::fcntl(file, F_OFD_SETLK, &lock); // NOLINT(*-vararg)
}

bool waitForByteLock(int file, LockedByte byte, short type, std::chrono::milliseconds timeout)
{
    auto const deadline = std::chrono::steady_clock::now() + timeout;
    while (lockByte(file, byte, type) < 0) {
        auto const isTaken = errno == EAGAIN || errno == EACCES || errno == EINTR;
        if (!isTaken || std::chrono::steady_clock::now() >= deadline)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
}

::timespec timeAfter(std::chrono::milliseconds timeout)
{
    ::timespec time {};
    ::clock_gettime(CLOCK_REALTIME, &time);
    auto const nanoseconds = std::chrono::nanoseconds(timeout).count() + time.tv_nsec;
    time.tv_sec += static_cast<::time_t>(nanoseconds / 1'000'000'000);
    time.tv_nsec = static_cast<long>(nanoseconds % 1'000'000'000);
    return time;
}

}

struct JournalLock::Shared {
    std::uint64_t magic = layoutMagic;
    std::uint64_t size = sizeof(Shared);
    std::atomic<std::uint64_t> changeCount = 1;
    ::pthread_mutex_t mutex {};

    static_assert(
        std::atomic<std::uint64_t>::is_always_lock_free, "a lock inside one process would not exclude the others");
};

std::expected<std::unique_ptr<JournalLock>, FileFailure> JournalLock::open(
    FileOperations& operations, std::string const& path, std::chrono::milliseconds timeout)
{
    auto file = openFile(operations, path, O_RDWR | O_CREAT);
    if (!file)
        return std::unexpected(file.error());
    std::unique_ptr<JournalLock> lock { new JournalLock(path, timeout, *std::move(file)) };
    if (!waitForByteLock(lock->m_file.number(), LockedByte::Opening, F_WRLCK, timeout))
        return fileFailure("cannot lock", path);
    auto attached = lock->attach(operations);
    lockByte(lock->m_file.number(), LockedByte::Opening, F_UNLCK);
    if (!attached)
        return std::unexpected(attached.error());
    return lock;
}

JournalLock::JournalLock(std::string path, std::chrono::milliseconds timeout, FileDescriptor file)
    : m_path(std::move(path))
    , m_timeout(timeout)
    , m_file(std::move(file))
{
}

JournalLock::~JournalLock()
{
    if (m_shared)
        ::munmap(m_shared, mappedSize);
}

std::expected<void, FileFailure> JournalLock::attach(FileOperations& operations)
{
    auto const isFirst = lockByte(m_file.number(), LockedByte::InUse, F_WRLCK) == 0;
    if (isFirst) {
        // Written rather than only extended: if the disk is full, this must fail, not an access to the mapping.
        if (auto made = writeFully(operations, m_file.number(), std::string(mappedSize, '\0'), 0, m_path); !made)
            return made;
    }
    if (auto mapped = map(); !mapped)
        return mapped;
    if (isFirst)
        initialize();
    // Converts the exclusive lock to a shared one atomically.
    if (lockByte(m_file.number(), LockedByte::InUse, F_RDLCK) < 0)
        return fileFailure("cannot lock", m_path);
    if (hasExpectedLayout())
        return {};
    errno = EPROTO;
    return fileFailure("cannot use the lock file of another version", m_path);
}

std::expected<void, FileFailure> JournalLock::map()
{
    struct ::stat status {};
    if (::fstat(m_file.number(), &status) < 0 || status.st_size < static_cast<::off_t>(mappedSize)) {
        errno = EPROTO;
        return fileFailure("cannot use the truncated lock file", m_path);
    }
    auto* const memory = ::mmap(nullptr, mappedSize, PROT_READ | PROT_WRITE, MAP_SHARED, m_file.number(), 0);
    if (memory == MAP_FAILED) // NOLINT(*-int-to-ptr, *-cstyle-cast)
        return fileFailure("cannot map", m_path);
    m_shared = static_cast<Shared*>(memory);
    return {};
}

void JournalLock::initialize()
{
    m_shared = new (m_shared) Shared;
    ::pthread_mutexattr_t attributes {};
    ::pthread_mutexattr_init(&attributes);
    ::pthread_mutexattr_setpshared(&attributes, PTHREAD_PROCESS_SHARED);
    ::pthread_mutexattr_setrobust(&attributes, PTHREAD_MUTEX_ROBUST);
    ::pthread_mutex_init(&m_shared->mutex, &attributes);
    ::pthread_mutexattr_destroy(&attributes);
}

bool JournalLock::hasExpectedLayout() const
{
    return m_shared->magic == layoutMagic && m_shared->size == sizeof(Shared);
}

std::expected<JournalLock::Guard, FileFailure> JournalLock::lock()
{
    auto result = ::pthread_mutex_trylock(&m_shared->mutex);
    if (result == EBUSY && !m_lastLockTimedOut) {
        auto const deadline = timeAfter(m_timeout);
        result = ::pthread_mutex_timedlock(&m_shared->mutex, &deadline);
    }
    m_lastLockTimedOut = result == EBUSY || result == ETIMEDOUT;
    if (result == EOWNERDEAD) {
        ::pthread_mutex_consistent(&m_shared->mutex);
        // The dead owner may have written without counting it.
        countChange();
        return Guard { *this };
    }
    if (result == 0)
        return Guard { *this };
    errno = result;
    return fileFailure("cannot lock", m_path);
}

void JournalLock::unlock()
{
    ::pthread_mutex_unlock(&m_shared->mutex);
}

std::uint64_t JournalLock::changeCount() const
{
    return m_shared->changeCount.load(std::memory_order_acquire);
}

void JournalLock::countChange()
{
    // The lock excludes other writers, so an atomic increment is not needed.
    m_shared->changeCount.store(m_shared->changeCount.load(std::memory_order_relaxed) + 1, std::memory_order_release);
}

bool JournalLock::tryLockCompaction()
{
    // The system would grant a lock again to the open file that already has it.
    if (m_isCompactionLocked)
        return false;
    m_isCompactionLocked = lockByte(m_file.number(), LockedByte::Compaction, F_WRLCK) == 0;
    return m_isCompactionLocked;
}

void JournalLock::unlockCompaction()
{
    lockByte(m_file.number(), LockedByte::Compaction, F_UNLCK);
    m_isCompactionLocked = false;
}

}

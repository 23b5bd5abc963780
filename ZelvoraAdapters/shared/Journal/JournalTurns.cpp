#include "ZelvoraAdapters/shared/Journal/JournalTurns.h"

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

// Bytes of the side file that are locked. The locks belong to the open file, so that two journals of one process
// exclude each other as well, and the system gives them up for a process that dies.
enum class Place : std::uint8_t {
    Entrance,
    Presence,
    Compaction,
};

constexpr std::size_t mappedSize = 4096;
constexpr std::uint64_t layoutMark = 0x5A504A4C00000001;

int lockPlace(int file, Place place, short type)
{
    struct ::flock lock {};
    lock.l_type = type;
    lock.l_whence = SEEK_SET;
    lock.l_start = static_cast<::off_t>(place);
    lock.l_len = 1;
    return ::fcntl(file, F_OFD_SETLK, &lock); // NOLINT(*-vararg)
}

bool waitForPlace(int file, Place place, short type, std::chrono::milliseconds patience)
{
    auto const deadline = std::chrono::steady_clock::now() + patience;
    while (lockPlace(file, place, type) < 0) {
        auto const isTaken = errno == EAGAIN || errno == EACCES || errno == EINTR;
        if (!isTaken || std::chrono::steady_clock::now() >= deadline)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
}

::timespec momentAfter(std::chrono::milliseconds patience)
{
    ::timespec moment {};
    ::clock_gettime(CLOCK_REALTIME, &moment);
    auto const nanoseconds = std::chrono::nanoseconds(patience).count() + moment.tv_nsec;
    moment.tv_sec += static_cast<::time_t>(nanoseconds / 1'000'000'000);
    moment.tv_nsec = static_cast<long>(nanoseconds % 1'000'000'000);
    return moment;
}

}

struct JournalTurns::Shared {
    std::uint64_t mark = layoutMark;
    std::uint64_t size = sizeof(Shared);
    std::atomic<std::uint64_t> changes = 1;
    ::pthread_mutex_t mutex {};

    static_assert(std::atomic<std::uint64_t>::is_always_lock_free, "what processes share must need no lock of one");
};

std::expected<std::unique_ptr<JournalTurns>, FileFailure> JournalTurns::open(
    FileOperations& operations, std::string const& path, std::chrono::milliseconds patience)
{
    auto file = openFile(operations, path, O_RDWR | O_CREAT);
    if (!file)
        return std::unexpected(file.error());
    std::unique_ptr<JournalTurns> turns { new JournalTurns(path, patience, *std::move(file)) };
    if (!waitForPlace(turns->m_file.number(), Place::Entrance, F_WRLCK, patience))
        return fileFailure("cannot lock", path);
    auto entered = turns->enter(operations);
    lockPlace(turns->m_file.number(), Place::Entrance, F_UNLCK);
    if (!entered)
        return std::unexpected(entered.error());
    return turns;
}

JournalTurns::JournalTurns(std::string path, std::chrono::milliseconds patience, FileDescriptor file)
    : m_path(std::move(path))
    , m_patience(patience)
    , m_file(std::move(file))
{
}

JournalTurns::~JournalTurns()
{
    if (m_shared)
        ::munmap(m_shared, mappedSize);
}

std::expected<void, FileFailure> JournalTurns::enter(FileOperations& operations)
{
    auto const isAlone = lockPlace(m_file.number(), Place::Presence, F_WRLCK) == 0;
    if (isAlone) {
        // Written, not only made long: a page that the disk has no room for must fail here and not when it is touched.
        if (auto made = writeFully(operations, m_file.number(), std::string(mappedSize, '\0'), 0, m_path); !made)
            return made;
    }
    if (auto mapped = map(); !mapped)
        return mapped;
    if (isAlone)
        makeShared();
    // From exclusive to shared without a gap.
    if (lockPlace(m_file.number(), Place::Presence, F_RDLCK) < 0)
        return fileFailure("cannot lock", m_path);
    if (sharedIsOurs())
        return {};
    errno = EPROTO;
    return fileFailure("another program takes turns by other rules in", m_path);
}

std::expected<void, FileFailure> JournalTurns::map()
{
    struct ::stat status {};
    if (::fstat(m_file.number(), &status) < 0 || status.st_size < static_cast<::off_t>(mappedSize)) {
        errno = EPROTO;
        return fileFailure("cannot share", m_path);
    }
    auto* const memory = ::mmap(nullptr, mappedSize, PROT_READ | PROT_WRITE, MAP_SHARED, m_file.number(), 0);
    if (memory == MAP_FAILED) // NOLINT(*-int-to-ptr, *-cstyle-cast)
        return fileFailure("cannot map", m_path);
    m_shared = static_cast<Shared*>(memory);
    return {};
}

void JournalTurns::makeShared()
{
    m_shared = new (m_shared) Shared;
    ::pthread_mutexattr_t attributes {};
    ::pthread_mutexattr_init(&attributes);
    ::pthread_mutexattr_setpshared(&attributes, PTHREAD_PROCESS_SHARED);
    ::pthread_mutexattr_setrobust(&attributes, PTHREAD_MUTEX_ROBUST);
    ::pthread_mutex_init(&m_shared->mutex, &attributes);
    ::pthread_mutexattr_destroy(&attributes);
}

bool JournalTurns::sharedIsOurs() const
{
    return m_shared->mark == layoutMark && m_shared->size == sizeof(Shared);
}

std::expected<void, FileFailure> JournalTurns::take()
{
    auto result = ::pthread_mutex_trylock(&m_shared->mutex);
    if (result == EBUSY && !m_waitedInVain) {
        auto const moment = momentAfter(m_patience);
        result = ::pthread_mutex_timedlock(&m_shared->mutex, &moment);
    }
    m_waitedInVain = result == EBUSY || result == ETIMEDOUT;
    if (result == EOWNERDEAD) {
        ::pthread_mutex_consistent(&m_shared->mutex);
        // Nobody knows what it did last: everybody looks.
        countChange();
        return {};
    }
    if (result == 0)
        return {};
    errno = result;
    return fileFailure("cannot get a turn in", m_path);
}

void JournalTurns::end()
{
    ::pthread_mutex_unlock(&m_shared->mutex);
}

std::uint64_t JournalTurns::changes() const
{
    return m_shared->changes.load(std::memory_order_acquire);
}

void JournalTurns::countChange()
{
    // One at a time: the turn sees to that, and no locked instruction is needed.
    m_shared->changes.store(m_shared->changes.load(std::memory_order_relaxed) + 1, std::memory_order_release);
}

bool JournalTurns::claimCompaction()
{
    // The system would grant it again to the file that has it.
    if (m_hasClaim)
        return false;
    m_hasClaim = lockPlace(m_file.number(), Place::Compaction, F_WRLCK) == 0;
    return m_hasClaim;
}

void JournalTurns::giveUpCompaction()
{
    lockPlace(m_file.number(), Place::Compaction, F_UNLCK);
    m_hasClaim = false;
}

}

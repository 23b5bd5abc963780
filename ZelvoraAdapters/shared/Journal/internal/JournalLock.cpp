#include "ZelvoraAdapters/shared/Journal/internal/JournalLock.h"

#include <fcntl.h>

#include <cerrno>
#include <thread>

namespace zelvora::shared {

namespace {

using Clock = std::chrono::steady_clock;

// The bytes that are locked; what they contain does not matter. These locks belong to the open file description, so
// that they exclude two journals in one process as well.
enum class LockedByte : std::uint8_t {
    Content,
    /// Held while waiting for Content. It is needed for each attempt, so that nobody can take Content twice in a row
    /// while another one waits.
    Waiting,
    Writing,
    Use,
};

// The system has no lock with a timeout.
constexpr std::chrono::microseconds pollInterval { 200 };

struct ::flock lockOf(LockedByte byte, short type)
{
    struct ::flock lock {};
    lock.l_type = type;
    lock.l_whence = SEEK_SET;
    lock.l_start = static_cast<::off_t>(byte);
    lock.l_len = 1;
    return lock;
}

int setLock(int file, LockedByte byte, short type)
{
    auto lock = lockOf(byte, type);
    return ::fcntl(file, F_OFD_SETLK, &lock); // NOLINT(*-vararg)
}

bool waitForLock(int file, LockedByte byte, Clock::time_point deadline)
{
    while (setLock(file, byte, F_WRLCK) < 0) {
        auto const isTaken = errno == EAGAIN || errno == EACCES || errno == EINTR;
        if (!isTaken)
            return false;
        if (Clock::now() >= deadline) {
            errno = EBUSY;
            return false;
        }
        std::this_thread::sleep_for(pollInterval);
    }
    return true;
}

}

// Not const: these change what others may do with the file.
// NOLINTBEGIN(readability-make-member-function-const)

std::expected<void, FileFailure> JournalLock::lock(std::chrono::milliseconds timeout, std::string const& path)
{
    auto const deadline = Clock::now() + timeout;
    if (!waitForLock(m_file, LockedByte::Waiting, deadline))
        return fileFailure("cannot lock", path);
    auto const isLocked = waitForLock(m_file, LockedByte::Content, deadline);
    auto const error = errno;
    setLock(m_file, LockedByte::Waiting, F_UNLCK);
    if (isLocked)
        return {};
    errno = error;
    return fileFailure("cannot lock", path);
}

void JournalLock::unlock()
{
    setLock(m_file, LockedByte::Content, F_UNLCK);
}

bool JournalLock::tryLockWriting()
{
    return setLock(m_file, LockedByte::Writing, F_WRLCK) == 0;
}

void JournalLock::unlockWriting()
{
    setLock(m_file, LockedByte::Writing, F_UNLCK);
}

void JournalLock::noteUse()
{
    setLock(m_file, LockedByte::Use, F_RDLCK);
}

// NOLINTEND(readability-make-member-function-const)

bool JournalLock::isUsedByOthers() const
{
    auto lock = lockOf(LockedByte::Use, F_WRLCK);
    return ::fcntl(m_file, F_OFD_GETLK, &lock) == 0 && lock.l_type != F_UNLCK; // NOLINT(*-vararg)
}

}

#include "tests/simulation/FaultyFiles.h"

#include <algorithm>
#include <array>
#include <cerrno>

namespace zelvora::simulation {

void FaultyFiles::breakSome(Random& random)
{
    static constexpr std::array<int, 4> errors { ENOSPC, EIO, EDQUOT, EACCES };
    m_error = random.pick(errors);
    m_allowed = random.oneIn(2) ? random.below(60) : 0;
    m_broken = static_cast<unsigned>(random.below(31)) + 1;
}

bool FaultyFiles::fails(Call call) const
{
    if ((m_broken & static_cast<unsigned>(call)) == 0)
        return false;
    errno = m_error;
    return true;
}

int FaultyFiles::open(std::string const& path, int flags, ::mode_t mode)
{
    return fails(Call::Open) ? -1 : FileOperations::open(path, flags, mode);
}

::ssize_t FaultyFiles::write(int file, char const* bytes, std::size_t count, ::off_t offset)
{
    if (!fails(Call::Write))
        return FileOperations::write(file, bytes, count, offset);
    auto const allowed = std::min(count, m_allowed.exchange(0));
    return allowed > 0 ? FileOperations::write(file, bytes, allowed, offset) : -1;
}

int FaultyFiles::truncate(int file, ::off_t size)
{
    return fails(Call::Truncate) ? -1 : FileOperations::truncate(file, size);
}

int FaultyFiles::sync(int)
{
    return fails(Call::Sync) ? -1 : 0;
}

int FaultyFiles::rename(std::string const& from, std::string const& to)
{
    return fails(Call::Rename) ? -1 : FileOperations::rename(from, to);
}

}

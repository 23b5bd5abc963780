#include "fuzz/MemoryFiles.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <utility>

namespace zelvora::fuzz {

namespace {

int failWith(int number)
{
    errno = number;
    return -1;
}

void describe(std::string const& content, struct ::stat& status)
{
    status = {};
    status.st_mode = S_IFREG | S_IRUSR | S_IWUSR;
    status.st_nlink = 1;
    status.st_uid = ::geteuid();
    status.st_size = static_cast<::off_t>(content.size());
    status.st_ino = static_cast<::ino_t>(reinterpret_cast<std::uintptr_t>(&content));
}

}

int MemoryFiles::open(std::string const& path, int flags, ::mode_t)
{
    auto const exists = files.contains(path);
    if (!exists && (flags & O_CREAT) == 0)
        return failWith(ENOENT);
    if (exists && (flags & O_EXCL) != 0)
        return failWith(EEXIST);
    if ((flags & O_TRUNC) != 0 || !exists)
        files[path].clear();
    // The caller locks and closes the number itself, so it must be one of the system's.
    auto const number = ::memfd_create("fuzz", MFD_CLOEXEC);
    m_open[number] = path;
    return number;
}

::ssize_t MemoryFiles::read(int file, char* bytes, std::size_t count, ::off_t offset)
{
    auto const& content = files[m_open[file]];
    auto const begin = std::min(static_cast<std::size_t>(offset), content.size());
    auto const length = std::min(count, content.size() - begin);
    std::memcpy(bytes, content.data() + begin, length);
    return static_cast<::ssize_t>(length);
}

::ssize_t MemoryFiles::write(int file, char const* bytes, std::size_t count, ::off_t offset)
{
    auto& content = files[m_open[file]];
    auto const end = static_cast<std::size_t>(offset) + count;
    content.resize(std::max(content.size(), end));
    std::memcpy(content.data() + offset, bytes, count);
    return static_cast<::ssize_t>(count);
}

int MemoryFiles::truncate(int file, ::off_t size)
{
    files[m_open[file]].resize(static_cast<std::size_t>(size));
    return 0;
}

int MemoryFiles::changeMode(int, ::mode_t)
{
    return 0;
}

int MemoryFiles::sync(int)
{
    return 0;
}

int MemoryFiles::statusOfFile(int file, struct ::stat& status)
{
    return statusOfPath(m_open[file], status);
}

int MemoryFiles::statusOfPath(std::string const& path, struct ::stat& status)
{
    auto const found = files.find(path);
    if (found == files.end())
        return failWith(ENOENT);
    describe(found->second, status);
    return 0;
}

int MemoryFiles::rename(std::string const& from, std::string const& to)
{
    auto node = files.extract(from);
    if (node.empty())
        return failWith(ENOENT);
    files.erase(to);
    node.key() = to;
    files.insert(std::move(node));
    for (auto& [number, path] : m_open) {
        if (path == from)
            path = to;
    }
    return 0;
}

int MemoryFiles::remove(std::string const& path)
{
    return files.erase(path) == 0 ? failWith(ENOENT) : 0;
}

int MemoryFiles::makeDirectory(std::string const&, ::mode_t)
{
    return 0;
}

}

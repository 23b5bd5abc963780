#include "ZelvoraAdapters/shared/Files/internal/FileOperations.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>

namespace zelvora::shared {

namespace {

constexpr ::mode_t ownerOnly = 0600;
constexpr ::mode_t ownerOnlyDirectory = 0700;
constexpr ::mode_t othersAccess = 0077;

std::expected<FileDescriptor, FileFailure> openPath(FileOperations& operations, std::string const& path, int flags)
{
    int number = -1;
    do
        number = operations.open(path, flags | O_CLOEXEC, ownerOnly);
    while (number < 0 && errno == EINTR);
    if (number < 0)
        return fileFailure("cannot open", path);
    return FileDescriptor { number };
}

}

FileOperations& FileOperations::system()
{
    static FileOperations s_system;
    return s_system;
}

int FileOperations::open(std::string const& path, int flags, ::mode_t mode)
{
    return ::open(path.c_str(), flags, mode); // NOLINT(*-vararg)
}

::ssize_t FileOperations::read(int file, char* bytes, std::size_t count, ::off_t offset)
{
    return ::pread(file, bytes, count, offset);
}

::ssize_t FileOperations::write(int file, char const* bytes, std::size_t count, ::off_t offset)
{
    return ::pwrite(file, bytes, count, offset);
}

int FileOperations::truncate(int file, ::off_t size)
{
    return ::ftruncate(file, size);
}

int FileOperations::changeMode(int file, ::mode_t mode)
{
    return ::fchmod(file, mode);
}

int FileOperations::sync(int file)
{
    return ::fdatasync(file);
}

int FileOperations::statusOfFile(int file, struct ::stat& status)
{
    return ::fstat(file, &status);
}

int FileOperations::statusOfPath(std::string const& path, struct ::stat& status)
{
    return ::lstat(path.c_str(), &status);
}

int FileOperations::rename(std::string const& from, std::string const& to)
{
    return std::rename(from.c_str(), to.c_str());
}

int FileOperations::remove(std::string const& path)
{
    return ::unlink(path.c_str());
}

int FileOperations::makeDirectory(std::string const& path, ::mode_t mode)
{
    return ::mkdir(path.c_str(), mode);
}

std::unexpected<FileFailure> fileFailure(std::string_view attempt, std::string const& path)
{
    auto const number = errno;
    std::string reason { attempt };
    reason.append(" ").append(path).append(": ").append(std::generic_category().message(number));
    return std::unexpected(FileFailure { .reason = std::move(reason), .number = number });
}

std::expected<FileDescriptor, FileFailure> openFile(FileOperations& operations, std::string const& path, int flags)
{
    // Without O_NONBLOCK, opening a FIFO for reading waits for a writer.
    auto file = openPath(operations, path, flags | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY);
    if (!file)
        return file;
    struct ::stat status {};
    if (operations.statusOfFile(file->number(), status) < 0)
        return fileFailure("cannot stat", path);
    if (!S_ISREG(status.st_mode))
        return std::unexpected(FileFailure { .reason = path + " is not a regular file", .number = 0 });
    auto const isWritten = (flags & O_ACCMODE) != O_RDONLY;
    // A file system without modes refuses this, and there is nothing to protect on it.
    if (isWritten && (status.st_mode & othersAccess) != 0)
        operations.changeMode(file->number(), ownerOnly);
    return file;
}

bool isFileAtPath(FileOperations& operations, int file, std::string const& path)
{
    struct ::stat here {};
    struct ::stat there {};
    return operations.statusOfFile(file, here) == 0 && operations.statusOfPath(path, there) == 0
        && here.st_ino == there.st_ino && here.st_dev == there.st_dev;
}

std::expected<std::uint64_t, FileFailure> sizeOfFile(FileOperations& operations, int file, std::string const& path)
{
    struct ::stat status {};
    if (operations.statusOfFile(file, status) < 0)
        return fileFailure("cannot stat", path);
    return static_cast<std::uint64_t>(status.st_size);
}

std::expected<void, FileFailure> writeFully(
    FileOperations& operations, int file, std::string_view bytes, std::uint64_t offset, std::string const& path)
{
    while (!bytes.empty()) {
        auto const written = operations.write(file, bytes.data(), bytes.size(), static_cast<::off_t>(offset));
        if (written < 0 && errno == EINTR)
            continue;
        if (written == 0)
            errno = ENOSPC;
        if (written <= 0)
            return fileFailure("cannot write", path);
        bytes.remove_prefix(static_cast<std::size_t>(written));
        offset += static_cast<std::uint64_t>(written);
    }
    return {};
}

std::expected<std::string, FileFailure> readUpTo(
    FileOperations& operations, int file, std::size_t count, std::uint64_t offset, std::string const& path)
{
    std::string bytes(count, '\0');
    std::size_t have = 0;
    while (have < count) {
        auto const got = operations.read(file, bytes.data() + have, count - have, static_cast<::off_t>(offset + have));
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            return fileFailure("cannot read", path);
        if (got == 0)
            break;
        have += static_cast<std::size_t>(got);
    }
    bytes.resize(have);
    return bytes;
}

std::expected<void, FileFailure> makeDirectories(FileOperations& operations, std::string const& path)
{
    struct ::stat status {};
    if (path.empty() || operations.statusOfPath(path, status) == 0)
        return {};
    auto const parent = std::filesystem::path(path).parent_path().string();
    if (parent != path) {
        if (auto made = makeDirectories(operations, parent); !made)
            return made;
    }
    if (operations.makeDirectory(path, ownerOnlyDirectory) < 0 && errno != EEXIST)
        return fileFailure("cannot create the directory", path);
    return {};
}

std::expected<void, FileFailure> syncDirectory(FileOperations& operations, std::string const& path)
{
    auto const directory = openPath(operations, path, O_RDONLY | O_DIRECTORY);
    if (!directory)
        return std::unexpected(directory.error());
    // Some file systems cannot sync a directory and report EINVAL.
    if (operations.sync(directory->number()) < 0 && errno != EINVAL)
        return fileFailure("cannot sync the directory", path);
    return {};
}

}

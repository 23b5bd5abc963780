#pragma once

#include "ZelvoraAdapters/shared/Files/internal/FileDescriptor.h"

#include <sys/stat.h>
#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <expected>
#include <string>
#include <string_view>

namespace zelvora::shared {

/// The file system as the preferences journal uses it: each method is one system call, with its result and `errno`.
/// A test overrides the calls that it wants to fail.
class FileOperations {
public:
    virtual ~FileOperations() = default;
    /// The real file system.
    static FileOperations& system();

    virtual int open(std::string const& path, int flags, ::mode_t mode);
    virtual ::ssize_t read(int file, char* bytes, std::size_t count, ::off_t offset);
    virtual ::ssize_t write(int file, char const* bytes, std::size_t count, ::off_t offset);
    virtual int truncate(int file, ::off_t size);
    virtual int changeMode(int file, ::mode_t mode);
    virtual int sync(int file);
    virtual int statusOfFile(int file, struct ::stat& status);
    /// Of a symbolic link itself, not of what it leads to.
    virtual int statusOfPath(std::string const& path, struct ::stat& status);
    virtual int rename(std::string const& from, std::string const& to);
    virtual int remove(std::string const& path);
    virtual int makeDirectory(std::string const& path, ::mode_t mode);
};

/// Why a file operation failed.
struct FileFailure {
    /// For a log line, such as "cannot write /a/b: No space left on device".
    std::string reason;
    /// The value of `errno`, or 0 if no system call failed.
    int number = 0;
};

/// The failure described by `errno`. `attempt` begins the reason, such as "cannot write".
[[nodiscard]] std::unexpected<FileFailure> fileFailure(std::string_view attempt, std::string const& path);

/// Opens a file of our own, and takes the access of other users away from one that is opened for writing. Anything but
/// a regular file is refused: a link would let whoever planted it choose the file that we write, and a FIFO would
/// block.
[[nodiscard]] std::expected<FileDescriptor, FileFailure> openFile(
    FileOperations& operations, std::string const& path, int flags);
/// Whether the path names the open file.
[[nodiscard]] bool isFileAtPath(FileOperations& operations, int file, std::string const& path);
[[nodiscard]] std::expected<std::uint64_t, FileFailure> sizeOfFile(
    FileOperations& operations, int file, std::string const& path);
/// Writes all the bytes. After a failure, some of them may have been written.
[[nodiscard]] std::expected<void, FileFailure> writeFully(
    FileOperations& operations, int file, std::string_view bytes, std::uint64_t offset, std::string const& path);
/// Reads `count` bytes, or fewer if the file ends before.
[[nodiscard]] std::expected<std::string, FileFailure> readUpTo(
    FileOperations& operations, int file, std::size_t count, std::uint64_t offset, std::string const& path);
/// Creates the directory and its parents if they do not exist.
[[nodiscard]] std::expected<void, FileFailure> makeDirectories(FileOperations& operations, std::string const& path);
/// Makes files created or renamed in the directory survive a power cut.
[[nodiscard]] std::expected<void, FileFailure> syncDirectory(FileOperations& operations, std::string const& path);

}

#pragma once

#include "ZelvoraAdapters/shared/Files/FileDescriptor.h"
#include "ZelvoraPlatform/Export.h"

#include <sys/stat.h>
#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <expected>
#include <string>
#include <string_view>

namespace zelvora::shared {

/// What the preferences journal asks of the file system, a method a system call, with that call's own answers and
/// `errno`. A test derives from it and overrides the call that is to fail.
class ZELVORA_API FileOperations {
public:
    virtual ~FileOperations() = default;
    /// The system itself.
    static FileOperations& system();

    virtual int open(std::string const& path, int flags, ::mode_t mode);
    virtual ::ssize_t read(int file, char* bytes, std::size_t count, ::off_t offset);
    virtual ::ssize_t write(int file, char const* bytes, std::size_t count, ::off_t offset);
    virtual int truncate(int file, ::off_t size);
    virtual int sync(int file);
    virtual int statusOfFile(int file, struct ::stat& status);
    virtual int statusOfPath(std::string const& path, struct ::stat& status);
    virtual int rename(std::string const& from, std::string const& to);
    virtual int remove(std::string const& path);
    virtual int makeDirectory(std::string const& path, ::mode_t mode);
};

/// Why a file operation failed, as a clause for a log line: "cannot write /a/b: No space left on device".
struct FileFailure {
    std::string reason;
    int number = 0;
};

/// The failure that `errno` tells of.
[[nodiscard]] std::unexpected<FileFailure> fileFailure(std::string_view attempt, std::string const& path);

[[nodiscard]] std::expected<FileDescriptor, FileFailure> openFile(
    FileOperations& operations, std::string const& path, int flags);
[[nodiscard]] std::expected<std::uint64_t, FileFailure> sizeOfFile(
    FileOperations& operations, int file, std::string const& path);
/// All the bytes or a failure; some may be written then.
[[nodiscard]] std::expected<void, FileFailure> writeFully(
    FileOperations& operations, int file, std::string_view bytes, std::uint64_t offset, std::string const& path);
/// As many bytes as the file has there, at most `count`.
[[nodiscard]] std::expected<std::string, FileFailure> readUpTo(
    FileOperations& operations, int file, std::size_t count, std::uint64_t offset, std::string const& path);
/// Also what leads there. What exists already is no failure.
[[nodiscard]] std::expected<void, FileFailure> makeDirectories(FileOperations& operations, std::string const& path);
/// Makes renames and new names in the directory survive a power cut.
[[nodiscard]] std::expected<void, FileFailure> syncDirectory(FileOperations& operations, std::string const& path);

}

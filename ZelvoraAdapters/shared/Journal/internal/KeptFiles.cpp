#include "ZelvoraAdapters/shared/Journal/internal/KeptFiles.h"

#include <fcntl.h>

#include <algorithm>
#include <utility>

namespace zelvora::shared {

namespace {

constexpr std::uint64_t copiedAtOnce = 256UL * 1024;

std::string unusedName(FileOperations& operations, std::string const& path, std::string const& ending)
{
    struct ::stat status {};
    auto name = path + ending;
    for (int number = 2; operations.statusOfPath(name, status) == 0; ++number)
        name = path + ending + "-" + std::to_string(number);
    return name;
}

bool isZero(std::string const& bytes)
{
    return bytes.find_first_not_of('\0') == std::string::npos;
}

/// A file that is created with its first bytes.
class Copy final {
public:
    Copy(FileOperations& operations, std::string name) : m_operations(operations), m_name(std::move(name)) { }

    [[nodiscard]] std::expected<void, FileFailure> write(std::string const& bytes, std::uint64_t offset)
    {
        if (!m_file) {
            auto created = openFile(m_operations, m_name, O_WRONLY | O_CREAT | O_EXCL);
            if (!created)
                return std::unexpected(created.error());
            m_file = *std::move(created);
        }
        return writeFully(m_operations, m_file.number(), bytes, offset, m_name);
    }
    [[nodiscard]] std::expected<std::optional<std::string>, FileFailure> finish(std::uint64_t size)
    {
        if (!m_file)
            return std::nullopt;
        if (m_operations.truncate(m_file.number(), static_cast<::off_t>(size)) < 0)
            return fileFailure("cannot extend", m_name);
        if (m_operations.sync(m_file.number()) < 0)
            return fileFailure("cannot sync", m_name);
        return m_name;
    }
    void discard()
    {
        if (m_file)
            m_operations.remove(m_name);
    }

private:
    FileOperations& m_operations;
    std::string m_name;
    FileDescriptor m_file;
};

// Blocks of zeroes become holes, because the file may be sparse and far larger than the disk.
std::expected<std::optional<std::string>, FileFailure> copyBlocks(
    FileOperations& operations, int file, std::string const& path, std::uint64_t begin, std::uint64_t end, Copy& copy)
{
    auto offset = begin;
    while (offset < end) {
        auto const wanted = std::min(copiedAtOnce, end - offset);
        auto const block = readUpTo(operations, file, static_cast<std::size_t>(wanted), offset, path);
        if (!block)
            return std::unexpected(block.error());
        if (block->empty())
            break;
        if (!isZero(*block)) {
            if (auto written = copy.write(*block, offset - begin); !written)
                return std::unexpected(written.error());
        }
        offset += block->size();
    }
    return copy.finish(offset - begin);
}

}

std::expected<std::string, FileFailure> moveAside(
    FileOperations& operations, std::string const& path, std::string const& ending)
{
    auto name = unusedName(operations, path, ending);
    if (operations.rename(path, name) < 0)
        return fileFailure("cannot rename", path);
    return name;
}

std::expected<std::optional<std::string>, FileFailure> copyAside(FileOperations& operations, int file,
    std::string const& path, std::uint64_t begin, std::uint64_t end, std::string const& ending)
{
    Copy copy { operations, unusedName(operations, path, ending) };
    auto kept = copyBlocks(operations, file, path, begin, end, copy);
    if (!kept)
        copy.discard();
    return kept;
}

}

#pragma once

#include "ZelvoraAdapters/shared/Files/internal/FileOperations.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace zelvora::shared {

/// Reads the records of a file in order, from an offset where one begins to a given end or the first invalid record.
/// Never writes. The file and its path outlive the reader.
class JournalRecordReader final {
public:
    enum class Stop : std::uint8_t {
        EndOfFile,
        /// The bytes that follow are not a valid record.
        Corruption,
        /// Reading failed, which says nothing about the file's content.
        ReadFailure,
    };

    /// `checksum` is that of the record, or header, before `offset`.
    JournalRecordReader(FileOperations& operations, int file, std::string const& path, std::uint64_t offset,
        std::uint32_t checksum, std::uint64_t end);

    /// The payload of the next record, valid until the next call; absent if there is none, for the reason in `stop`.
    [[nodiscard]] std::optional<std::string_view> next();

    [[nodiscard]] Stop stop() const { return m_stop; }
    [[nodiscard]] FileFailure const& failure() const { return m_failure; }
    /// The end of the last record that `next` returned, and its checksum.
    [[nodiscard]] std::uint64_t offset() const { return m_offset; }
    [[nodiscard]] std::uint32_t checksum() const { return m_checksum; }

private:
    [[nodiscard]] bool load(std::uint64_t count);
    /// Whether the next record, whose payload begins behind its frame, has this checksum. Reads it block by block.
    [[nodiscard]] bool isIntact(std::uint64_t length, std::uint32_t expected);
    std::optional<std::string_view> stopWith(Stop stop);

    FileOperations& m_operations;
    int m_file;
    std::string const& m_path;
    std::uint64_t m_offset;
    std::uint32_t m_checksum;
    std::uint64_t m_end;
    std::string m_block;
    std::uint64_t m_blockOffset = 0;
    Stop m_stop = Stop::EndOfFile;
    FileFailure m_failure;
};

}

#pragma once

#include "ZelvoraAdapters/shared/Files/FileOperations.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace zelvora::shared {

/// Reads the records of a file one after another, from a place where one begins up to the file's end or the first that
/// does not hold. Never writes; the file outlives it.
class JournalReader final {
public:
    enum class Stop : std::uint8_t {
        AtEnd,
        /// What follows is no record.
        AtDamage,
        /// The file could not be read; this says nothing about what is in it.
        Failed,
    };

    JournalReader(FileOperations& operations, int file, std::string const& path, std::uint64_t offset,
        std::uint32_t checksum, std::uint64_t end);

    /// The next record's payload, valid until the next call; absent at a stop.
    [[nodiscard]] std::optional<std::string_view> next();

    [[nodiscard]] Stop stop() const { return m_stop; }
    [[nodiscard]] FileFailure const& failure() const { return m_failure; }
    /// Where the last record given out ends, and its checksum.
    [[nodiscard]] std::uint64_t offset() const { return m_offset; }
    [[nodiscard]] std::uint32_t checksum() const { return m_checksum; }

private:
    [[nodiscard]] bool have(std::uint64_t count);
    std::optional<std::string_view> stopHere(Stop stop);

    FileOperations& m_operations;
    int m_file;
    std::string const& m_path;
    std::uint64_t m_offset;
    std::uint32_t m_checksum;
    std::uint64_t m_end;
    std::string m_block;
    std::uint64_t m_blockOffset = 0;
    Stop m_stop = Stop::AtEnd;
    FileFailure m_failure;
};

}

#pragma once

#include "ZelvoraAdapters/shared/Files/internal/FileDescriptor.h"
#include "ZelvoraAdapters/shared/Files/internal/FileOperations.h"
#include "ZelvoraAdapters/shared/Journal/internal/JournalHeader.h"
#include "ZelvoraAdapters/shared/Journal/internal/JournalRecordReader.h"
#include "ZelvoraAdapters/shared/Journal/internal/JournalTable.h"

#include <cstdint>
#include <expected>
#include <memory>
#include <string>
#include <vector>

namespace zelvora::shared {

/// An open journal file, with the offset of its end and the checksum of its last record. The caller holds the lock,
/// except where noted.
class JournalFile final {
public:
    enum class Retry : std::uint8_t { Later, Never };
    struct OpenFailure {
        FileFailure failure;
        Retry retry = Retry::Later;
    };
    struct Opened {
        std::shared_ptr<JournalFile> file;
        JournalTable table;
        /// What recovery removed or renamed.
        std::vector<std::string> logLines;
    };

    /// Opens or creates the file and recovers its values. The file is truncated at the first invalid record. A file
    /// that is not a journal, or whose header or snapshot is damaged, is renamed to end in ".damaged", and a new one
    /// is created. A file of a newer format is left unchanged, and retrying is pointless.
    [[nodiscard]] static std::expected<Opened, OpenFailure> open(FileOperations& operations, std::string const& path);

    /// Reads the values without changing the file, for when it cannot be opened for writing. Needs no lock.
    [[nodiscard]] static std::expected<JournalTable, FileFailure> read(
        FileOperations& operations, std::string const& path);

    /// Creates a file with only a header, replacing the content of an existing one.
    [[nodiscard]] static std::expected<std::shared_ptr<JournalFile>, FileFailure> make(
        FileOperations& operations, std::string const& path, JournalHeader::FirstRecord firstRecord);

    /// Writes a record that was begun with `beginRecord`. A failed write does not change what the file holds.
    [[nodiscard]] std::expected<void, FileFailure> append(std::string& record);

    /// Accounts for a record that was written at the file's end without `append`.
    void didAppend(std::uint64_t size, std::uint32_t checksum);

    /// Applies the records that others appended, truncating the file at the first invalid one.
    [[nodiscard]] std::expected<void, FileFailure> readNewRecords(
        JournalTable& table, std::vector<std::string>& logLines);

    /// Whether the path still names this file.
    [[nodiscard]] bool isAtPath() const;
    void didRename(std::string path) { m_path = std::move(path); }

    [[nodiscard]] int number() const { return m_file.number(); }
    [[nodiscard]] std::string const& path() const { return m_path; }
    /// The offset behind the last valid record, and that record's checksum.
    [[nodiscard]] std::uint64_t end() const { return m_end; }
    [[nodiscard]] std::uint32_t checksum() const { return m_checksum; }

private:
    JournalFile(FileOperations& operations, std::string path, FileDescriptor file);

    [[nodiscard]] std::expected<void, FileFailure> writeHeader(JournalHeader::FirstRecord firstRecord);
    [[nodiscard]] std::expected<HeaderKind, FileFailure> readHeader(JournalHeader& header);
    /// False if the snapshot that the header announces is damaged.
    [[nodiscard]] std::expected<bool, FileFailure> recover(JournalHeader const& header, Opened& opened);
    /// Applies the records from `m_end` on and moves `m_end` behind the last valid one.
    [[nodiscard]] std::expected<JournalRecordReader::Stop, FileFailure> replay(JournalTable& table);
    [[nodiscard]] std::expected<void, FileFailure> truncate(std::uint64_t end, std::vector<std::string>& logLines);

    FileOperations& m_operations;
    std::string m_path;
    FileDescriptor m_file;
    std::uint64_t m_end = 0;
    std::uint32_t m_checksum = 0;
};

}

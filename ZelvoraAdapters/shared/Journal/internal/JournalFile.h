#pragma once

#include "ZelvoraAdapters/shared/Files/internal/FileDescriptor.h"
#include "ZelvoraAdapters/shared/Files/internal/FileOperations.h"
#include "ZelvoraAdapters/shared/Journal/internal/JournalHeader.h"
#include "ZelvoraAdapters/shared/Journal/internal/JournalLock.h"
#include "ZelvoraAdapters/shared/Journal/internal/JournalRecordReader.h"
#include "ZelvoraAdapters/shared/Journal/internal/JournalTable.h"

#include <chrono>
#include <cstdint>
#include <expected>
#include <memory>
#include <string>
#include <vector>

namespace zelvora::shared {

/// An open journal file and its lock, with the offset of its end and the checksum of its last record. The caller holds
/// the lock, except where noted.
class JournalFile final {
public:
    enum class Retry : std::uint8_t { Later, Never };
    struct OpenFailure {
        FileFailure failure;
        Retry retry = Retry::Later;
    };
    /// A file and what it begins with.
    struct Found {
        std::shared_ptr<JournalFile> file;
        HeaderKind kind = HeaderKind::Damaged;
    };
    struct Opened {
        std::shared_ptr<JournalFile> file;
        JournalTable table;
        /// What recovery moved or renamed.
        std::vector<std::string> logLines;
    };
    /// How the file is, compared with what was last read from it or written to it.
    enum class Condition : std::uint8_t { Unchanged, Grown, Shrunk, NotAtItsPath };

    /// Opens or creates the file, locks it and recovers its values. The file is cut at the first invalid record; what
    /// is cut is kept in a file beside it, whose name ends in ".cut". A file that is not a journal, or whose header or
    /// snapshot is damaged, is renamed to end in ".damaged", and a new one is created. A file of a newer format is left
    /// unchanged, and retrying is pointless.
    [[nodiscard]] static std::expected<Opened, OpenFailure> open(
        FileOperations& operations, std::string const& path, std::chrono::milliseconds lockTimeout);

    /// Opens the file with these flags, locks it and reads its header.
    [[nodiscard]] static std::expected<Found, FileFailure> find(
        FileOperations& operations, std::string const& path, int flags, std::chrono::milliseconds lockTimeout);

    /// The reason not to use a file of a newer format.
    [[nodiscard]] static FileFailure newerFormat(std::string const& path);

    /// Recovers the values of a file whose header is current. False if the snapshot that the header announces is
    /// damaged.
    [[nodiscard]] static std::expected<bool, FileFailure> recover(Opened& opened);

    /// Reads the values without changing the file, for when it cannot be opened for writing. Needs no lock.
    [[nodiscard]] static std::expected<JournalTable, FileFailure> read(
        FileOperations& operations, std::string const& path);

    /// Creates a file with only a header, replacing the content of an existing one, and takes the writing lock. Fails
    /// with EAGAIN if somebody else is writing that file.
    [[nodiscard]] static std::expected<std::shared_ptr<JournalFile>, FileFailure> make(
        FileOperations& operations, std::string const& path, JournalHeader const& header);

    /// Writes a record that was begun with `beginRecord`. A failed write does not change what the file holds.
    [[nodiscard]] std::expected<void, FileFailure> append(std::string& record);

    /// Accounts for a record that was written at the file's end without `append`.
    void didAppend(std::uint64_t size, std::uint32_t checksum);

    /// Applies the records that others appended, cutting the file at the first invalid one.
    [[nodiscard]] std::expected<void, FileFailure> readNewRecords(
        JournalTable& table, std::vector<std::string>& logLines);
    /// The same without changing the file, which may no longer be at its path.
    void readLastRecords(JournalTable& table);

    /// Costs two system calls.
    [[nodiscard]] Condition condition() const;
    /// Costs one. Needs no lock. Does not notice that the file was renamed.
    [[nodiscard]] bool seemsUnchanged() const;
    /// Whether the path still names this file.
    [[nodiscard]] bool isAtPath() const;
    /// Whether the file no longer begins with its own header.
    [[nodiscard]] bool isOverwritten() const;
    void didRename(std::string path) { m_path = std::move(path); }

    [[nodiscard]] std::expected<void, FileFailure> lock(std::chrono::milliseconds timeout);
    void unlock() { m_lock.unlock(); }
    void unlockWriting() { m_lock.unlockWriting(); }
    void noteUse() { m_lock.noteUse(); }
    [[nodiscard]] bool isUsedByOthers() const { return m_lock.isUsedByOthers(); }

    [[nodiscard]] int number() const { return m_file.number(); }
    [[nodiscard]] std::string const& path() const { return m_path; }
    [[nodiscard]] JournalHeader const& header() const { return m_header; }
    /// The offset behind the last valid record, and that record's checksum.
    [[nodiscard]] std::uint64_t end() const { return m_end; }
    [[nodiscard]] std::uint32_t checksum() const { return m_checksum; }

private:
    JournalFile(FileOperations& operations, std::string path, FileDescriptor file);

    [[nodiscard]] std::expected<void, FileFailure> writeHeader(JournalHeader const& header);
    /// Writes the header of a file that has none or only part of one.
    [[nodiscard]] std::expected<void, FileFailure> completeHeader(std::vector<std::string>& logLines);
    [[nodiscard]] std::expected<HeaderKind, FileFailure> readHeader();
    void beginBehind(JournalHeader const& header);
    /// Applies the records from `m_end` on and moves `m_end` behind the last valid one.
    [[nodiscard]] std::expected<JournalRecordReader::Stop, FileFailure> replay(JournalTable& table);
    /// Moves what follows the last valid record to a file of its own. If that fails, nothing is removed.
    [[nodiscard]] std::expected<void, FileFailure> cut(std::vector<std::string>& logLines);

    FileOperations& m_operations;
    std::string m_path;
    FileDescriptor m_file;
    JournalLock m_lock;
    JournalHeader m_header;
    std::uint64_t m_end = 0;
    std::uint32_t m_checksum = 0;
};

}

#pragma once

#include "ZelvoraAdapters/shared/Files/FileDescriptor.h"
#include "ZelvoraAdapters/shared/Files/FileOperations.h"
#include "ZelvoraAdapters/shared/Journal/JournalHeader.h"
#include "ZelvoraAdapters/shared/Journal/JournalReader.h"
#include "ZelvoraAdapters/shared/Journal/JournalState.h"

#include <cstdint>
#include <expected>
#include <memory>
#include <string>
#include <vector>

namespace zelvora::shared {

/// An open journal file: its end and the checksum that the next record goes on from. Whoever calls it has the turn.
class JournalFile final {
public:
    enum class Retry : std::uint8_t { Later, Never };
    struct OpenFailure {
        FileFailure failure;
        Retry retry = Retry::Later;
    };
    struct Opened {
        std::shared_ptr<JournalFile> file;
        JournalState state;
        /// What had to be given up or put aside, a log line each.
        std::vector<std::string> remarks;
        /// The name is new in its directory.
        bool isNew = false;
    };

    /// Opens the file, or makes it, and reads what it says. It is cut at the first record that does not hold. What is
    /// no journal, or begins with damage, is kept beside it under a name that ends in ".damaged" and a new file begun.
    /// The file of a newer format is left as it is.
    [[nodiscard]] static std::expected<Opened, OpenFailure> open(FileOperations& operations, std::string const& path);

    /// Reads what a file says and changes nothing, for when it cannot be opened to write. No turn is needed.
    [[nodiscard]] static std::expected<JournalState, FileFailure> read(
        FileOperations& operations, std::string const& path);

    /// A new file with nothing behind its header; what was there under the name is lost.
    [[nodiscard]] static std::expected<std::shared_ptr<JournalFile>, FileFailure> make(
        FileOperations& operations, std::string const& path, JournalHeader::FirstRecord firstRecord);

    /// Writes a record, its payload behind the room that `beginRecord` made. After a failure the file is as before.
    [[nodiscard]] std::expected<void, FileFailure> append(std::string& record);

    /// Takes over a record that was written at the file's end by other means.
    void didAppend(std::uint64_t size, std::uint32_t checksum);

    /// Reads what was appended by others, cutting the file at the first record that does not hold.
    [[nodiscard]] std::expected<void, FileFailure> readOn(JournalState& state, std::vector<std::string>& remarks);

    /// Whether the name still leads to this file.
    [[nodiscard]] bool isAtItsPath() const;
    void didMoveTo(std::string path) { m_path = std::move(path); }

    [[nodiscard]] int number() const { return m_file.number(); }
    [[nodiscard]] std::string const& path() const { return m_path; }
    [[nodiscard]] std::uint64_t end() const { return m_end; }
    [[nodiscard]] std::uint32_t checksum() const { return m_checksum; }

private:
    JournalFile(FileOperations& operations, std::string path, FileDescriptor file);

    [[nodiscard]] std::expected<void, FileFailure> begin(JournalHeader::FirstRecord firstRecord);
    [[nodiscard]] std::expected<HeaderKind, FileFailure> readHeader(JournalHeader& header);
    /// Whether the file begins as its header says; its end is cut where it must be.
    [[nodiscard]] std::expected<bool, FileFailure> readAll(JournalHeader const& header, Opened& opened);
    /// Reads from the known end on and moves it behind the last record that holds.
    [[nodiscard]] std::expected<JournalReader::Stop, FileFailure> replayRest(JournalState& state);
    [[nodiscard]] std::expected<void, FileFailure> cut(std::uint64_t from, std::vector<std::string>& remarks);

    FileOperations& m_operations;
    std::string m_path;
    FileDescriptor m_file;
    std::uint64_t m_end = 0;
    std::uint32_t m_checksum = 0;
};

}

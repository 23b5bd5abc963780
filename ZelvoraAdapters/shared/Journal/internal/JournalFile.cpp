#include "ZelvoraAdapters/shared/Journal/internal/JournalFile.h"

#include "ZelvoraAdapters/shared/Journal/internal/JournalRecord.h"
#include "ZelvoraAdapters/shared/Journal/internal/JournalRecordReader.h"

#include <fcntl.h>

#include <cerrno>
#include <utility>

namespace zelvora::shared {

namespace {

std::expected<std::string, FileFailure> moveAside(FileOperations& operations, std::string const& path)
{
    struct ::stat status {};
    auto name = path + ".damaged";
    for (int number = 2; operations.statusOfPath(name, status) == 0; ++number)
        name = path + ".damaged-" + std::to_string(number);
    if (operations.rename(path, name) < 0)
        return fileFailure("cannot rename", path);
    return name;
}

FileFailure newerFormat(std::string const& path)
{
    return { .reason = path + " was written by a newer version and is left unchanged", .number = 0 };
}

}

JournalFile::JournalFile(FileOperations& operations, std::string path, FileDescriptor file)
    : m_operations(operations)
    , m_path(std::move(path))
    , m_file(std::move(file))
{
}

std::expected<JournalFile::Opened, JournalFile::OpenFailure> JournalFile::open(
    FileOperations& operations, std::string const& path)
{
    auto const later = [](FileFailure failure) {
        return std::unexpected(OpenFailure { .failure = std::move(failure), .retry = Retry::Later });
    };
    Opened opened;
    // If the first attempt renames a damaged file, the second one creates a new file.
    for (int attempt = 0; attempt < 2; ++attempt) {
        auto descriptor = openFile(operations, path, O_RDWR | O_CREAT);
        if (!descriptor)
            return later(descriptor.error());
        opened.file.reset(new JournalFile(operations, path, *std::move(descriptor)));
        opened.table = {};
        JournalHeader header;
        auto const kind = opened.file->readHeader(header);
        if (!kind)
            return later(kind.error());
        if (*kind == HeaderKind::Newer)
            return std::unexpected(OpenFailure { .failure = newerFormat(path), .retry = Retry::Never });
        if (*kind == HeaderKind::Incomplete) {
            if (auto truncated = opened.file->truncate(0, opened.logLines); !truncated)
                return later(truncated.error());
            if (auto written = opened.file->writeHeader(JournalHeader::FirstRecord::Change); !written)
                return later(written.error());
            return opened;
        }
        if (*kind == HeaderKind::Current) {
            auto const isIntact = opened.file->recover(header, opened);
            if (!isIntact)
                return later(isIntact.error());
            if (*isIntact)
                return opened;
        }
        auto const name = moveAside(operations, path);
        if (!name)
            return later(name.error());
        opened.logLines.push_back(path + " is not a journal or its beginning is damaged; it was renamed to " + *name);
    }
    errno = EIO;
    return later(fileFailure("cannot create", path).error());
}

std::expected<JournalTable, FileFailure> JournalFile::read(FileOperations& operations, std::string const& path)
{
    auto descriptor = openFile(operations, path, O_RDONLY);
    if (!descriptor)
        return std::unexpected(descriptor.error());
    JournalFile file { operations, path, *std::move(descriptor) };
    JournalHeader header;
    auto const kind = file.readHeader(header);
    if (!kind)
        return std::unexpected(kind.error());
    JournalTable table;
    if (*kind == HeaderKind::Newer)
        return std::unexpected(newerFormat(path));
    if (*kind != HeaderKind::Current)
        return table;
    if (auto read = file.replay(table); !read)
        return std::unexpected(read.error());
    return table;
}

std::expected<std::shared_ptr<JournalFile>, FileFailure> JournalFile::make(
    FileOperations& operations, std::string const& path, JournalHeader::FirstRecord firstRecord)
{
    auto descriptor = openFile(operations, path, O_RDWR | O_CREAT | O_TRUNC);
    if (!descriptor)
        return std::unexpected(descriptor.error());
    std::shared_ptr<JournalFile> file { new JournalFile(operations, path, *std::move(descriptor)) };
    if (auto written = file->writeHeader(firstRecord); !written)
        return std::unexpected(written.error());
    return file;
}

std::expected<void, FileFailure> JournalFile::writeHeader(JournalHeader::FirstRecord firstRecord)
{
    auto const header = JournalHeader::make(firstRecord);
    if (auto written = writeFully(m_operations, number(), header.encoded(), 0, m_path); !written) {
        m_operations.truncate(number(), 0);
        return written;
    }
    m_end = JournalHeader::size;
    m_checksum = header.checksum;
    return {};
}

std::expected<HeaderKind, FileFailure> JournalFile::readHeader(JournalHeader& header)
{
    auto const bytes = readUpTo(m_operations, number(), JournalHeader::size, 0, m_path);
    if (!bytes)
        return std::unexpected(bytes.error());
    auto const kind = readJournalHeader(*bytes, header);
    if (kind == HeaderKind::Current) {
        m_end = JournalHeader::size;
        m_checksum = header.checksum;
    }
    return kind;
}

std::expected<bool, FileFailure> JournalFile::recover(JournalHeader const& header, Opened& opened)
{
    auto const result = replay(opened.table);
    if (!result)
        return std::unexpected(result.error());
    // Part of a snapshot is not a state that the store ever had, so the file is not truncated.
    if (header.firstRecord == JournalHeader::FirstRecord::Snapshot && m_end == JournalHeader::size)
        return false;
    if (*result == JournalRecordReader::Stop::Corruption) {
        if (auto done = truncate(m_end, opened.logLines); !done)
            return std::unexpected(done.error());
    }
    return true;
}

std::expected<JournalRecordReader::Stop, FileFailure> JournalFile::replay(JournalTable& table)
{
    auto const size = sizeOfFile(m_operations, number(), m_path);
    if (!size)
        return std::unexpected(size.error());
    JournalRecordReader reader { m_operations, number(), m_path, m_end, m_checksum, *size };
    auto stop = JournalRecordReader::Stop::EndOfFile;
    while (auto const payload = reader.next()) {
        auto changes = readChanges(*payload);
        // A record that is intact but makes no sense is corruption, too.
        if (!changes || !table.apply(*std::move(changes))) {
            stop = JournalRecordReader::Stop::Corruption;
            break;
        }
        m_end = reader.offset();
        m_checksum = reader.checksum();
    }
    if (stop == JournalRecordReader::Stop::EndOfFile)
        stop = reader.stop();
    if (stop == JournalRecordReader::Stop::ReadFailure)
        return std::unexpected(reader.failure());
    return stop;
}

std::expected<void, FileFailure> JournalFile::append(std::string& record)
{
    if (record.size() - JournalRecord::frameSize > JournalRecord::largestPayload) {
        errno = EFBIG;
        return fileFailure("cannot write", m_path);
    }
    auto const checksum = finishRecord(record, m_checksum);
    if (auto written = writeFully(m_operations, number(), record, m_end, m_path); !written) {
        // If this fails as well, readers stop at the invalid rest, and the next record overwrites it.
        m_operations.truncate(number(), static_cast<::off_t>(m_end));
        return written;
    }
    didAppend(record.size(), checksum);
    return {};
}

void JournalFile::didAppend(std::uint64_t size, std::uint32_t checksum)
{
    m_end += size;
    m_checksum = checksum;
}

std::expected<void, FileFailure> JournalFile::readNewRecords(JournalTable& table, std::vector<std::string>& logLines)
{
    auto const result = replay(table);
    if (!result)
        return std::unexpected(result.error());
    if (*result == JournalRecordReader::Stop::Corruption)
        return truncate(m_end, logLines);
    return {};
}

std::expected<void, FileFailure> JournalFile::truncate(std::uint64_t end, std::vector<std::string>& logLines)
{
    auto const size = sizeOfFile(m_operations, number(), m_path);
    if (!size)
        return std::unexpected(size.error());
    if (*size <= end)
        return {};
    if (m_operations.truncate(number(), static_cast<::off_t>(end)) < 0)
        return fileFailure("cannot truncate", m_path);
    logLines.push_back(m_path + " is damaged from byte " + std::to_string(end) + "; its last "
        + std::to_string(*size - end) + " bytes were removed");
    return {};
}

bool JournalFile::isAtPath() const
{
    struct ::stat here {};
    struct ::stat there {};
    return m_operations.statusOfFile(number(), here) == 0 && m_operations.statusOfPath(m_path, there) == 0
        && here.st_ino == there.st_ino && here.st_dev == there.st_dev;
}

}

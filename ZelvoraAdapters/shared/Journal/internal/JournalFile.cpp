#include "ZelvoraAdapters/shared/Journal/internal/JournalFile.h"

#include "ZelvoraAdapters/shared/Journal/internal/JournalRecord.h"
#include "ZelvoraAdapters/shared/Journal/internal/JournalRecordReader.h"
#include "ZelvoraAdapters/shared/Journal/internal/JournalReplay.h"
#include "ZelvoraAdapters/shared/Journal/internal/KeptFiles.h"

#include <fcntl.h>

#include <cerrno>
#include <utility>

namespace zelvora::shared {

namespace {

using Clock = std::chrono::steady_clock;

}

JournalFile::JournalFile(FileOperations& operations, std::string path, FileDescriptor file)
    : m_operations(operations)
    , m_path(std::move(path))
    , m_file(std::move(file))
    , m_lock(m_file.number())
{
}

FileFailure JournalFile::newerFormat(std::string const& path)
{
    return { .reason = path + " was written by a newer version and is left unchanged", .number = 0 };
}

std::expected<JournalFile::Opened, JournalFile::OpenFailure> JournalFile::open(
    FileOperations& operations, std::string const& path, std::chrono::milliseconds lockTimeout)
{
    auto const later = [](FileFailure failure) {
        return std::unexpected(OpenFailure { .failure = std::move(failure), .retry = Retry::Later });
    };
    Opened opened;
    // If the first attempt renames a damaged file, the second one creates a new file.
    for (int attempt = 0; attempt < 2; ++attempt) {
        auto found = find(operations, path, O_RDWR | O_CREAT, lockTimeout);
        if (!found)
            return later(found.error());
        opened.file = std::move(found->file);
        opened.table = {};
        if (found->kind == HeaderKind::Newer)
            return std::unexpected(OpenFailure { .failure = newerFormat(path), .retry = Retry::Never });
        if (found->kind == HeaderKind::Incomplete) {
            if (auto written = opened.file->completeHeader(opened.logLines); !written)
                return later(written.error());
            return opened;
        }
        if (found->kind == HeaderKind::Current) {
            auto const isIntact = recover(opened);
            if (!isIntact)
                return later(isIntact.error());
            if (*isIntact)
                return opened;
        }
        auto const name = moveAside(operations, path, ".damaged");
        if (!name)
            return later(name.error());
        opened.logLines.push_back(path + " is not a journal or its beginning is damaged; it was renamed to " + *name);
    }
    errno = EIO;
    return later(fileFailure("cannot create", path).error());
}

std::expected<JournalFile::Found, FileFailure> JournalFile::find(
    FileOperations& operations, std::string const& path, int flags, std::chrono::milliseconds lockTimeout)
{
    auto const deadline = Clock::now() + lockTimeout;
    for (;;) {
        auto const rest = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now());
        auto descriptor = openFile(operations, path, flags);
        if (!descriptor)
            return std::unexpected(descriptor.error());
        Found found;
        found.file.reset(new JournalFile(operations, path, *std::move(descriptor)));
        if (auto locked = found.file->lock(rest); !locked)
            return std::unexpected(locked.error());
        if (found.file->isAtPath()) {
            auto const kind = found.file->readHeader();
            if (!kind)
                return std::unexpected(kind.error());
            found.kind = *kind;
            return found;
        }
        // While this waited for the lock, somebody replaced the file.
        if (Clock::now() >= deadline) {
            errno = EBUSY;
            return fileFailure("cannot lock", path);
        }
    }
}

std::expected<JournalTable, FileFailure> JournalFile::read(FileOperations& operations, std::string const& path)
{
    auto descriptor = openFile(operations, path, O_RDONLY);
    if (!descriptor)
        return std::unexpected(descriptor.error());
    JournalFile file { operations, path, *std::move(descriptor) };
    auto const kind = file.readHeader();
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
    FileOperations& operations, std::string const& path, JournalHeader const& header)
{
    auto descriptor = openFile(operations, path, O_RDWR | O_CREAT);
    if (!descriptor)
        return std::unexpected(descriptor.error());
    std::shared_ptr<JournalFile> file { new JournalFile(operations, path, *std::move(descriptor)) };
    // Its writer may have renamed or removed it before this got the lock.
    if (!file->m_lock.tryLockWriting() || !file->isAtPath()) {
        errno = EAGAIN;
        return fileFailure("cannot lock", path);
    }
    if (operations.truncate(file->number(), 0) < 0)
        return fileFailure("cannot truncate", path);
    if (auto written = file->writeHeader(header); !written) {
        operations.remove(path);
        return std::unexpected(written.error());
    }
    return file;
}

std::expected<void, FileFailure> JournalFile::writeHeader(JournalHeader const& header)
{
    if (auto written = writeFully(m_operations, number(), header.encoded(), 0, m_path); !written) {
        m_operations.truncate(number(), 0);
        return written;
    }
    beginBehind(header);
    return {};
}

std::expected<void, FileFailure> JournalFile::completeHeader(std::vector<std::string>& logLines)
{
    auto const size = sizeOfFile(m_operations, number(), m_path);
    if (!size)
        return std::unexpected(size.error());
    if (*size > 0)
        logLines.push_back(m_path + " had only part of a header, which was written again");
    return writeHeader(JournalHeader::make(JournalHeader::FirstRecord::Change));
}

std::expected<HeaderKind, FileFailure> JournalFile::readHeader()
{
    auto const bytes = readUpTo(m_operations, number(), JournalHeader::size, 0, m_path);
    if (!bytes)
        return std::unexpected(bytes.error());
    JournalHeader header;
    auto const kind = readJournalHeader(*bytes, header);
    if (kind == HeaderKind::Current)
        beginBehind(header);
    return kind;
}

void JournalFile::beginBehind(JournalHeader const& header)
{
    m_header = header;
    m_end = JournalHeader::size;
    m_checksum = header.checksum;
}

std::expected<bool, FileFailure> JournalFile::recover(Opened& opened)
{
    auto& file = *opened.file;
    auto const result = file.replay(opened.table);
    if (!result)
        return std::unexpected(result.error());
    // Part of a snapshot is not a state that the store ever had, so the file is not cut.
    if (file.m_header.firstRecord == JournalHeader::FirstRecord::Snapshot && file.m_end == JournalHeader::size)
        return false;
    if (*result == JournalRecordReader::Stop::Corruption) {
        if (auto done = file.cut(opened.logLines); !done)
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
    JournalReplay replay { table };
    auto stop = JournalRecordReader::Stop::EndOfFile;
    while (auto const payload = reader.next()) {
        // A record that is intact but makes no sense is corruption, too.
        if (!replay.apply(*payload)) {
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
        return cut(logLines);
    return {};
}

std::expected<void, FileFailure> JournalFile::cut(std::vector<std::string>& logLines)
{
    auto const size = sizeOfFile(m_operations, number(), m_path);
    if (!size)
        return std::unexpected(size.error());
    if (*size <= m_end)
        return {};
    // There may be intact records behind a damaged one.
    auto const copy = copyAside(m_operations, number(), m_path, m_end, *size, ".cut");
    if (!copy)
        return std::unexpected(copy.error());
    if (m_operations.truncate(number(), static_cast<::off_t>(m_end)) < 0)
        return fileFailure("cannot truncate", m_path);
    logLines.push_back(m_path + " is damaged from byte " + std::to_string(m_end) + "; its last "
        + std::to_string(*size - m_end) + " bytes" + (*copy ? " were moved to " + **copy : ", all zero, were removed"));
    return {};
}

void JournalFile::readLastRecords(JournalTable& table)
{
    // What cannot be read was not acknowledged, or is lost with the file.
    [[maybe_unused]] auto const result = replay(table);
}

JournalFile::Condition JournalFile::condition() const
{
    struct ::stat here {};
    struct ::stat there {};
    if (m_operations.statusOfFile(number(), here) < 0)
        return Condition::Unchanged;
    auto const hasPath = m_operations.statusOfPath(m_path, there) == 0;
    // A path that may not be looked at says nothing about the file.
    auto const isGone = !hasPath && (errno == ENOENT || errno == ENOTDIR);
    if (isGone || (hasPath && (here.st_ino != there.st_ino || here.st_dev != there.st_dev)))
        return Condition::NotAtItsPath;
    auto const size = static_cast<std::uint64_t>(here.st_size);
    if (size == m_end)
        return Condition::Unchanged;
    return size > m_end ? Condition::Grown : Condition::Shrunk;
}

bool JournalFile::seemsUnchanged() const
{
    struct ::stat status {};
    return m_operations.statusOfFile(number(), status) == 0 && static_cast<std::uint64_t>(status.st_size) == m_end
        && status.st_nlink > 0;
}

bool JournalFile::isAtPath() const
{
    return isFileAtPath(m_operations, number(), m_path);
}

bool JournalFile::isOverwritten() const
{
    auto const bytes = readUpTo(m_operations, number(), JournalHeader::size, 0, m_path);
    return bytes && *bytes != m_header.encoded();
}

std::expected<void, FileFailure> JournalFile::lock(std::chrono::milliseconds timeout)
{
    return m_lock.lock(timeout, m_path);
}

}

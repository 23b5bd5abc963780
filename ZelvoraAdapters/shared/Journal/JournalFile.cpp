#include "ZelvoraAdapters/shared/Journal/JournalFile.h"

#include "ZelvoraAdapters/shared/Journal/JournalReader.h"
#include "ZelvoraAdapters/shared/Journal/JournalRecord.h"

#include <fcntl.h>

#include <cerrno>
#include <utility>

namespace zelvora::shared {

namespace {

std::expected<std::string, FileFailure> setAside(FileOperations& operations, std::string const& path)
{
    struct ::stat status {};
    auto name = path + ".damaged";
    for (int number = 2; operations.statusOfPath(name, status) == 0; ++number)
        name = path + ".damaged-" + std::to_string(number);
    if (operations.rename(path, name) < 0)
        return fileFailure("cannot put aside", path);
    return name;
}

FileFailure newerFormat(std::string const& path)
{
    return { .reason = path + " was written by a newer version and is left as it is", .number = 0 };
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
    // The second time around the damaged file is out of the way.
    for (int attempt = 0; attempt < 2; ++attempt) {
        auto descriptor = openFile(operations, path, O_RDWR | O_CREAT);
        if (!descriptor)
            return later(descriptor.error());
        opened.file.reset(new JournalFile(operations, path, *std::move(descriptor)));
        opened.state = {};
        JournalHeader header;
        auto const kind = opened.file->readHeader(header);
        if (!kind)
            return later(kind.error());
        if (*kind == HeaderKind::Newer)
            return std::unexpected(OpenFailure { .failure = newerFormat(path), .retry = Retry::Never });
        if (*kind == HeaderKind::CutShort) {
            if (auto begun = opened.file->cut(0, opened.remarks); !begun)
                return later(begun.error());
            if (auto begun = opened.file->begin(JournalHeader::FirstRecord::Change); !begun)
                return later(begun.error());
            opened.isNew = true;
            return opened;
        }
        if (*kind == HeaderKind::Current) {
            auto const isWhole = opened.file->readAll(header, opened);
            if (!isWhole)
                return later(isWhole.error());
            if (*isWhole)
                return opened;
        }
        auto const name = setAside(operations, path);
        if (!name)
            return later(name.error());
        opened.remarks.push_back(path + " is no journal or is damaged at its beginning; it is kept as " + *name);
    }
    errno = EIO;
    return later(fileFailure("cannot begin", path).error());
}

std::expected<JournalState, FileFailure> JournalFile::read(FileOperations& operations, std::string const& path)
{
    auto descriptor = openFile(operations, path, O_RDONLY);
    if (!descriptor)
        return std::unexpected(descriptor.error());
    JournalFile file { operations, path, *std::move(descriptor) };
    JournalHeader header;
    auto const kind = file.readHeader(header);
    if (!kind)
        return std::unexpected(kind.error());
    JournalState state;
    if (*kind == HeaderKind::Newer)
        return std::unexpected(newerFormat(path));
    if (*kind != HeaderKind::Current)
        return state;
    if (auto read = file.replayRest(state); !read)
        return std::unexpected(read.error());
    return state;
}

std::expected<std::shared_ptr<JournalFile>, FileFailure> JournalFile::make(
    FileOperations& operations, std::string const& path, JournalHeader::FirstRecord firstRecord)
{
    auto descriptor = openFile(operations, path, O_RDWR | O_CREAT | O_TRUNC);
    if (!descriptor)
        return std::unexpected(descriptor.error());
    std::shared_ptr<JournalFile> file { new JournalFile(operations, path, *std::move(descriptor)) };
    if (auto begun = file->begin(firstRecord); !begun)
        return std::unexpected(begun.error());
    return file;
}

std::expected<void, FileFailure> JournalFile::begin(JournalHeader::FirstRecord firstRecord)
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

std::expected<bool, FileFailure> JournalFile::readAll(JournalHeader const& header, Opened& opened)
{
    auto const result = replayRest(opened.state);
    if (!result)
        return std::unexpected(result.error());
    // A snapshot holds or does not: a part of one was never what the store held.
    if (header.firstRecord == JournalHeader::FirstRecord::Snapshot && m_end == JournalHeader::size)
        return false;
    if (*result == JournalReader::Stop::AtDamage) {
        if (auto done = cut(m_end, opened.remarks); !done)
            return std::unexpected(done.error());
    }
    return true;
}

std::expected<JournalReader::Stop, FileFailure> JournalFile::replayRest(JournalState& state)
{
    auto const size = sizeOfFile(m_operations, number(), m_path);
    if (!size)
        return std::unexpected(size.error());
    JournalReader reader { m_operations, number(), m_path, m_end, m_checksum, *size };
    auto stop = JournalReader::Stop::AtEnd;
    while (auto const payload = reader.next()) {
        auto changes = readChanges(*payload);
        // What is whole and makes no sense is damage, too.
        if (!changes || !state.apply(*std::move(changes))) {
            stop = JournalReader::Stop::AtDamage;
            break;
        }
        m_end = reader.offset();
        m_checksum = reader.checksum();
    }
    if (stop == JournalReader::Stop::AtEnd)
        stop = reader.stop();
    if (stop == JournalReader::Stop::Failed)
        return std::unexpected(reader.failure());
    return stop;
}

std::expected<void, FileFailure> JournalFile::append(std::string& record)
{
    if (record.size() - JournalRecord::frameSize > JournalRecord::largestPayload) {
        errno = EFBIG;
        return fileFailure("cannot write", m_path);
    }
    auto const checksum = sealRecord(record, m_checksum);
    if (auto written = writeFully(m_operations, number(), record, m_end, m_path); !written) {
        // Should this fail as well, the next record overwrites what is there, and reading stops before it.
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

std::expected<void, FileFailure> JournalFile::readOn(JournalState& state, std::vector<std::string>& remarks)
{
    auto const result = replayRest(state);
    if (!result)
        return std::unexpected(result.error());
    if (*result == JournalReader::Stop::AtDamage)
        return cut(m_end, remarks);
    return {};
}

std::expected<void, FileFailure> JournalFile::cut(std::uint64_t from, std::vector<std::string>& remarks)
{
    auto const size = sizeOfFile(m_operations, number(), m_path);
    if (!size)
        return std::unexpected(size.error());
    if (*size <= from)
        return {};
    if (m_operations.truncate(number(), static_cast<::off_t>(from)) < 0)
        return fileFailure("cannot cut", m_path);
    remarks.push_back(m_path + " was damaged from byte " + std::to_string(from) + " on; its last "
        + std::to_string(*size - from) + " bytes are cut off");
    return {};
}

bool JournalFile::isAtItsPath() const
{
    struct ::stat here {};
    struct ::stat there {};
    return m_operations.statusOfFile(number(), here) == 0 && m_operations.statusOfPath(m_path, there) == 0
        && here.st_ino == there.st_ino && here.st_dev == there.st_dev;
}

}

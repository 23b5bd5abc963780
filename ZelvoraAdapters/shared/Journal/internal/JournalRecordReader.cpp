#include "ZelvoraAdapters/shared/Journal/internal/JournalRecordReader.h"

#include "ZelvoraAdapters/shared/Journal/internal/ByteReader.h"
#include "ZelvoraAdapters/shared/Journal/internal/Checksum.h"
#include "ZelvoraAdapters/shared/Journal/internal/JournalRecord.h"

#include <algorithm>

namespace zelvora::shared {

namespace {

// How much is read at once.
constexpr std::uint64_t blockSize = 256UL * 1024;

}

JournalRecordReader::JournalRecordReader(FileOperations& operations, int file, std::string const& path,
    std::uint64_t offset, std::uint32_t checksum, std::uint64_t end)
    : m_operations(operations)
    , m_file(file)
    , m_path(path)
    , m_offset(offset)
    , m_checksum(checksum)
    , m_end(end)
    , m_blockOffset(offset)
{
}

std::optional<std::string_view> JournalRecordReader::next()
{
    if (m_offset >= m_end)
        return stopWith(Stop::EndOfFile);
    // A length is checked against the rest of the file before memory is allocated for it.
    if (m_end - m_offset <= JournalRecord::frameSize)
        return stopWith(Stop::Corruption);
    if (!load(JournalRecord::frameSize))
        return std::nullopt;
    ByteReader frame { std::string_view { m_block }.substr(static_cast<std::size_t>(m_offset - m_blockOffset)) };
    std::uint64_t const length = frame.fixed32().value_or(0);
    auto const expected = frame.fixed32().value_or(0);
    if (length == 0 || length > m_end - m_offset - JournalRecord::frameSize)
        return stopWith(Stop::Corruption);
    // A damaged length may be gigabytes, and the file may be sparse: a record that does not fit into a block gets its
    // memory once it is known to be intact.
    if (length > blockSize && !isIntact(length, expected))
        return std::nullopt;
    if (!load(JournalRecord::frameSize + length))
        return std::nullopt;
    auto const payload = std::string_view { m_block }.substr(
        static_cast<std::size_t>(m_offset - m_blockOffset) + JournalRecord::frameSize,
        static_cast<std::size_t>(length));
    auto const actual = recordChecksum(shared::checksum(m_checksum, payload), static_cast<std::uint32_t>(length));
    if (actual != expected)
        return stopWith(Stop::Corruption);
    m_offset += JournalRecord::frameSize + length;
    m_checksum = actual;
    return payload;
}

bool JournalRecordReader::load(std::uint64_t count)
{
    if (m_offset + count <= m_blockOffset + m_block.size())
        return true;
    auto const wanted = std::min(std::max(count, blockSize), m_end - m_offset);
    auto block = readUpTo(m_operations, m_file, static_cast<std::size_t>(wanted), m_offset, m_path);
    if (!block) {
        m_failure = block.error();
        stopWith(Stop::ReadFailure);
        return false;
    }
    m_block = *std::move(block);
    m_blockOffset = m_offset;
    if (m_block.size() >= count)
        return true;
    stopWith(Stop::Corruption);
    return false;
}

bool JournalRecordReader::isIntact(std::uint64_t length, std::uint32_t expected)
{
    auto sum = m_checksum;
    auto const begin = m_offset + JournalRecord::frameSize;
    for (auto offset = begin; offset < begin + length;) {
        auto const wanted = std::min(blockSize, begin + length - offset);
        auto const block = readUpTo(m_operations, m_file, static_cast<std::size_t>(wanted), offset, m_path);
        if (!block) {
            m_failure = block.error();
            stopWith(Stop::ReadFailure);
            return false;
        }
        if (block->empty())
            break;
        sum = shared::checksum(sum, *block);
        offset += block->size();
    }
    if (recordChecksum(sum, static_cast<std::uint32_t>(length)) == expected)
        return true;
    stopWith(Stop::Corruption);
    return false;
}

std::optional<std::string_view> JournalRecordReader::stopWith(Stop stop)
{
    m_stop = stop;
    return std::nullopt;
}

}

#include "ZelvoraAdapters/shared/Journal/JournalReader.h"

#include "ZelvoraAdapters/shared/Journal/ByteReader.h"
#include "ZelvoraAdapters/shared/Journal/Checksum.h"
#include "ZelvoraAdapters/shared/Journal/JournalRecord.h"

#include <algorithm>

namespace zelvora::shared {

namespace {

constexpr std::uint64_t blockSize = 256UL * 1024;

}

JournalReader::JournalReader(FileOperations& operations, int file, std::string const& path, std::uint64_t offset,
    std::uint32_t checksum, std::uint64_t end)
    : m_operations(operations)
    , m_file(file)
    , m_path(path)
    , m_offset(offset)
    , m_checksum(checksum)
    , m_end(end)
    , m_blockOffset(offset)
{
}

std::optional<std::string_view> JournalReader::next()
{
    if (m_offset >= m_end)
        return stopHere(Stop::AtEnd);
    // The rest of the file bounds what a length may claim, before anything is made ready for it.
    if (m_end - m_offset <= JournalRecord::frameSize)
        return stopHere(Stop::AtDamage);
    if (!have(JournalRecord::frameSize))
        return std::nullopt;
    ByteReader frame { std::string_view { m_block }.substr(static_cast<std::size_t>(m_offset - m_blockOffset)) };
    std::uint64_t const length = frame.fixed32().value_or(0);
    auto const stated = frame.fixed32().value_or(0);
    if (length == 0 || length > m_end - m_offset - JournalRecord::frameSize)
        return stopHere(Stop::AtDamage);
    if (!have(JournalRecord::frameSize + length))
        return std::nullopt;
    auto const payload = std::string_view { m_block }.substr(
        static_cast<std::size_t>(m_offset - m_blockOffset) + JournalRecord::frameSize,
        static_cast<std::size_t>(length));
    auto const actual = recordChecksum(shared::checksum(m_checksum, payload), static_cast<std::uint32_t>(length));
    if (actual != stated)
        return stopHere(Stop::AtDamage);
    m_offset += JournalRecord::frameSize + length;
    m_checksum = actual;
    return payload;
}

bool JournalReader::have(std::uint64_t count)
{
    if (m_offset + count <= m_blockOffset + m_block.size())
        return true;
    auto const wanted = std::min(std::max(count, blockSize), m_end - m_offset);
    auto block = readUpTo(m_operations, m_file, static_cast<std::size_t>(wanted), m_offset, m_path);
    if (!block) {
        m_failure = block.error();
        stopHere(Stop::Failed);
        return false;
    }
    m_block = *std::move(block);
    m_blockOffset = m_offset;
    if (m_block.size() >= count)
        return true;
    stopHere(Stop::AtDamage);
    return false;
}

std::optional<std::string_view> JournalReader::stopHere(Stop stop)
{
    m_stop = stop;
    return std::nullopt;
}

}

#include "ZelvoraAdapters/shared/Journal/internal/JournalSnapshotWriter.h"

#include "ZelvoraAdapters/shared/Journal/internal/ByteWriting.h"
#include "ZelvoraAdapters/shared/Journal/internal/Checksum.h"
#include "ZelvoraAdapters/shared/Journal/internal/JournalChange.h"
#include "ZelvoraAdapters/shared/Journal/internal/JournalRecord.h"
#include "ZelvoraAdapters/shared/Journal/internal/ValueCoding.h"
#include "ZelvoraPlatform/Foundation/Array.h"

#include <cerrno>

namespace zelvora::shared {

namespace {

// How much is collected for one write.
constexpr std::size_t pieceSize = 64UL * 1024;

}

JournalSnapshotWriter::JournalSnapshotWriter(
    FileOperations& operations, JournalFile& target, std::atomic<bool> const& isCancelled)
    : m_operations(operations)
    , m_target(target)
    , m_isCancelled(isCancelled)
    , m_payloadChecksum(target.checksum())
{
}

std::expected<std::vector<std::uint64_t>, FileFailure> JournalSnapshotWriter::write(
    JournalTable::Snapshot const& snapshot)
{
    std::vector<std::uint64_t> sizes;
    for (auto const& [key, entry] : snapshot) {
        auto const before = m_payloadLength + m_pending.size();
        if (auto written = writeEntry(key, entry.value); !written)
            return std::unexpected(written.error());
        sizes.push_back(m_payloadLength + m_pending.size() - before);
    }
    if (auto flushed = flushAbove(0); !flushed)
        return std::unexpected(flushed.error());
    auto const length = static_cast<std::uint32_t>(m_payloadLength);
    auto const frame = recordFrame(length, m_payloadChecksum);
    if (auto written = writeFully(m_operations, m_target.number(), frame, m_target.end(), m_target.path()); !written)
        return std::unexpected(written.error());
    m_target.didAppend(frame.size() + m_payloadLength, recordChecksum(m_payloadChecksum, length));
    return sizes;
}

std::expected<void, FileFailure> JournalSnapshotWriter::writeEntry(std::string const& key, platform::Value const& value)
{
    appendSetPrefix(m_pending, key);
    auto const* const array = value.array();
    if (!array) {
        appendValue(m_pending, value);
        return flushAbove(pieceSize);
    }
    appendArrayPrefix(m_pending, array->size());
    std::expected<void, FileFailure> flushed;
    array->visit([&](platform::Value const& element) {
        appendValue(m_pending, element);
        flushed = flushAbove(pieceSize);
        return flushed.has_value();
    });
    return flushed;
}

std::expected<void, FileFailure> JournalSnapshotWriter::flushAbove(std::size_t limit)
{
    if (m_pending.size() <= limit)
        return {};
    if (m_isCancelled) {
        errno = ECANCELED;
        return fileFailure("cannot finish", m_target.path());
    }
    if (m_payloadLength + m_pending.size() > JournalRecord::largestPayload) {
        errno = EFBIG;
        return fileFailure("cannot write", m_target.path());
    }
    auto const offset = m_target.end() + JournalRecord::frameSize + m_payloadLength;
    if (auto written = writeFully(m_operations, m_target.number(), m_pending, offset, m_target.path()); !written)
        return written;
    m_payloadChecksum = checksum(m_payloadChecksum, m_pending);
    m_payloadLength += m_pending.size();
    m_pending.clear();
    return {};
}

}

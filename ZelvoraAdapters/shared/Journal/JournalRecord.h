#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace zelvora::shared {

/// A record is the length of its payload, a checksum, and the payload: changes that became true together.
///
/// The checksum goes on from that of the record before, so a record holds only in its own place of its own file: what
/// an interrupted write or a reused block left behind never passes for one.
struct JournalRecord {
    static constexpr std::size_t frameSize = 8;
    static constexpr std::uint64_t largestPayload = 0xFFFFFFFF;
};

/// Makes room for the frame; the payload is appended behind it.
void beginRecord(std::string& record);
/// Fills in the frame. Answers this record's checksum.
std::uint32_t sealRecord(std::string& record, std::uint32_t checksumBefore);
/// The frame of a payload whose own checksum, going on from the record before, is known already.
[[nodiscard]] std::string recordFrame(std::uint32_t payloadLength, std::uint32_t payloadChecksum);
/// The checksum of the whole record: the payload's, and the length's after it, which is known last.
[[nodiscard]] std::uint32_t recordChecksum(std::uint32_t payloadChecksum, std::uint32_t payloadLength);

}

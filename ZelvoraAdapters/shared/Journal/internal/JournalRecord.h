#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace zelvora::shared {

/// A record is a frame (the length of the payload and a checksum) and the payload: changes that take effect together.
///
/// The checksum continues from that of the preceding record, so a record is valid only in its own place in its own
/// file. Remains of an interrupted write or of a reused disk block are never valid.
struct JournalRecord {
    static constexpr std::size_t frameSize = 8;
    static constexpr std::uint64_t largestPayload = 0xFFFFFFFF;
};

/// Clears the string and reserves the frame; append the payload to it.
void beginRecord(std::string& record);
/// Fills in the frame. Returns the record's checksum.
std::uint32_t finishRecord(std::string& record, std::uint32_t checksumBefore);
/// The frame of a payload whose checksum, continued from the preceding record, is known.
[[nodiscard]] std::string recordFrame(std::uint32_t payloadLength, std::uint32_t payloadChecksum);
/// The checksum of a record: the payload's, continued over the length, which is known last.
[[nodiscard]] std::uint32_t recordChecksum(std::uint32_t payloadChecksum, std::uint32_t payloadLength);

}

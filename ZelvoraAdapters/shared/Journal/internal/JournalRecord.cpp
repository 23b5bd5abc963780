#include "ZelvoraAdapters/shared/Journal/internal/JournalRecord.h"

#include "ZelvoraAdapters/shared/Journal/internal/ByteWriting.h"
#include "ZelvoraAdapters/shared/Journal/internal/Checksum.h"

#include <array>
#include <string_view>

namespace zelvora::shared {

void beginRecord(std::string& record)
{
    record.assign(JournalRecord::frameSize, '\0');
}

std::uint32_t finishRecord(std::string& record, std::uint32_t checksumBefore)
{
    auto const payload = std::string_view { record }.substr(JournalRecord::frameSize);
    auto const length = static_cast<std::uint32_t>(payload.size());
    auto const sum = recordChecksum(checksum(checksumBefore, payload), length);
    putFixed(record.data(), length);
    putFixed(record.data() + sizeof length, sum);
    return sum;
}

std::string recordFrame(std::uint32_t payloadLength, std::uint32_t payloadChecksum)
{
    std::string frame;
    appendFixed(frame, payloadLength);
    appendFixed(frame, recordChecksum(payloadChecksum, payloadLength));
    return frame;
}

std::uint32_t recordChecksum(std::uint32_t payloadChecksum, std::uint32_t payloadLength)
{
    std::array<char, sizeof payloadLength> bytes {};
    putFixed(bytes.data(), payloadLength);
    return checksum(payloadChecksum, { bytes.data(), bytes.size() });
}

}

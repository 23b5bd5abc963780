#include "ZelvoraAdapters/shared/Journal/internal/JournalHeader.h"

#include "ZelvoraAdapters/shared/Journal/internal/ByteReader.h"
#include "ZelvoraAdapters/shared/Journal/internal/ByteWriting.h"
#include "ZelvoraAdapters/shared/Journal/internal/Checksum.h"

#include <chrono>
#include <random>

namespace zelvora::shared {

namespace {

// A byte above 127 and both kinds of line ending reveal a transfer that took the file for text.
constexpr std::string_view magic = "\x9aZPJ\r\n\x1a\n";
constexpr std::uint64_t familyBits = 0xFFFFFFFF00000000;
constexpr std::uint32_t farthestSuccessor = 0x7FFFFFFF;
constexpr std::size_t checkedSize = JournalHeader::size - sizeof(std::uint32_t);

std::uint64_t makeIdentity()
{
    std::random_device device;
    auto const random = (static_cast<std::uint64_t>(device()) << 32U) | device();
    return random ^ static_cast<std::uint64_t>(std::chrono::system_clock::now().time_since_epoch().count());
}

HeaderKind kindOf(std::string_view bytes)
{
    if (!bytes.starts_with(magic.substr(0, bytes.size())))
        return HeaderKind::Damaged;
    ByteReader in { bytes.substr(std::min(bytes.size(), magic.size())) };
    auto const version = in.fixed32();
    auto const complement = in.fixed32();
    if (!complement)
        return HeaderKind::Incomplete;
    if (*version != static_cast<std::uint32_t>(~*complement) || *version == 0)
        return HeaderKind::Damaged;
    if (*version > JournalHeader::currentVersion)
        return HeaderKind::Newer;
    return bytes.size() < JournalHeader::size ? HeaderKind::Incomplete : HeaderKind::Current;
}

}

JournalHeader JournalHeader::make(FirstRecord firstRecord)
{
    return makeWith(makeIdentity(), firstRecord);
}

JournalHeader JournalHeader::makeSuccessor(JournalHeader const& before, FirstRecord firstRecord)
{
    return makeWith((before.identity & familyBits) | static_cast<std::uint32_t>(before.identity + 1), firstRecord);
}

bool JournalHeader::isSuccessorOf(JournalHeader const& before) const
{
    // The count may have wrapped around.
    auto const distance = static_cast<std::uint32_t>(identity - before.identity);
    return (identity & familyBits) == (before.identity & familyBits) && distance > 0 && distance <= farthestSuccessor;
}

JournalHeader JournalHeader::makeWith(std::uint64_t identity, FirstRecord firstRecord)
{
    JournalHeader header { .identity = identity, .firstRecord = firstRecord };
    header.checksum = shared::checksum(0, header.encodedWithoutChecksum());
    return header;
}

std::string JournalHeader::encoded() const
{
    auto bytes = encodedWithoutChecksum();
    appendFixed(bytes, checksum);
    return bytes;
}

std::string JournalHeader::encodedWithoutChecksum() const
{
    std::string bytes { magic };
    appendFixed(bytes, currentVersion);
    appendFixed(bytes, static_cast<std::uint32_t>(~currentVersion));
    appendFixed(bytes, identity);
    appendFixed(bytes, static_cast<std::uint32_t>(firstRecord));
    return bytes;
}

HeaderKind readJournalHeader(std::string_view bytes, JournalHeader& header)
{
    auto const kind = kindOf(bytes);
    if (kind != HeaderKind::Current)
        return kind;
    ByteReader in { bytes.substr(magic.size() + (2 * sizeof(std::uint32_t))) };
    header.identity = in.fixed64().value_or(0);
    auto const firstRecord = in.fixed32().value_or(0);
    header.checksum = in.fixed32().value_or(0);
    if (header.checksum != checksum(0, bytes.substr(0, checkedSize)) || firstRecord > 1)
        return HeaderKind::Damaged;
    header.firstRecord = static_cast<JournalHeader::FirstRecord>(firstRecord);
    return HeaderKind::Current;
}

}

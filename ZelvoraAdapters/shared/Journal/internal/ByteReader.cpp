#include "ZelvoraAdapters/shared/Journal/internal/ByteReader.h"

namespace zelvora::shared {

namespace {

template<typename Number>
Number littleEndian(std::string_view bytes)
{
    Number number = 0;
    for (std::size_t i = 0; i < sizeof(Number); ++i)
        number |= static_cast<Number>(static_cast<unsigned char>(bytes[i])) << (8U * i);
    return number;
}

}

std::optional<std::uint8_t> ByteReader::byte()
{
    auto const taken = bytes(1);
    if (!taken)
        return std::nullopt;
    return static_cast<std::uint8_t>(taken->front());
}

std::optional<std::uint32_t> ByteReader::fixed32()
{
    auto const taken = bytes(sizeof(std::uint32_t));
    if (!taken)
        return std::nullopt;
    return littleEndian<std::uint32_t>(*taken);
}

std::optional<std::uint64_t> ByteReader::fixed64()
{
    auto const taken = bytes(sizeof(std::uint64_t));
    if (!taken)
        return std::nullopt;
    return littleEndian<std::uint64_t>(*taken);
}

std::optional<std::uint64_t> ByteReader::varint()
{
    std::uint64_t number = 0;
    for (unsigned shift = 0; shift < 64; shift += 7) {
        auto const next = byte();
        if (!next)
            return std::nullopt;
        number |= static_cast<std::uint64_t>(*next & 0x7FU) << shift;
        if ((*next & 0x80U) == 0)
            return number;
    }
    return std::nullopt;
}

std::optional<std::string_view> ByteReader::bytes(std::uint64_t count)
{
    if (count > m_rest.size())
        return std::nullopt;
    auto const taken = m_rest.substr(0, static_cast<std::size_t>(count));
    m_rest.remove_prefix(taken.size());
    return taken;
}

std::optional<std::string_view> ByteReader::lengthPrefixed()
{
    auto const count = varint();
    if (!count)
        return std::nullopt;
    return bytes(*count);
}

}

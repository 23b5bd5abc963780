#include "ZelvoraAdapters/shared/Journal/internal/Checksum.h"

#include <array>
#include <cstddef>
#include <cstring>

#if defined(__x86_64__)
#include <nmmintrin.h>
#elif defined(__ARM_FEATURE_CRC32)
#include <arm_acle.h>
#endif

namespace zelvora::shared {

namespace {

using Table = std::array<std::uint32_t, 256>;

// Slicing by eight: table k holds the effect of a byte that is followed by k more, so that one step takes eight bytes.
constexpr std::array<Table, 8> makeTables()
{
    constexpr std::uint32_t reversedPolynomial = 0x82F63B78;
    std::array<Table, 8> tables {};
    for (std::uint32_t byte = 0; byte < 256; ++byte) {
        auto sum = byte;
        for (int bit = 0; bit < 8; ++bit)
            sum = (sum >> 1U) ^ ((sum & 1U) != 0 ? reversedPolynomial : 0U);
        tables[0][byte] = sum;
    }
    for (std::size_t k = 1; k < tables.size(); ++k) {
        for (std::size_t byte = 0; byte < 256; ++byte)
            tables[k][byte] = (tables[k - 1][byte] >> 8U) ^ tables[0][tables[k - 1][byte] & 0xFFU];
    }
    return tables;
}

constexpr auto s_tables = makeTables();

std::uint32_t byteStep(std::uint32_t sum, char byte)
{
    return (sum >> 8U) ^ s_tables[0][(sum ^ static_cast<unsigned char>(byte)) & 0xFFU];
}

#if defined(__x86_64__)

bool hasInstruction()
{
    static bool const s_has = __builtin_cpu_supports("sse4.2") != 0;
    return s_has;
}

__attribute__((target("sse4.2"))) std::uint32_t instructedChecksum(std::uint32_t before, std::string_view bytes)
{
    std::uint64_t sum = ~before;
    for (; bytes.size() >= 8; bytes.remove_prefix(8)) {
        std::uint64_t word = 0;
        std::memcpy(&word, bytes.data(), sizeof word);
        sum = _mm_crc32_u64(sum, word);
    }
    auto rest = static_cast<std::uint32_t>(sum);
    if (bytes.size() >= 4) {
        std::uint32_t word = 0;
        std::memcpy(&word, bytes.data(), sizeof word);
        rest = _mm_crc32_u32(rest, word);
        bytes.remove_prefix(4);
    }
    for (char const byte : bytes)
        rest = _mm_crc32_u8(rest, static_cast<unsigned char>(byte));
    return ~rest;
}

#elif defined(__ARM_FEATURE_CRC32)

bool hasInstruction()
{
    return true;
}

std::uint32_t instructedChecksum(std::uint32_t before, std::string_view bytes)
{
    auto sum = ~before;
    for (; bytes.size() >= 8; bytes.remove_prefix(8)) {
        std::uint64_t word = 0;
        std::memcpy(&word, bytes.data(), sizeof word);
        sum = __crc32cd(sum, word);
    }
    for (char const byte : bytes)
        sum = __crc32cb(sum, static_cast<unsigned char>(byte));
    return ~sum;
}

#else

bool hasInstruction()
{
    return false;
}

std::uint32_t instructedChecksum(std::uint32_t before, std::string_view bytes)
{
    return portableChecksum(before, bytes);
}

#endif

}

std::uint32_t checksum(std::uint32_t before, std::string_view bytes)
{
    return hasInstruction() ? instructedChecksum(before, bytes) : portableChecksum(before, bytes);
}

std::uint32_t portableChecksum(std::uint32_t before, std::string_view bytes)
{
    auto sum = ~before;
    for (; bytes.size() >= 8; bytes.remove_prefix(8)) {
        std::uint32_t next = 0;
        for (std::size_t k = 0; k < 8; ++k) {
            auto const overlap = k < 4 ? sum >> (8U * k) : 0U;
            next ^= s_tables[7 - k][(overlap ^ static_cast<unsigned char>(bytes[k])) & 0xFFU];
        }
        sum = next;
    }
    for (char const byte : bytes)
        sum = byteStep(sum, byte);
    return ~sum;
}

}

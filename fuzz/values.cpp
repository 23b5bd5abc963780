// Bytes that read as a value are written back as the same value, bit by bit.

#include "ZelvoraAdapters/shared/Journal/internal/ValueCoding.h"
#include "fuzz/require.h"

#include <cstdint>
#include <string>

using namespace zelvora;

namespace {

std::string encoded(platform::Value const& value)
{
    std::string bytes;
    shared::appendValue(bytes, value);
    return bytes;
}

}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size)
{
    shared::ByteReader in { { reinterpret_cast<char const*>(bytes), size } };
    auto const value = shared::readValue(in);
    if (!value)
        return -1;
    auto const once = encoded(*value);
    shared::ByteReader again { once };
    auto const copy = shared::readValue(again);
    fuzz::require(copy && again.isAtEnd(), "an encoded value can be read");
    fuzz::require(encoded(*copy) == once, "a value is encoded as it was");
    fuzz::require(copy->kind() == value->kind() && copy->nesting() == value->nesting(), "a value keeps its shape");
    // A value that contains NaN equals nothing.
    fuzz::require((*copy == *value) == (*value == *value), "a value equals its copy");
    return 0;
}

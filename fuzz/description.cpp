// Any stored value has a description of bounded length that is UTF-8 if the value's texts are.

#include "ZelvoraAdapters/shared/Journal/internal/ValueCoding.h"
#include "ZelvoraPlatform/Foundation/Value.h"
#include "fuzz/require.h"

#include <cstdint>
#include <string_view>

using namespace zelvora;

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size)
{
    shared::ByteReader in { { reinterpret_cast<char const*>(bytes), size } };
    auto const value = shared::readValue(in);
    if (!value)
        return -1;
    constexpr std::size_t longestNote = 64;
    auto const quoted = debugDescription(*value);
    fuzz::require(quoted.size() <= platform::debugDescriptionLimit + longestNote, "a description is short");
    auto const plain = description(*value);
    fuzz::require(plain.size() <= platform::debugDescriptionLimit + longestNote, "a description is short");
    fuzz::require(value->text() || plain == quoted, "only text is described differently without its quotes");
    return 0;
}

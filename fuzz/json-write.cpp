// Any stored value is either refused or written as text that reads as the same value.

#include "ZelvoraAdapters/shared/JSON/JSONSerialization.h"
#include "ZelvoraAdapters/shared/Journal/internal/ValueCoding.h"
#include "ZelvoraPlatform/Foundation/UTF8.h"
#include "fuzz/require.h"

#include <cstdint>
#include <string>

using namespace zelvora;

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size)
{
    shared::ByteReader in { { reinterpret_cast<char const*>(bytes), size } };
    auto const value = shared::readValue(in);
    if (!value)
        return -1;
    shared::JSONSerialization const serialization;
    auto const written = serialization.data(*value, platform::JSONWritingOptions::None);
    fuzz::require(serialization.isValidJSONObject(*value) || !written, "what is no JSON is refused");
    if (!written)
        return 0;
    fuzz::require(platform::isValidUTF8(written->bytes), "JSON is UTF-8");
    auto const again = serialization.jsonObject(*written);
    fuzz::require(again && *again == *value, "written text reads as the same value");
    return 0;
}

// Text that reads as JSON is written, compactly and pretty-printed, as text that reads as the same value.

#include "ZelvoraAdapters/shared/JSON/JSONSerialization.h"
#include "fuzz/require.h"

#include <cstdint>
#include <string>

using namespace zelvora;

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size)
{
    shared::JSONSerialization const serialization;
    auto const value = serialization.jsonObject({ { reinterpret_cast<char const*>(bytes), size } });
    if (!value)
        return 0;
    fuzz::require(serialization.isValidJSONObject(*value), "what was read can be written");
    for (auto const options : { platform::JSONWritingOptions::None, platform::JSONWritingOptions::PrettyPrinted }) {
        auto const written = serialization.data(*value, options);
        fuzz::require(written.has_value(), "what was read can be written");
        auto const again = serialization.jsonObject(*written);
        fuzz::require(again && *again == *value, "written text reads as the same value");
    }
    return 0;
}

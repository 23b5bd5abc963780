// A URL that was parsed parses as itself.

#include "ZelvoraPlatform/Foundation/URL.h"

#include "fuzz/require.h"

#include <cstdint>
#include <string_view>

using namespace zelvora;

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size)
{
    std::string_view const text(reinterpret_cast<char const*>(bytes), size);
    auto const url = platform::URL::parse(text);
    if (!url)
        return 0;
    auto const again = platform::URL::parse(url->absoluteString());
    fuzz::require(again && *again == *url, "an encoded URL is encoded no further");
    fuzz::require(again->scheme() == url->scheme(), "a URL keeps its scheme");
    auto const verbatim = platform::URL::verbatim(text);
    fuzz::require(verbatim && verbatim->absoluteString() == text, "an address is taken as it is");
    return 0;
}

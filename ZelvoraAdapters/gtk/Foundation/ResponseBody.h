#pragma once

#include "ZelvoraPlatform/Foundation/Error.h"

#include <libsoup/soup.h>

#include <cstddef>
#include <expected>
#include <string>
#include <string_view>

namespace zelvora::gtk {

/// Collects the body of a response, up to a limit that also holds for what is decompressed. Unlike libsoup's own
/// decoder, which lets a damaged or incomplete compressed body through, it reports one as an error.
class ResponseBody final {
public:
    /// 16 MiB. The SDK's services answer with less than a kilobyte.
    static constexpr std::size_t limit = 16UL * 1024 * 1024;

    /// Asks for an answer that can be decompressed here.
    static void prepare(SoupMessageHeaders& request);

    /// Fails if the body becomes too large.
    [[nodiscard]] std::expected<void, platform::Error> append(std::string_view bytes);
    /// The whole body, decompressed.
    [[nodiscard]] std::expected<std::string, platform::Error> take(SoupMessageHeaders& response);

private:
    std::string m_bytes;
};

}

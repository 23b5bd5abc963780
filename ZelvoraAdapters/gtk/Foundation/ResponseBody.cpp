#include "ZelvoraAdapters/gtk/Foundation/ResponseBody.h"

#include "ZelvoraAdapters/gtk/Foundation/TransportError.h"
#include "ZelvoraAdapters/gtk/GLib/Pointers.h"

#include <array>
#include <utility>

namespace zelvora::gtk {

namespace {

bool isGzip(char const* encoding)
{
    return encoding && (g_ascii_strcasecmp(encoding, "gzip") == 0 || g_ascii_strcasecmp(encoding, "x-gzip") == 0);
}

// Decompresses one member, of which a gzip file may have several, and removes it from `packed`.
std::expected<void, platform::Error> unpackMember(std::string_view& packed, std::string& unpacked)
{
    auto const decompressor = adopt(g_zlib_decompressor_new(G_ZLIB_COMPRESSOR_FORMAT_GZIP));
    std::array<char, 65536> buffer {};
    auto result = G_CONVERTER_CONVERTED;
    while (result != G_CONVERTER_FINISHED) {
        GErrorPlace error;
        gsize read = 0;
        gsize written = 0;
        result = g_converter_convert(G_CONVERTER(decompressor.get()), packed.data(), packed.size(), buffer.data(),
            buffer.size(), G_CONVERTER_INPUT_AT_END, &read, &written, error.out());
        if (error)
            return std::unexpected(transportError(*error));
        packed.remove_prefix(read);
        if (unpacked.size() + written > ResponseBody::limit)
            return std::unexpected(tooLargeError());
        unpacked.append(buffer.data(), written);
    }
    return {};
}

}

void ResponseBody::prepare(SoupMessageHeaders& request)
{
    soup_message_headers_replace(&request, "Accept-Encoding", "gzip");
}

std::expected<void, platform::Error> ResponseBody::append(std::string_view bytes)
{
    if (m_bytes.size() + bytes.size() > limit)
        return std::unexpected(tooLargeError());
    m_bytes.append(bytes);
    return {};
}

std::expected<std::string, platform::Error> ResponseBody::take(SoupMessageHeaders& response)
{
    auto bytes = std::exchange(m_bytes, {});
    // The answer to a HEAD request, for example, names an encoding and has no body.
    if (bytes.empty() || !isGzip(soup_message_headers_get_one(&response, "Content-Encoding")))
        return bytes;
    std::string unpacked;
    std::string_view packed = bytes;
    while (!packed.empty()) {
        if (auto done = unpackMember(packed, unpacked); !done)
            return std::unexpected(done.error());
    }
    return unpacked;
}

}

#include "ZelvoraAdapters/gtk/Foundation/HTTPUri.h"

#include <libsoup/soup.h>

#include <string_view>

namespace zelvora::gtk {

namespace {

constexpr auto flags = static_cast<GUriFlags>(SOUP_HTTP_URI_FLAGS);

GUriPointer ifHTTP(GUriPointer uri)
{
    if (!uri)
        return nullptr;
    std::string_view const scheme = g_uri_get_scheme(uri.get());
    char const* const host = g_uri_get_host(uri.get());
    return (scheme == "https" || scheme == "http") && host && *host ? std::move(uri) : nullptr;
}

}

GUriPointer parseHTTPUri(std::string const& text)
{
    return ifHTTP(GUriPointer(g_uri_parse(text.c_str(), flags, nullptr)));
}

GUriPointer resolveHTTPUri(GUri& base, std::string const& reference)
{
    return ifHTTP(GUriPointer(g_uri_parse_relative(&base, reference.c_str(), flags, nullptr)));
}

bool isSecure(GUri& uri)
{
    return std::string_view(g_uri_get_scheme(&uri)) == "https";
}

}

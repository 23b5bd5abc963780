#include "ZelvoraAdapters/gtk/Foundation/TransportError.h"

#include <gio/gio.h>
#include <libsoup/soup.h>

#include <utility>

namespace zelvora::gtk {

namespace {

platform::Error makeError(GQuark domain, int code, std::string description)
{
    return { .domain = g_quark_to_string(domain), .code = code, .localizedDescription = std::move(description) };
}

}

platform::Error transportError(GError const& error)
{
    return makeError(error.domain, error.code, error.message);
}

platform::Error timedOutError()
{
    return makeError(G_IO_ERROR, G_IO_ERROR_TIMED_OUT, "The request timed out.");
}

platform::Error cancelledError()
{
    return makeError(G_IO_ERROR, G_IO_ERROR_CANCELLED, "The request was cancelled.");
}

platform::Error unsupportedURLError(std::string const& url)
{
    return makeError(G_IO_ERROR, G_IO_ERROR_NOT_SUPPORTED, "Unsupported URL: " + url);
}

platform::Error tooManyRedirectsError()
{
    return makeError(SOUP_SESSION_ERROR, SOUP_SESSION_ERROR_TOO_MANY_REDIRECTS, "Too many redirects.");
}

platform::Error insecureRedirectError()
{
    return makeError(SOUP_SESSION_ERROR, SOUP_SESSION_ERROR_REDIRECT_BAD_URI,
        "The server redirected a secure request to an insecure address.");
}

platform::Error tooLargeError()
{
    return makeError(G_IO_ERROR, G_IO_ERROR_MESSAGE_TOO_LARGE, "The answer is too large.");
}

platform::Error oldTLSError()
{
    return makeError(G_TLS_ERROR, G_TLS_ERROR_HANDSHAKE, "The server's version of TLS is too old.");
}

platform::Error notAServerError()
{
    return makeError(G_TLS_ERROR, G_TLS_ERROR_BAD_CERTIFICATE, "The certificate is not one for servers.");
}

}

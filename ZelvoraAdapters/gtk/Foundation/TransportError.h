#pragma once

#include "ZelvoraPlatform/Foundation/Error.h"

#include <glib.h>

namespace zelvora::gtk {

/// An error that GLib, its TLS backend or libsoup reports, with their domain, code and localized message.
[[nodiscard]] platform::Error transportError(GError const& error);

/// Errors that the loader itself reports, in the same domains.
[[nodiscard]] platform::Error timedOutError();
[[nodiscard]] platform::Error cancelledError();
[[nodiscard]] platform::Error unsupportedURLError(std::string const& url);
[[nodiscard]] platform::Error tooManyRedirectsError();
[[nodiscard]] platform::Error insecureRedirectError();
[[nodiscard]] platform::Error tooLargeError();
[[nodiscard]] platform::Error oldTLSError();
[[nodiscard]] platform::Error notAServerError();

}
